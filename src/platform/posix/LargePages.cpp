// SPDX-License-Identifier: MIT
#include "platform/LargePages.h"

#include <cstdlib>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace vlgs {

namespace {

// The advice is taken for whole pages only. False where the host has no such pages.
[[maybe_unused]] bool advise(void* block, std::size_t size, int advice) noexcept {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return std::align(page, page, block, size) && ::madvise(block, size / page * page, advice) == 0;
}

} // namespace

void preferLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    advise(block, size, MADV_HUGEPAGE);
#endif
}

// A block that begins between two large pages would lose the rest of the first one. What the allocator had
// given away before lies in small pages and would stay there, so they go back to the host.
void* allocateInLargePages(std::size_t size) noexcept {
    constexpr std::size_t largePage = std::size_t{2} << 20;
    if (size < largeBlock)
        return std::malloc(size);
    void* block = nullptr;
    if (::posix_memalign(&block, largePage, size) != 0)
        return nullptr;
#ifdef MADV_HUGEPAGE
    if (advise(block, size, MADV_HUGEPAGE))
        advise(block, size, MADV_DONTNEED);
#endif
    return block;
}

} // namespace vlgs
