// SPDX-License-Identifier: MIT
#include "platform/LargePages.h"

#include <cstdlib>
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

// A block that begins between two large pages would lose the rest of the first one.
void* allocateInLargePages(std::size_t size) noexcept {
    constexpr std::size_t largePage = std::size_t{2} << 20;
    if (size < largeBlock)
        return std::malloc(size);
    void* block = nullptr;
    if (::posix_memalign(&block, largePage, size) != 0)
        return nullptr;
    preferLargePages(block, size);
    return block;
}

} // namespace vlgs
