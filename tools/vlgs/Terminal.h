// SPDX-License-Identifier: MIT
// What the terminal can show.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace vlgs::cli {

enum class Colour { Group, Name, Gone, Added };

/// The text in colour when standard output is a terminal and NO_COLOR is not set, else as it is.
std::string inColour(Colour colour, std::string_view text);

/// Columns of the terminal; 0 when standard output is none.
std::size_t terminalWidth();

/// The words of a text in lines no longer than the terminal is wide, the first one indented by `indent`
/// blanks and the others by `hanging`; in one line where standard output is no terminal. Blanks inside a
/// line, and line ends, stay.
void writeWrapped(std::ostream& out, std::size_t indent, std::string_view text, std::size_t hanging);
inline void writeWrapped(std::ostream& out, std::size_t indent, std::string_view text) {
    writeWrapped(out, indent, text, indent);
}

/// Lines of a tree: before a node, and before what stands below it.
inline std::string_view branch(bool last) {
    return last ? "└── " : "├── ";
}
inline std::string_view trunk(bool last) {
    return last ? "    " : "│   ";
}

} // namespace vlgs::cli
