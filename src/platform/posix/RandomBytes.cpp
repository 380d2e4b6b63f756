// SPDX-License-Identifier: MIT
#include "platform/posix/RandomBytes.h"

#include "base/Error.h"

#include <unistd.h>

namespace vlgs::posix {

void fillRandom(std::span<std::uint8_t> bytes) {
    if (::getentropy(bytes.data(), bytes.size()) != 0)
        raise(RunTimeError::DeviceIoError);
}

} // namespace vlgs::posix
