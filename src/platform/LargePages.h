// SPDX-License-Identifier: MIT
// What the operating system can be told about large blocks of memory.
#pragma once

#include <cstddef>

namespace vlgs {

/// Blocks from this size on are worth a word to the operating system.
inline constexpr std::size_t largeBlock = std::size_t{4} << 20;

/// Asks for large pages in a block that is about to be filled: it then costs fewer page faults, and reads in
/// scattered order fewer walks through page tables. A wish: the block holds what it held, and hosts without
/// such pages do nothing.
void preferLargePages(void* block, std::size_t size) noexcept;

/// Memory that std::free gives back, null when there is none: where a large block is asked for, in large
/// pages as far as the host has them.
void* allocateInLargePages(std::size_t size) noexcept;

} // namespace vlgs
