// SPDX-License-Identifier: MIT
// The ordered keyed store as collections use it: members numbered from 1, each a Variant, that an index of
// any type names.
//
// Nothing here raises a failure of the caller: each operation answers with the run time's error, and a store
// that failed is as it was. The errors are
//   457  the key is already present;
//     5  a key that is not present, a reference before or after that names no member, both given at once;
//     9  a position out of range;
//    13  an index of a type that can name no member.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"
#include "base/Error.h"
#include "base/KeyedSequence.h"

#include <cstdint>
#include <optional>

namespace vlgs {

class OrderedStore final : public Object {
  public:
    using Failure = std::optional<RunTimeError>;

    std::int32_t count() const noexcept { return static_cast<std::int32_t>(members_.size()); }

    /// The member at a position from 1 to count(), else null. Members are valid until the store next changes.
    const Variant* at(std::int32_t position) const noexcept {
        return memberAt(members_.at(static_cast<std::uint32_t>(position) - 1));
    }
    /// The member with that key, or null. The empty text is a key like any other.
    const Variant* withKey(std::u16string_view key) const noexcept { return memberAt(members_.find(key)); }

    struct Reading {
        const Variant* member = nullptr;
        Failure failure; // 5, 9 or 13 when there is no member
    };
    /// The member that `index` names: a number (rounded half to even) is a position, a text is a key.
    Reading read(const Variant& index) const noexcept;

    /// Adds a member, with a key or without one, before or after the member that a reference names, at the
    /// end when both references are missing. Fails with 457, 5 (also for a reference out of range) or 13.
    Failure add(Variant item, std::optional<String> key, const Variant& before = missing,
                const Variant& after = missing);

    /// Fills a new store, for which `members` bring their number: see KeyedSequence.
    void reserve(std::int32_t members) { members_.reserve(static_cast<std::uint32_t>(members)); }
    void appendNew(Variant item, String key, std::uint32_t hash) noexcept {
        members_.appendNew(std::move(item), std::move(key), hash);
    }
    void prefetch(std::uint32_t hash) const noexcept { members_.prefetch(hash); }

    /// Removes the member that `index` names. Fails with 5, 9 or 13.
    Failure remove(const Variant& index);

    void clear() noexcept { members_.clear(); }

    /// An enumerator over the members by position. It stays safe when the store changes: each step gives the
    /// member that then stands at the next position.
    Ref<Enumerator> enumerate() const;

  private:
    using Members = KeyedSequence<Variant>;

    const Variant* memberAt(Members::Place place) const noexcept {
        return place ? &members_[place] : nullptr;
    }

    Members members_;
};

} // namespace vlgs
