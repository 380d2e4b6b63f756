// SPDX-License-Identifier: MIT
// `vlgs explain`: what a project's or link file's connection string says.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::cli {

inline constexpr std::string_view explainUsage = "vlgs explain [--json] [--show-secrets] FILE\n";
inline constexpr std::string_view explainHelp =
    R"(Prints the connection string of a project information file or a database link file pair by pair, with what
each means. Passwords, and what goes by a name like one, are masked unless --show-secrets is given. --json prints a list of objects.
)";

/// Carries out a command line behind `explain`; the program's exit status.
int explain(std::span<const std::string_view> words);

} // namespace vlgs::cli
