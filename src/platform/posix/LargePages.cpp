// SPDX-License-Identifier: MIT
#include "platform/LargePages.h"

#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace vlgs {

void preferLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    // The advice is taken for whole pages only.
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    if (std::align(page, page, block, size))
        ::madvise(block, size / page * page, MADV_HUGEPAGE);
#endif
}

} // namespace vlgs
