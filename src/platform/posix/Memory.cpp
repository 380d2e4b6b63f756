// SPDX-License-Identifier: MIT
// The bytes go through a pipe: the system refuses to take them from memory that is not readable.
#include "platform/Memory.h"

#include "platform/posix/Descriptor.h"

#include <algorithm>

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

namespace vlgs {

namespace {

class Pipe {
  public:
    Pipe() noexcept {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0) {
            from_ = posix::Descriptor(ends[0]);
            to_ = posix::Descriptor(ends[1]);
        }
    }

    bool pass(const void* from, void* to, std::size_t size) const noexcept {
        const auto length = static_cast<ssize_t>(size);
        return to_ && ::write(to_.get(), from, size) == length && ::read(from_.get(), to, size) == length;
    }

  private:
    posix::Descriptor from_;
    posix::Descriptor to_;
};

} // namespace

bool readMemory(const void* address, std::span<std::byte> to) noexcept {
    constexpr std::size_t most = PIPE_BUF; // so much is written whole or not at all
    const Pipe pipe;
    const auto* from = static_cast<const std::byte*>(address);
    for (; !to.empty(); to = to.subspan(std::min(most, to.size())), from += most)
        if (!pipe.pass(from, to.data(), std::min(most, to.size())))
            return false;
    return true;
}

} // namespace vlgs
