// SPDX-License-Identifier: MIT
// The packed objects of a thread, and the 32-bit numbers that stand for them in descriptors.
#pragma once

#include "automation/OutsideObject.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace vlgs {

/// The number of an object is its address where that is even and fits in 31 bits, else an odd number that no
/// other object gets while this one lives. An object of the library leaves the table as it ends, so a number
/// that is found belongs to a live object; of a caller's object nobody learns when it ends.
class PackedObjects {
  public:
    struct Entry {
        /// Where the object lies for those who packed it.
        const void* address;
        /// Null for a caller's object.
        Object* own;
        /// Null for an object of the library.
        const OutsideObject::Access* outside;
        /// Of an object of the library: the first four bytes at the address.
        std::uint32_t signature;
    };

    /// The table of the calling thread, null when the thread has packed nothing yet.
    static PackedObjects* find() noexcept;
    /// The table of the calling thread.
    static PackedObjects& make();

    /// The number of an object: the same one each time, as long as callers have the same address for it.
    std::int32_t add(Object& object);

    /// The object of a number; null for a number of no object.
    const Entry* withNumber(std::int32_t number) const noexcept;

  private:
    static void forget(const Object* object) noexcept;
    static const void* keyOf(const Entry& entry) noexcept;
    std::int32_t numberFor(const void* address);
    void removeNumber(std::int32_t number) noexcept;

    std::unordered_map<std::int32_t, Entry> entries_;
    std::unordered_multimap<const void*, std::int32_t> numbers_; // by the object, a caller's by its address
    std::int32_t next_ = 1;
};

} // namespace vlgs
