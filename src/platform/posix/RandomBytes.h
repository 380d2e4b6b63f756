// SPDX-License-Identifier: MIT
// Bytes that nobody can foresee, straight from the host: nothing is kept that a forked child could repeat.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vlgs::posix {

/// Fills a buffer of at most 256 bytes; 57 when the host has no random bytes.
void fillRandom(std::span<std::uint8_t> bytes);

} // namespace vlgs::posix
