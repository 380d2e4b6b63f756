// SPDX-License-Identifier: MIT
// An open file of the host.
#pragma once

#include "base/Owned.h"

#include <cstdlib>
#include <string>
#include <sys/stat.h>

namespace vlgs::posix {

void closeDescriptor(int descriptor) noexcept;
using Descriptor = Owned<int, &closeDescriptor, -1>;

/// What a function of C gave and `free` takes back.
inline void freeMemory(char* text) noexcept {
    std::free(text);
}
using CText = Owned<char*, &freeMemory>;

/// Opens without passing the file to child programs and without waiting for the other end of a pipe. On
/// failure there is no descriptor, and errno tells why.
Descriptor openFile(const std::string& path, int flags, mode_t mode = 0);

/// Reads and writes of a pipe or device wait from here on.
void waitForData(int file) noexcept;

inline bool isSameFile(const struct stat& a, const struct stat& b) noexcept {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}
/// Whether a file has been left alone between two looks at it.
inline bool isSameVersion(const struct stat& a, const struct stat& b) noexcept {
    return isSameFile(a, b) && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

/// A path with every symbolic link followed, or as it is where that fails.
std::string withoutLinks(const std::string& path);

/// As `read` and `write`, taken up again after an interruption; -1 with errno on failure.
long readSome(int file, char* to, std::size_t size);
/// The longest content that is read, in bytes; pipes may go on for ever, and sparse files nearly so.
inline constexpr std::size_t mostRead = 1u << 31;
/// What is left of a file; raises when that cannot be read, 7 when it is longer than `mostRead`.
std::string readRest(int file);
/// Writes everything; 0, or the value of errno.
int writeAll(int file, const char* from, std::size_t size);

} // namespace vlgs::posix
