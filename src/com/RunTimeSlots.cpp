// SPDX-License-Identifier: MIT
// Gives back what the compiler's run time does not: it takes one of a process's places for threads' data each
// time this file is loaded and keeps it when the file is unloaded, so that a process could load the file only
// about a thousand times. The import through which it asks is defined here, in front of the system's.
#include "com/Ole.h"

#include <iterator>

namespace {

/// The places that were taken, given back as the last thing that the file does.
struct Slots {
    DWORD taken[8];
    std::size_t count;
    ~Slots() {
        for (std::size_t i = 0; i < count; ++i)
            TlsFree(taken[i]);
    }
};
__attribute__((init_priority(101))) constinit Slots slots{};

DWORD WINAPI takeSlot() {
    const auto host = reinterpret_cast<decltype(&TlsAlloc)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "TlsAlloc")));
    const DWORD slot = host();
    if (slot != TLS_OUT_OF_INDEXES && slots.count < std::size(slots.taken))
        slots.taken[slots.count++] = slot;
    return slot;
}

} // namespace

#ifdef _WIN64
extern "C" __attribute__((used)) decltype(&TlsAlloc) const vlgsTlsAlloc __asm__("__imp_TlsAlloc") = &takeSlot;
#else
extern "C" __attribute__((used)) decltype(&TlsAlloc)
    const vlgsTlsAlloc __asm__("__imp__TlsAlloc@0") = &takeSlot;
#endif
