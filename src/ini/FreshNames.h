// SPDX-License-Identifier: MIT
// Names just as they were read: records in an arena, in order, found by position or by name without regard
// to case. Names can be added behind the others; whoever wants to change more makes a general store of them.
//
// Order and index stand in one table. Its first part are the slots of the index, open addressing with linear
// probing: a slot holds the place of a record, counted from the first record, in as many low bits as the
// last record takes, and the high bits of the name's hash in the others; the low bits of the hash are the
// home slot. A search mostly reads one cache line of slots, and the record that it is after.
#pragma once

#include "ini/TextArena.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace vlgs {

class FreshNames {
  public:
    using Place = TextArena::Place;
    static constexpr Place none = 0xFFFFFFFF;

    explicit FreshNames(Ref<TextArena> arena) noexcept : arena_(std::move(arena)) {}

    std::uint32_t count() const noexcept { return count_; }

    /// For who goes over the members in order and asks for the records to come: far enough for memory to
    /// answer in time, near enough to stay in the cache until then.
    static constexpr std::uint32_t recordsAhead = 16;

    /// The memory of the records of the whole document.
    std::size_t arenaSize() const noexcept { return arena_->size(); }

    /// The record at a position from 0, `none` behind the last one.
    Place at(std::uint32_t position) const noexcept { return position < count_ ? places()[position] : none; }
    /// Begins to fetch the record at a position, if there is one, for a caller who will come to it soon.
    void prefetch(std::uint32_t position) const noexcept {
        if (position < count_)
            arena_->prefetchFirstHalf(places()[position]);
    }
    Place find(StoredText name) const noexcept {
        return count_ == 0 ? none : name.visit([&](auto text) { return search(text, hashOf(text)); });
    }
    /// The record of that name; `none` when there was none, and then it was added with that text.
    Place findOrAdd(StoredText name, StoredText value);

    StoredText name(Place place) const noexcept { return arena_->name(place); }

  protected:
    const Ref<TextArena>& arena() const noexcept { return arena_; }
    /// The name as a String that it shares with the same name elsewhere.
    String sharedName(Place place) const;

  private:
    using Slot = std::uint32_t;
    static constexpr Slot free = 0xFFFFFFFF;
    static constexpr std::uint32_t smallest = 8;
    static constexpr std::uint32_t largest = std::uint32_t{1} << (sizeof(std::size_t) == 4 ? 28 : 31);

    struct Free {
        void operator()(Slot* table) const noexcept { std::free(table); }
    };

    static std::uint32_t hashOf(StoredText name) noexcept {
        return static_cast<std::uint32_t>(hashIgnoringCase(name));
    }
    static std::uint32_t roomOf(std::uint32_t capacity) noexcept { return capacity / 4 * 3 + capacity / 16; }
    Place* places() const noexcept { return table_.get() + capacity_; }
    template <class View>
    Place search(View name, std::uint32_t hash) const noexcept;
    void grow();
    void widenPlaces(Place last) noexcept;
    void index(Place place, std::uint32_t hash) noexcept;

    Ref<TextArena> arena_;
    std::unique_ptr<Slot, Free> table_; // capacity_ slots, then as many places as there is room for
    std::uint32_t capacity_ = 0;        // 0 or a power of two
    std::uint32_t count_ = 0;
    Place first_ = 0;
    Slot placeMask_ = 0; // the bits of a slot that hold a place
};

} // namespace vlgs
