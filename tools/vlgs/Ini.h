// SPDX-License-Identifier: MIT
// Documents from the shell: `vlgs ini get`, `set`, `delete`, `list`, `tree`, `diff`, `check`.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::cli {

inline constexpr std::string_view iniUsage = R"(vlgs ini get [--json] [--default=TEXT] FILE SECTION [KEY]
vlgs ini set [--drop-lines] FILE SECTION KEY VALUE
vlgs ini set [--drop-lines] FILE SECTION.KEY=VALUE...
vlgs ini delete [--drop-lines] FILE SECTION [KEY]
vlgs ini list [--json] FILE
vlgs ini tree [--json] FILE
vlgs ini diff [--json] FILE FILE
vlgs ini check [--json] FILE
)";

inline constexpr std::string_view iniHelp =
    R"(Reads and changes INI documents (projects, link files, settings) in their code page; a file is saved
whole or not at all. A missing file is made by set, which writes all its values in one save; of several
set and delete at a time one waits for the other. SECTION.KEY, as list prints it, is SECTION KEY in one
word, unless a section has that name. Values are as for call: @FILE and @- are read from a file and from
standard input. list prints SECTION.KEY=VALUE, tree draws. diff prints what the second file lacks behind
"-" and what it has instead behind "+", whatever the order; its status is 1 when there is a difference.
check prints lines that are lost, ambiguous or undecodable with their numbers; its status is 1 when
there is one. Lines that are neither sections nor keys, such as comments, cannot be saved: set and
delete refuse a file that has some, unless they get --drop-lines.
--json prints {"SECTION": {"KEY": "VALUE"}} in the document's order, lists of objects for diff and check.
)";

/// Carries out a command line behind `ini`; the program's exit status.
int ini(std::span<const std::string_view> words);

} // namespace vlgs::cli
