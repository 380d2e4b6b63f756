// SPDX-License-Identifier: MIT
// The keys of a section as they were read: records in an arena, in order, found by name without regard to
// case. A Property is made of a record when somebody asks for one; from then on the Property is the key and
// the record keeps only its name.
//
// Keys can be added behind the others and given other texts. Whoever wants to change more, or has asked for
// many objects, makes a general store of them.
#pragma once

#include "automation/OrderedStore.h"
#include "base/HashIndex.h"
#include "ini/Property.h"
#include "ini/TextArena.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace vlgs {

class FreshKeys {
  public:
    using Place = TextArena::Place;
    static constexpr Place none = HashIndex::none;

    explicit FreshKeys(Ref<TextArena> arena) noexcept : arena_(std::move(arena)) {}

    std::uint32_t count() const noexcept { return static_cast<std::uint32_t>(places_.size()); }

    /// The key at a position from 0, none behind the last one.
    Place at(std::uint32_t position) const noexcept {
        return position < places_.size() ? places_[position] : none;
    }
    Place find(StoredText name) const noexcept;

    /// The key of that name; none when there was none, and then it was added with that text.
    Place findOrAdd(StoredText name, StoredText value);

    /// The object of a key, the same at each asking.
    Property& object(Place key);
    /// That object if it was made, else null.
    const Property* knownObject(Place key) const noexcept {
        return arena_->isReplaced(key) ? objects_[arena_->replacement(key)].get() : nullptr;
    }
    StoredText name(Place key) const noexcept { return arena_->name(key); }
    /// REQUIRES: there is no object of the key.
    StoredText value(Place key) const noexcept { return arena_->value(key); }

    /// Whether so many objects were made that a general store takes no more memory, and no more time to make
    /// than the objects took.
    bool isWorn() const noexcept { return objects_.size() * 4 > places_.size(); }

    /// A store of the objects of all keys.
    Ref<OrderedStore> toStore() const;

  private:
    static constexpr std::uint32_t scanned = 8; // up to so many keys, names are found without the index

    Place find(StoredText name, std::uint64_t hash) const noexcept;
    void add(StoredText name, StoredText value, std::uint64_t hash);
    void beginIndex();
    Ref<Property> makeObject(Place key) const;

    Ref<TextArena> arena_;
    std::vector<Place> places_;
    HashIndex index_; // of places
    std::vector<Ref<Property>> objects_;
};

} // namespace vlgs
