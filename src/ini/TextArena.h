// SPDX-License-Identifier: MIT
// The memory of what was read together: names and values of keys, each pair in one record, written one behind
// the other and given back all at once when the last holder of the arena lets go.
//
// A record is named by its place, the number of 4-byte units before it. Places are counted through blocks of
// one size, so that a place becomes an address by one look into a short table; only the last block is still
// growing, and may move when it does: an address is good until the next record is added.
#pragma once

#include "automation/Object.h"
#include "ini/SharedTexts.h"
#include "ini/StoredText.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace vlgs {

class TextArena final : public Object {
  public:
    using Place = std::uint32_t;

    /// Keeps a name with its hash, and a value. Raises std::bad_alloc, also for texts longer than a String
    /// may be and when 16 GB are full.
    Place add(StoredText name, StoredText value, std::uint32_t hash);

    /// Begin to fetch the first half of a record, or the later one when it is of usual length.
    void prefetchFirstHalf(Place place) const noexcept { __builtin_prefetch(at(place)); }
    void prefetchLaterHalf(Place place) const noexcept { __builtin_prefetch(at(place) + 48); }

    StoredText name(Place place) const noexcept {
        const Record& record = this->record(place);
        return textAt(reinterpret_cast<const char*>(&record + 1), record.name);
    }
    std::uint32_t hash(Place place) const noexcept { return record(place).hash; }
    /// REQUIRES: the value was not replaced.
    StoredText value(Place place) const noexcept {
        const Record& record = this->record(place);
        return textAt(reinterpret_cast<const char*>(&record) + valueOffset(record), record.value);
    }

    /// Puts a number below 2^30 in the value's stead.
    void replaceValue(Place place, std::uint32_t number) noexcept;
    bool isReplaced(Place place) const noexcept { return (record(place).value & replaced) != 0; }
    /// That number. REQUIRES: the value was replaced.
    std::uint32_t replacement(Place place) const noexcept { return record(place).value & lengthBits; }

    /// The memory of all records. Each takes more than its texts and a line's punctuation together.
    std::size_t size() const noexcept { return last_ * blockSize + used_; }

    /// Gives back what was set aside for records to come.
    void fit() noexcept;

    /// Names as Strings, shared by the objects that are made of records.
    SharedTexts& names() noexcept { return names_; }

  private:
    // Followed by the characters of the name and, at an even address if it is wide, those of the value.
    struct Record {
        std::uint32_t name; // length, and whether it is wide
        std::uint32_t value;
        std::uint32_t hash; // of the name
    };
    static constexpr std::uint32_t wide = std::uint32_t{1} << 31;
    static constexpr std::uint32_t replaced = std::uint32_t{1} << 30;
    static constexpr std::uint32_t lengthBits = replaced - 1;

    static constexpr std::size_t unit = sizeof(std::uint32_t);
    static constexpr std::size_t blockSize = std::size_t{8} << 20;
    static constexpr std::size_t unitsOfBlock = blockSize / unit;

    struct Free {
        void operator()(char* memory) const noexcept { std::free(memory); }
    };
    struct Block {
        std::unique_ptr<char, Free> memory; // null where a record longer than a block goes on
        char* start;
    };

    static std::uint32_t formOf(StoredText text);
    static std::size_t bytesOf(std::uint32_t form) noexcept {
        return std::size_t{form & lengthBits} << (form >> 31);
    }
    static std::size_t valueOffset(Record record) noexcept {
        const std::size_t behindName = sizeof(Record) + bytesOf(record.name);
        return record.value & wide ? (behindName + 1) / 2 * 2 : behindName;
    }
    /// The text that stands in that form at an address.
    static StoredText textAt(const char* start, std::uint32_t form) noexcept {
        const std::size_t length = form & lengthBits;
        if (form & wide)
            return std::u16string_view(reinterpret_cast<const char16_t*>(start), length);
        return std::string_view(start, length);
    }

    char* at(Place place) const noexcept {
        return blocks_[place / unitsOfBlock].start + place % unitsOfBlock * unit;
    }
    Record& record(Place place) const noexcept { return *reinterpret_cast<Record*>(at(place)); }

    void makeRoom(std::size_t size);
    void growLast(std::size_t capacity);
    void addBlock(std::size_t capacity);

    std::vector<Block> blocks_;
    std::size_t last_ = 0;     // the block that is growing
    std::size_t used_ = 0;     // of it, in bytes
    std::size_t capacity_ = 0; // of it
    SharedTexts names_;
};

} // namespace vlgs
