// SPDX-License-Identifier: MIT
#include "com/Module.h"

#include <atomic>

namespace vlgs::com {

namespace {
std::atomic<long> locks = 0;
} // namespace

ModuleLock::ModuleLock() noexcept {
    add();
}
ModuleLock::~ModuleLock() {
    remove();
}
bool ModuleLock::any() noexcept {
    return locks.load(std::memory_order_acquire) != 0;
}
void ModuleLock::add() noexcept {
    locks.fetch_add(1, std::memory_order_relaxed);
}
void ModuleLock::remove() noexcept {
    locks.fetch_sub(1, std::memory_order_release);
}

} // namespace vlgs::com
