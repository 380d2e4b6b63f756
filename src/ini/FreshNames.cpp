// SPDX-License-Identifier: MIT
#include "ini/FreshNames.h"

#include "platform/LargePages.h"

#include <algorithm>
#include <bit>
#include <new>

namespace vlgs {

// REQUIRES: there are names.
template <class View>
FreshNames::Place FreshNames::search(View name, std::uint32_t hash) const noexcept {
    const std::uint32_t mask = capacity_ - 1;
    for (auto at = hash & mask; table_.get()[at] != free; at = (at + 1) & mask) {
        const Slot slot = table_.get()[at];
        if (((slot ^ hash) & ~placeMask_) != 0)
            continue;
        const Place place = first_ + (slot & placeMask_);
        arena_->prefetchLaterHalf(place);
        if (equalIgnoringCase(arena_->name(place), name))
            return place;
    }
    return none;
}
template FreshNames::Place FreshNames::search(std::string_view, std::uint32_t) const noexcept;
template FreshNames::Place FreshNames::search(std::u16string_view, std::uint32_t) const noexcept;

// Whatever may fail for want of memory comes before the first change.
FreshNames::Place FreshNames::findOrAdd(StoredText name, StoredText value) {
    const std::uint32_t hash = hashOf(name);
    const Place known = count_ == 0 ? none : name.visit([&](auto text) { return search(text, hash); });
    if (known != none)
        return known;
    if (count_ == roomOf(capacity_))
        grow();
    const Place place = arena_->add(name, value, hash);
    if (count_ == 0)
        first_ = place;
    widenPlaces(place);
    index(place, hash);
    places()[count_++] = place;
    return none;
}

String FreshNames::sharedName(Place place) const {
    const StoredText text = arena_->name(place);
    return text.visit(
        [&](auto view) { return arena_->names().share(view, [&] { return text.toString(); }); });
}

// Records are read in order, which is faster than in the order of the slots.
void FreshNames::grow() {
    if (capacity_ >= largest)
        throw std::bad_alloc();
    const std::uint32_t capacity = std::max(smallest, capacity_ * 2);
    const std::size_t size = (std::size_t{capacity} + roomOf(capacity)) * sizeof(Slot);
    std::unique_ptr<Slot, Free> table(static_cast<Slot*>(allocateInLargePages(size)));
    if (!table)
        throw std::bad_alloc();
    std::fill_n(table.get(), capacity, free);
    std::copy_n(places(), count_, table.get() + capacity);
    table_ = std::move(table);
    capacity_ = capacity;
    for (std::uint32_t position = 0; position < count_; ++position) {
        prefetch(position + recordsAhead);
        if (const Place soon = at(position + recordsAhead / 2); soon != none)
            __builtin_prefetch(&table_.get()[arena_->hash(soon) & (capacity - 1)], 1);
        index(at(position), arena_->hash(at(position)));
    }
}

// No place takes all bits, so that no slot in use is the free one.
void FreshNames::widenPlaces(Place last) noexcept {
    const Slot mask = static_cast<Slot>((std::uint64_t{1} << std::bit_width(last - first_ + 1)) - 1);
    if (mask <= placeMask_)
        return;
    for (std::uint32_t at = 0; at < capacity_; ++at)
        if (Slot& slot = table_.get()[at]; slot != free)
            slot &= ~mask | placeMask_;
    placeMask_ = mask;
}

void FreshNames::index(Place place, std::uint32_t hash) noexcept {
    std::uint32_t at = hash & (capacity_ - 1);
    while (table_.get()[at] != free)
        at = (at + 1) & (capacity_ - 1);
    table_.get()[at] = (hash & ~placeMask_) | (place - first_);
}

} // namespace vlgs
