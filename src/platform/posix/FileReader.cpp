// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "base/Error.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostError.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/InPlace.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace vlgs {

using namespace posix;

namespace {

/// Devices may have no end; the user's own terminal has, and what holds nothing at all.
bool isEndless(int file, const struct stat& status) {
    const bool device = S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode);
    struct stat null;
    const bool isNull = ::stat("/dev/null", &null) == 0 && null.st_rdev == status.st_rdev;
    return device && !isNull && ::tcgetpgrp(file) <= 0;
}

Descriptor openForReading(const std::string& path) {
    auto file = openFile(path, O_RDONLY);
    struct stat status;
    if (!file || ::fstat(file.get(), &status) != 0)
        raiseHostError(errno, path);
    if (S_ISDIR(status.st_mode) || isEndless(file.get(), status))
        raise(RunTimeError::PermissionDenied);
    if (S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) > mostRead)
        raise(RunTimeError::OutOfMemory);
    if (S_ISREG(status.st_mode))
        finishOverwriting(file.get(), path);
    else
        waitForData(file.get());
    return file;
}

} // namespace

FileReader::FileReader(std::u16string_view path) : handle_(openForReading(hostPath(path)).detach()) {}

FileReader::FileReader(FileReader&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

FileReader& FileReader::operator=(FileReader&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

FileReader::~FileReader() {
    const Descriptor closing(static_cast<int>(handle_));
}

std::size_t FileReader::read(char* to, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const auto count = readSome(static_cast<int>(handle_), to + done, size - done);
        if (count < 0)
            raiseHostError(errno, {});
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::string readFile(std::u16string_view path) {
    return readRest(openForReading(hostPath(path)).get());
}

} // namespace vlgs
