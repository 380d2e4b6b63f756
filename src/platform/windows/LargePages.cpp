// SPDX-License-Identifier: MIT
#include "platform/LargePages.h"

#include <cstdlib>

namespace vlgs {

// Large pages need a privilege that ordinary users do not have.
void preferLargePages(void*, std::size_t) noexcept {}

void* allocateInLargePages(std::size_t size) noexcept {
    return std::malloc(size);
}

} // namespace vlgs
