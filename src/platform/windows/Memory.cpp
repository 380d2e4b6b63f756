#include "platform/Memory.h"

#include <windows.h>

namespace vlgs {

bool readMemory(const void* address, std::span<std::byte> to) noexcept {
    SIZE_T copied = 0;
    return ReadProcessMemory(GetCurrentProcess(), address, to.data(), to.size(), &copied) != 0 &&
           copied == to.size();
}

} // namespace vlgs
