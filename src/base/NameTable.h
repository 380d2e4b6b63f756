// SPDX-License-Identifier: MIT
// The names of a class's members, found without regard to case.
//
// Names are plain ASCII and are compared four characters at a time: a block of a name that is asked for, with
// the case bit set where the known name has a letter, equals the known block in lower case exactly when the
// two are the same name. Names of four and more characters end with a block that may overlap the one before.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace vlgs {

class NameTable {
  public:
    static constexpr std::uint16_t none = 0xFFFF;

    /// Room for that many names.
    explicit NameTable(std::size_t names);

    /// Makes `member` the answer for a name. REQUIRES: room; a name that is added again keeps its first
    /// answer.
    void add(std::string_view name, std::uint16_t member);

    /// The answer for a name in any case, or `none`.
    std::uint16_t find(std::u16string_view name) const noexcept;

  private:
    struct Block {
        std::uint64_t lower;
        std::uint64_t caseBits;
    };
    struct Slot {
        Block last = {};
        std::uint32_t others = 0; // where the blocks before the last one stand
        std::uint16_t member = none;
        std::uint16_t length = 0;
    };

    static constexpr std::size_t blockLength = 4;
    static constexpr std::uint64_t everyCaseBit = 0x0020002000200020;

    static std::uint64_t load(const char16_t* characters) noexcept {
        std::uint64_t block;
        std::memcpy(&block, characters, sizeof block);
        return block;
    }
    static std::uint64_t shortBlock(std::u16string_view name) noexcept {
        std::uint64_t block = 0;
        for (const char16_t c : name)
            block = block << 16 | c;
        return block;
    }
    // The last block of a name, which is the only one of a short name.
    static std::uint64_t lastBlock(std::u16string_view name) noexcept {
        return name.size() >= blockLength ? load(name.data() + name.size() - blockLength) : shortBlock(name);
    }
    // The length and both ends tell most names apart. Letters of either case and some other characters fall
    // together, which costs a comparison at most. The factors are odd numbers of evenly spread bits: 2^64
    // divided by the golden ratio and by the square root of 2.
    static std::uint32_t hashName(std::u16string_view name, std::uint64_t last) noexcept {
        const std::uint64_t first = name.size() >= blockLength ? load(name.data()) : last;
        const std::uint64_t length = name.size();
        return static_cast<std::uint32_t>((((first | everyCaseBit) + length) * 0x9E3779B97F4A7C15 +
                                           (last | everyCaseBit) * 0xB504F333F9DE6485) >>
                                          32);
    }
    bool equal(const Slot& slot, std::u16string_view name, std::uint64_t last) const noexcept;

    std::vector<Slot> slots_; // open addressing, a power of two
    std::size_t mask_;
    std::vector<Block> others_;
};

inline bool NameTable::equal(const Slot& slot, std::u16string_view name, std::uint64_t last) const noexcept {
    if (slot.length != name.size() || (last | slot.last.caseBits) != slot.last.lower)
        return false;
    const Block* block = others_.data() + slot.others;
    for (std::size_t i = 0; i + blockLength < name.size(); i += blockLength, ++block)
        if ((load(name.data() + i) | block->caseBits) != block->lower)
            return false;
    return true;
}

inline std::uint16_t NameTable::find(std::u16string_view name) const noexcept {
    const auto last = lastBlock(name);
    for (std::size_t slot = hashName(name, last) & mask_; slots_[slot].member != none;
         slot = (slot + 1) & mask_)
        if (equal(slots_[slot], name, last))
            return slots_[slot].member;
    return none;
}

} // namespace vlgs
