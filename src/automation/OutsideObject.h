// Objects from outside the library.
#pragma once

#include "automation/Object.h"

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

    /// The caller's object itself.
    virtual const void* address() const noexcept = 0;
};

} // namespace vlgs
