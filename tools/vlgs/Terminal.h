// SPDX-License-Identifier: MIT
// What the terminal can show.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vlgs::cli {

enum class Colour { Group, Name, Gone, Added };

/// The text in colour when standard output is a terminal and NO_COLOR is not set, else as it is.
std::string inColour(Colour colour, std::string_view text);

/// Columns of the terminal; 0 when standard output is none.
std::size_t terminalWidth();

/// Lines of a tree: before a node, and before what stands below it.
inline std::string_view branch(bool last) {
    return last ? "└── " : "├── ";
}
inline std::string_view trunk(bool last) {
    return last ? "    " : "│   ";
}

} // namespace vlgs::cli
