// SPDX-License-Identifier: MIT
#include "platform/posix/Descriptor.h"

#include "base/Error.h"
#include "platform/posix/HostError.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace vlgs::posix {

namespace {

constexpr std::size_t chunk = 1u << 30;
constexpr std::size_t smallestRoom = 4096;
constexpr int leaseWaits = 4000;
constexpr std::chrono::microseconds leaseWait{500};

int openOnce(const std::string& path, int flags, mode_t mode) {
    int file;
    do
        file = ::open(path.c_str(), flags, mode);
    while (file < 0 && errno == EINTR);
    return file;
}

} // namespace

void closeDescriptor(int descriptor) noexcept {
    ::close(descriptor);
}

Descriptor openFile(const std::string& path, int flags, mode_t mode) {
    flags |= O_CLOEXEC | O_NOCTTY;
    int file = openOnce(path, flags | O_NONBLOCK, mode);
    // Another process's lease is being broken, for which the host itself would wait much longer.
    for (int i = 0; file < 0 && errno == EWOULDBLOCK && i < leaseWaits; ++i) {
        std::this_thread::sleep_for(leaseWait);
        file = openOnce(path, flags | O_NONBLOCK, mode);
    }
    return Descriptor(file);
}

void waitForData(int file) noexcept {
    ::fcntl(file, F_SETFL, ::fcntl(file, F_GETFL) & ~O_NONBLOCK);
}

std::string withoutLinks(const std::string& path) {
    const CText real(::realpath(path.c_str(), nullptr));
    return real ? real.get() : path;
}

long readSome(int file, char* to, std::size_t size) {
    ssize_t count;
    do
        count = ::read(file, to, std::min(size, chunk));
    while (count < 0 && errno == EINTR);
    return static_cast<long>(count);
}

std::string readRest(int file) {
    struct stat status;
    const bool sized = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    std::string bytes;
    std::size_t used = 0;
    if (sized && static_cast<std::size_t>(status.st_size) > mostRead)
        raise(RunTimeError::OutOfMemory);
    // One byte more than the size that is told shows the end without another round.
    bytes.resize(std::max(smallestRoom, sized ? static_cast<std::size_t>(status.st_size) + 1 : 0));
    while (const auto count = readSome(file, bytes.data() + used, bytes.size() - used)) {
        if (count < 0)
            raiseHostError(errno, {});
        used += static_cast<std::size_t>(count);
        if (used > mostRead)
            raise(RunTimeError::OutOfMemory);
        if (used == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.resize(used);
    return bytes;
}

int writeAll(int file, const char* from, std::size_t size) {
    while (size > 0) {
        const auto count = ::write(file, from, std::min(size, chunk));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0) {
            from += count;
            size -= static_cast<std::size_t>(count);
        }
    }
    return 0;
}

} // namespace vlgs::posix
