// SPDX-License-Identifier: MIT
#include "platform/LargePages.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace vlgs {

void preferLargePages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    // The advice is taken for whole pages only.
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto from = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const auto to = (reinterpret_cast<std::uintptr_t>(block) + size) / page * page;
    if (from < to)
        ::madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
#endif
}

} // namespace vlgs
