// SPDX-License-Identifier: MIT
// Files that the command line names, and standard input.
#pragma once

#include "HostText.h"
#include "base/Error.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>

namespace vlgs::cli {

/// Raises 70 for a folder, and 53 where nothing is of that name.
inline void requireFile(const String& path) {
    if (!fileExists(path))
        raise(folderExists(path) ? RunTimeError::PermissionDenied : RunTimeError::FileNotFound);
}

/// Reads a file by a function of its full path; what that raises tells the name as it was given.
template <class Read>
auto readNamed(std::string_view name, Read&& read) {
    const String given = fromHost(name);
    try {
        return read(fullPath(given));
    } catch (const Error& error) {
        throw Error(error.number(), error.source(), concat(error.description(), u": ", given));
    }
}

inline std::string readNamed(std::string_view name) {
    return readNamed(name, [](const String& path) { return readFile(path); });
}

/// Input may go on for ever: what is longer, in bytes, is refused (7).
inline constexpr std::size_t longestInput = std::size_t{1} << 28;
inline constexpr std::size_t longestLine = std::size_t{1} << 24;

/// All of standard input.
inline std::string readInput() {
    std::string content;
    std::array<char, 65536> block;
    while (std::cin.read(block.data(), block.size()), std::cin.gcount() > 0) {
        content.append(block.data(), static_cast<std::size_t>(std::cin.gcount()));
        if (content.size() > longestInput)
            raise(RunTimeError::OutOfMemory);
    }
    return content;
}

/// The next line without its end; false when there is none.
inline bool nextLine(std::streambuf& input, std::string& line) {
    line.clear();
    for (int next; (next = input.sbumpc()) != EOF; line += static_cast<char>(next)) {
        if (next == '\n')
            return true;
        if (line.size() == longestLine)
            raise(RunTimeError::OutOfMemory);
    }
    return !line.empty();
}

} // namespace vlgs::cli
