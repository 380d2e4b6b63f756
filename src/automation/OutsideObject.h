// SPDX-License-Identifier: MIT
// Objects from outside the library, and the library's own as they are known outside.
#pragma once

#include "automation/Object.h"

#include <atomic>
#include <cstdint>

namespace vlgs {

/// An object that stands for one of a caller's. It may end while the caller's object lives on, which can then
/// be reached again by its address.
class OutsideObject : public Object {
  public:
    /// What can be done with the address of a caller's object. REQUIRES: the object still lives.
    struct Access {
        /// A counted reference to the object.
        Ref<Object> (*reference)(const void* address);
        /// The number of references that the object counts.
        std::int32_t (*count)(const void* address);
    };
    virtual const Access& access() const noexcept = 0;

    /// Whether members of it can be called. A typed array that holds one without is refused by callers.
    virtual bool takesCalls() const noexcept { return true; }

    /// The caller's object itself.
    virtual const void* address() const noexcept = 0;
};

/// How callers know the library's own objects, where they hold them by other addresses than the objects'.
struct CallersView {
    /// Null when no caller holds the object.
    const void* (*address)(const Object& object) noexcept;
    /// The references that callers and other objects hold.
    std::int32_t (*count)(const Object& object) noexcept;
};
/// Set by the one face that needs it; null otherwise.
inline constinit std::atomic<const CallersView*> callersView = nullptr;

} // namespace vlgs
