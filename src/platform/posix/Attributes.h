// SPDX-License-Identifier: MIT
// File attributes on a host that has other ones.
#pragma once

#include "platform/Files.h"

#include <string>
#include <sys/stat.h>

namespace vlgs::posix {

/// The attributes of the file or folder with this host path and status, the target's for a link.
FileAttributes readAttributes(const std::string& path, const struct stat& status);

/// Sets ReadOnly, Hidden, System and Archive of a file as given; 0, or the value of errno.
int writeAttributes(const std::string& path, FileAttributes attributes);
/// The same for an open file, which should be writable by its mode.
int writeAttributes(int file, FileAttributes attributes);

/// Copies every attribute that lies in extended ones, and the access control list, as far as the host allows.
void copyExtendedAttributes(int from, int to);

inline bool isReadOnly(const struct stat& status) {
    return (status.st_mode & 0222) == 0;
}

} // namespace vlgs::posix
