// SPDX-License-Identifier: MIT
#include "platform/LargePages.h"

namespace vlgs {

// Large pages need a privilege that ordinary users do not have.
void preferLargePages(void*, std::size_t) noexcept {}

} // namespace vlgs
