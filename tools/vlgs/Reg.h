// SPDX-License-Identifier: MIT
// The registry from the shell: `vlgs reg query`, `add`, `delete`, `tree`, `export`, `import`.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::cli {

inline constexpr std::string_view regUsage = R"(vlgs reg query KEY [/v NAME | /ve] [/s] [--json]
vlgs reg add KEY [/v NAME | /ve] [/t TYPE] [/d DATA] [/s SEPARATOR] [/f]
vlgs reg delete KEY [/v NAME | /ve | /va | /f]
vlgs reg tree [--json] KEY
vlgs reg export KEY FILE
vlgs reg import FILE
)";

inline constexpr std::string_view regHelp =
    R"(Works on the registry: on Windows the system's, elsewhere the hives in the folder that VLGS_REGISTRY names.
A KEY begins with HKCR, HKCU, HKLM, HKU, HKCC or the long name of the hive and has "\" between its parts.
/v names a value, /ve is the default value, /va all values, /s with query all keys below. TYPE is REG_SZ
(as without one), REG_EXPAND_SZ, REG_MULTI_SZ with SEPARATOR ("\0") between its texts, REG_DWORD, REG_QWORD,
REG_BINARY, REG_NONE. DATA may be @FILE or @-. delete deletes a value or, with /f, the key and all below it.
export writes a ".reg" file (- for standard output), import reads one: nothing is changed when a line of it
makes no sense. --json prints numbers as such and REG_MULTI_SZ as a list.
)";

/// Carries out a command line behind `reg`; the program's exit status.
int reg(std::span<const std::string_view> words);

} // namespace vlgs::cli
