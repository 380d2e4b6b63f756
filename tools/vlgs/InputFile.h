// SPDX-License-Identifier: MIT
// Files that the command line names.
#pragma once

#include "HostText.h"
#include "base/Error.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

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

} // namespace vlgs::cli
