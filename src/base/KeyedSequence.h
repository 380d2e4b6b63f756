// SPDX-License-Identifier: MIT
// The ordered keyed store behind every collection and every registry key: members in an order, optionally
// with a text key. Keys are compared without regard to case and kept as given; no two members share a key.
//
// A change that fails for want of memory leaves everything as it was. Every operation takes logarithmic time
// at most; reading takes constant time while members were only appended.
#pragma once

#include "base/CaseFold.h"
#include "base/HashIndex.h"
#include "base/PositionTree.h"
#include "base/String.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <vector>

namespace vlgs {

template <class Item>
class KeyedSequence {
  public:
    /// A member as a position or a key names it, or none. Valid until the next change.
    class Place {
      public:
        constexpr Place() noexcept = default;
        explicit operator bool() const noexcept { return kind_ != Kind::None; }

      private:
        friend KeyedSequence;
        enum class Kind : std::uint8_t { None, Position, Entry };
        constexpr Place(Kind kind, std::uint32_t value) noexcept : kind_(kind), value_(value) {}

        Kind kind_ = Kind::None;
        std::uint32_t value_ = 0;
    };

    /// Where a new member goes: before or behind another, at the end when there is no other.
    struct Target {
        Place reference = {};
        bool behind = false;
    };

    std::uint32_t size() const noexcept { return count_; }

    /// The member at a position from 0.
    Place at(std::uint32_t position) const noexcept {
        return position < count_ ? Place(Place::Kind::Position, position) : Place();
    }
    /// The member with that key. The empty text is a key like any other.
    Place find(std::u16string_view key) const noexcept {
        const std::uint32_t entry = findKey(key, index_.exists() ? hashIgnoringCase(key) : 0);
        return entry == none ? Place() : Place(Place::Kind::Entry, entry);
    }

    /// REQUIRES: the place is of a member.
    const Item& operator[](Place place) const noexcept { return entries_[entryOf(place)].item; }
    Item& operator[](Place place) noexcept { return entries_[entryOf(place)].item; }

    /// What `add` wants to know of a new key or of none. The memory that it will read of the index comes
    /// while the caller finds the target.
    std::uint64_t prepare(const std::optional<String>& key) const noexcept {
        const std::uint64_t hash = key && !key->empty() ? hashIgnoringCase(*key) : 0;
        index_.prefetch(hash);
        return hash;
    }

    /// Adds a member, with a key or without one; false, and nothing is added or moved from, when the key is
    /// already there. `prepared` is what `prepare` gave for the key.
    bool add(Item&& item, std::optional<String>&& key, std::uint64_t prepared, Target target = {});
    bool add(Item&& item, std::optional<String> key) {
        const std::uint64_t prepared = prepare(key);
        return add(std::move(item), std::move(key), prepared);
    }

    /// Makes room for so many members in all, each with a key.
    void reserve(std::uint32_t members);
    /// Adds a member at the end with a key that no other has. REQUIRES: reserved room, and only that way were
    /// members added; `hash` is the low half of `hashIgnoringCase(key)`.
    void appendNew(Item&& item, String&& key, std::uint32_t hash) noexcept;
    /// Begins to fetch what `appendNew` will read for a hash.
    void prefetch(std::uint32_t hash) const noexcept { index_.prefetch(hash); }

    /// REQUIRES: the place is of a member.
    void remove(Place place);

    void clear() noexcept;

  private:
    // Members never move between entries, so the key index refers to entries by number. As long as members
    // were only appended, entry n is the member at position n and there is no tree; from then on the tree
    // holds the order, and entries of removed members stay empty until `compact` closes them up.
    struct Entry {
        Item item;
        String key;
    };
    static constexpr std::uint32_t none = HashIndex::none;
    static constexpr std::size_t scanned = 8; // up to so many entries, keys are found without the index

    std::uint32_t entryOf(Place place) const noexcept {
        if (order_ && place.kind_ == Place::Kind::Position)
            return order_->numberAt(order_->placeAt(place.value_));
        return place.value_;
    }
    PositionTree::Place inOrder(Place place) const noexcept {
        return place.kind_ == Place::Kind::Position ? order_->placeAt(place.value_)
                                                    : order_->placeOf(place.value_);
    }

    std::uint32_t findKey(std::u16string_view key, std::uint64_t hash) const noexcept;
    bool scans() const noexcept { return !index_.exists() && entries_.size() <= scanned; }
    void reserveIndex(bool keyed);
    void insertIntoOrder(Target target, std::uint32_t entry);
    Place compact(Place kept);

    std::vector<Entry> entries_;
    // Of the keys but the empty one. The hashes, one for each entry, are there while the index is: an entry
    // is taken out of it without a look at the key's text.
    HashIndex index_;
    std::vector<std::uint32_t> hashes_;
    std::unique_ptr<PositionTree> order_;
    std::uint32_t count_ = 0;
    std::uint32_t emptyKeyEntry_ = none;
};

// A hint: without it a call in between costs each addition a twentieth.
template <class Item>
inline bool KeyedSequence<Item>::add(Item&& item, std::optional<String>&& key, std::uint64_t prepared,
                                     Target target) {
    if (key && findKey(*key, prepared) != none)
        return false;
    if (entries_.size() >= std::numeric_limits<std::int32_t>::max())
        throw std::bad_alloc();

    // Whatever may fail for want of memory comes before the first change.
    const bool indexed = key && !key->empty();
    const auto entry = static_cast<std::uint32_t>(entries_.size());
    if (entries_.capacity() == entries_.size())
        entries_.reserve(std::max<std::size_t>(4, entries_.size() * 2));
    reserveIndex(indexed);
    if (index_.exists())
        hashes_.reserve(entries_.capacity());
    const bool atEnd =
        !target.reference || (target.behind && !order_ && target.reference.value_ + 1 == count_);
    if (order_ || !atEnd)
        insertIntoOrder(target, entry);

    if (index_.exists())
        hashes_.push_back(static_cast<std::uint32_t>(prepared));
    if (indexed && index_.exists())
        index_.insert(prepared, entry);
    else if (key && key->empty())
        emptyKeyEntry_ = entry;
    entries_.push_back({std::move(item), key ? std::move(*key) : String()});
    ++count_;
    return true;
}

template <class Item>
void KeyedSequence<Item>::reserve(std::uint32_t members) {
    entries_.reserve(members);
    if (members <= scanned)
        return;
    index_.reserve(members);
    hashes_.reserve(members);
}

template <class Item>
void KeyedSequence<Item>::appendNew(Item&& item, String&& key, std::uint32_t hash) noexcept {
    if (index_.exists())
        hashes_.push_back(hash);
    if (key.empty())
        emptyKeyEntry_ = count_;
    else if (index_.exists())
        index_.insert(hash, count_);
    entries_.push_back({std::move(item), std::move(key)});
    ++count_;
}

template <class Item>
void KeyedSequence<Item>::remove(Place place) {
    if (entries_.size() > 64 && entries_.size() / 3 > count_)
        place = compact(place);
    const std::uint32_t entry = entryOf(place);
    const bool last = !order_ && entry + 1 == count_;
    if (!order_ && !last)
        order_ = std::make_unique<PositionTree>(count_);

    // The item ends when all is done: its end may run code that comes back to this sequence.
    const Entry gone = std::move(entries_[entry]);
    const bool indexed = index_.exists() && !gone.key.empty();
    const std::uint64_t hash = indexed ? hashes_[entry] : 0;
    index_.prefetch(hash); // comes while the order is changed, as does the key that ends below
    __builtin_prefetch(gone.key.data());
    if (last) {
        entries_.pop_back();
        if (index_.exists())
            hashes_.pop_back();
    } else {
        order_->erase(inOrder(place));
    }
    if (indexed)
        index_.erase(hash, entry);
    else if (entry == emptyKeyEntry_)
        emptyKeyEntry_ = none;
    if (--count_ == 0)
        clear();
}

template <class Item>
void KeyedSequence<Item>::clear() noexcept {
    const std::vector<Entry> gone = std::move(entries_);
    entries_.clear();
    index_.clear();
    hashes_ = {};
    order_.reset();
    count_ = 0;
    emptyKeyEntry_ = none;
}

template <class Item>
std::uint32_t KeyedSequence<Item>::findKey(std::u16string_view key, std::uint64_t hash) const noexcept {
    if (key.empty())
        return emptyKeyEntry_;
    const auto same = [&](std::uint32_t entry) {
        if (order_)
            order_->prefetch(entry);
        return equalIgnoringCase(entries_[entry].key, key);
    };
    if (!scans())
        return index_.find(hash, same);
    for (std::uint32_t entry = 0; entry < entries_.size(); ++entry)
        if (same(entry))
            return entry;
    return none;
}

// Makes room for one more entry. The index is begun when there are too many entries to search one by one and
// one of them has a key; until then, more entries than that mean that none has one.
template <class Item>
void KeyedSequence<Item>::reserveIndex(bool keyed) {
    if (index_.exists()) {
        index_.reserve(keyed);
        return;
    }
    if (entries_.size() < scanned || (entries_.size() > scanned && !keyed))
        return;
    const auto hasKey = [](const Entry& entry) { return !entry.key.empty(); };
    const auto keys = static_cast<std::uint32_t>(std::count_if(entries_.begin(), entries_.end(), hasKey));
    if (keys == 0 && !keyed)
        return;
    std::vector<std::uint32_t> hashes;
    hashes.reserve(entries_.capacity());
    index_.reserve(keys + keyed);
    for (std::uint32_t entry = 0; entry < entries_.size(); ++entry) {
        const std::uint64_t hash = hashIgnoringCase(entries_[entry].key);
        hashes.push_back(static_cast<std::uint32_t>(hash));
        if (hasKey(entries_[entry]))
            index_.insert(hash, entry);
    }
    hashes_ = std::move(hashes);
}

template <class Item>
void KeyedSequence<Item>::insertIntoOrder(Target target, std::uint32_t entry) {
    if (!order_)
        order_ = std::make_unique<PositionTree>(count_);
    PositionTree::Place place = target.reference ? inOrder(target.reference) : order_->placeAt(count_);
    if (target.reference && target.behind)
        ++place.offset;
    order_->insert(place, entry);
}

// Lays the members out in their order and drops the entries of removed ones; tells where the member at `kept`
// is then.
template <class Item>
typename KeyedSequence<Item>::Place KeyedSequence<Item>::compact(Place kept) {
    std::vector<Entry> entries;
    std::vector<std::uint32_t> hashes;
    entries.reserve(count_);
    hashes.reserve(index_.exists() ? count_ : 0);
    std::vector<std::uint32_t> numbers(entries_.size(), none);
    for (std::uint32_t position = 0; position < count_; ++position) {
        const std::uint32_t entry = entryOf(at(position));
        numbers[entry] = position;
        entries.push_back(std::move(entries_[entry]));
        if (index_.exists())
            hashes.push_back(hashes_[entry]);
    }
    index_.renumber(numbers);
    if (emptyKeyEntry_ != none)
        emptyKeyEntry_ = numbers[emptyKeyEntry_];
    entries_ = std::move(entries);
    hashes_ = std::move(hashes);
    order_.reset();
    return kept.kind_ == Place::Kind::Entry ? Place(Place::Kind::Entry, numbers[kept.value_]) : kept;
}

} // namespace vlgs
