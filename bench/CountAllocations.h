// SPDX-License-Identifier: MIT
// Counts the calls of the global operator new in a benchmark program. Include it in one source file.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

inline std::size_t allocations = 0;

// Not inlined, since g++ would then see malloc and free where it expects new and delete.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
