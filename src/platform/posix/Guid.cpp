// SPDX-License-Identifier: MIT
#include "platform/Guid.h"

#include "platform/posix/RandomBytes.h"

namespace vlgs {

GuidValue createGuid() {
    GuidValue guid;
    posix::fillRandom(guid.bytes);
    // Version 4, made of random bits, in the variant of RFC 9562.
    guid.bytes[6] = static_cast<std::uint8_t>((guid.bytes[6] & 0x0F) | 0x40);
    guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);
    return guid;
}

} // namespace vlgs
