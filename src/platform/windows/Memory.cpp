// SPDX-License-Identifier: MIT
#include "platform/Memory.h"

#include "platform/windows/Host.h"

namespace vlgs {

bool readMemory(const void* address, std::span<std::byte> to) noexcept {
    SIZE_T count = 0;
    return ReadProcessMemory(GetCurrentProcess(), address, to.data(), to.size(), &count) &&
           count == to.size();
}

} // namespace vlgs
