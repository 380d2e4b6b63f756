// SPDX-License-Identifier: MIT
// What keeps the library's file loaded.
#pragma once

namespace vlgs::com {

/// While one of these lives, DllCanUnloadNow answers no. Every object that a caller can hold has one.
class ModuleLock {
  public:
    ModuleLock() noexcept;
    ModuleLock(const ModuleLock&) noexcept : ModuleLock() {}
    ModuleLock& operator=(const ModuleLock&) = default;
    ~ModuleLock();

    static bool any() noexcept;
    /// Counted locks without an owner: IClassFactory::LockServer.
    static void add() noexcept;
    static void remove() noexcept;
};

} // namespace vlgs::com
