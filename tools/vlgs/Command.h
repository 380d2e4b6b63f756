// SPDX-License-Identifier: MIT
// The commands as `vlgs help`, the manual page and the completion of shells tell them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

struct Command {
    std::string_view name;
    std::string_view brief;
    /// A line for each form: "vlgs ini get [--json] FILE SECTION [KEY]"; one that begins with blanks goes on
    /// with the line before it.
    std::string_view usage;
    std::string_view help;
    int (*run)(std::span<const std::string_view>);
};

/// Each form in one line.
std::vector<std::string> formsOf(const Command& command);

} // namespace vlgs::cli
