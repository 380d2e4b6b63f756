// The ordered keyed store behind every collection: members numbered from 1, each a Variant, optionally with a
// text key. Keys are compared without regard to case and kept as given; no two members share a key.
//
// Nothing here raises a failure of the caller: each operation answers with the run time's number of the
// failure, 0 for none, and a store that failed is as it was. The numbers are
//   457  the key is already present;
//     5  a key that is not present, a reference before or after that names no member, both given at once;
//     9  a position out of range;
//    13  an index of a type that can name no member.
//
// Every operation takes logarithmic time at most; reading takes constant time while members were only
// appended.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"
#include "base/HashIndex.h"
#include "base/PositionTree.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vlgs {

class OrderedStore final : public Object {
  public:
    std::int32_t count() const noexcept { return static_cast<std::int32_t>(count_); }

    /// The member at a position from 1 to count(), else null. Members are valid until the store next changes.
    const Variant* at(std::int32_t position) const noexcept;

    /// The member with that key, or null. The empty text is a key like any other.
    const Variant* withKey(std::u16string_view key) const noexcept;

    struct Reading {
        const Variant* member = nullptr;
        std::int32_t failure = 0; // 5, 9 or 13 when there is no member
    };
    /// The member that `index` names: a number (rounded half to even) is a position, a text is a key.
    Reading read(const Variant& index) const noexcept;

    /// Adds a member, with a key or without one, before or after the member that a reference names, at the
    /// end when both references are missing. Fails with 457, 5 (also for a reference out of range) or 13.
    std::int32_t add(Variant item, std::optional<String> key, const Variant& before = missing,
                     const Variant& after = missing);

    /// Removes the member that `index` names. Fails with 5, 9 or 13.
    std::int32_t remove(const Variant& index);

    void clear() noexcept;

    /// An enumerator over the members by position. It stays safe when the store changes: each step gives the
    /// member that then stands at the next position.
    Ref<Enumerator> enumerate() const;

  private:
    // Members never move between entries, so the key index refers to entries by number. As long as members
    // were only appended, entry n is the member at position n + 1 and there is no tree; from then on the tree
    // holds the order, and entries of removed members stay empty until `compact` closes them up.
    struct Entry {
        Variant item;
        String key;
    };
    static constexpr std::uint32_t none = HashIndex::none;
    static constexpr std::size_t scanned = 8; // up to so many entries, keys are found without the index

    // What an index names: a position from 0, an entry, or nothing.
    struct Selection {
        enum class Kind : std::uint8_t { Failure, Position, Entry } kind;
        std::uint32_t value;
    };
    Selection select(const Variant& index) const noexcept;
    Selection selectPosition(double position) const noexcept;
    std::uint32_t entryOf(Selection selection) const noexcept;
    PositionTree::Place placeOf(Selection selection) const noexcept;

    struct Target {
        std::int32_t failure;
        bool atEnd;
        bool behind;
        Selection reference;
    };
    Target targetOf(const Variant& before, const Variant& after) const noexcept;

    std::uint32_t findKey(std::u16string_view key, std::uint64_t hash) const noexcept;
    bool scans() const noexcept { return !index_.exists() && entries_.size() <= scanned; }
    void reserveIndex(bool keyed);
    void insertIntoOrder(const Target& target, std::uint32_t entry);
    void compact();

    std::vector<Entry> entries_;
    // Of the keys but the empty one. The hashes, one for each entry, are there while the index is: an entry
    // is taken out of it without a look at the key's text.
    HashIndex index_;
    std::vector<std::uint32_t> hashes_;
    std::unique_ptr<PositionTree> order_;
    std::uint32_t count_ = 0;
    std::uint32_t emptyKeyEntry_ = none;
};

} // namespace vlgs
