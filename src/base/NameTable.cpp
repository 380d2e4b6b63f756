// SPDX-License-Identifier: MIT
#include "base/NameTable.h"

#include "base/Ascii.h"

#include <bit>
#include <cstring>
#include <string>

namespace vlgs {

namespace {

constexpr std::size_t blockLength = 4;
constexpr std::uint64_t everyCaseBit = 0x0020002000200020;

std::uint64_t load(const char16_t* characters) noexcept {
    std::uint64_t block;
    std::memcpy(&block, characters, sizeof block);
    return block;
}

// Not inlined, so that longer names need no registers for it.
[[gnu::noinline]] std::uint64_t shortBlock(std::u16string_view name) noexcept {
    std::uint64_t block = 0;
    for (const char16_t c : name)
        block = block << 16 | c;
    return block;
}

// The last block of a name, which is the only one of a short name.
std::uint64_t lastBlock(std::u16string_view name) noexcept {
    return name.size() >= blockLength ? load(name.data() + name.size() - blockLength) : shortBlock(name);
}

std::uint64_t firstBlock(std::u16string_view name, std::uint64_t last) noexcept {
    return name.size() >= blockLength ? load(name.data()) : last;
}

// The length and both ends tell most names apart. Letters of either case and some other characters fall
// together, which costs a comparison at most. The factors are odd numbers of evenly spread bits: 2^64 divided
// by the golden ratio and by the square root of 2.
std::uint32_t hashName(std::u16string_view name, std::uint64_t last) noexcept {
    const std::uint64_t first = (firstBlock(name, last) | everyCaseBit) + name.size();
    const std::uint64_t end = last | everyCaseBit;
    return static_cast<std::uint32_t>((first * 0x9E3779B97F4A7C15 + end * 0xB504F333F9DE6485) >> 32);
}

} // namespace

NameTable::NameTable(std::size_t names) : slots_(std::bit_ceil(names * 2 + 1)), mask_(slots_.size() - 1) {}

void NameTable::add(std::string_view name, std::uint16_t member) {
    std::u16string lower, caseBits;
    for (const char c : name) {
        caseBits.push_back(ascii::isLetter(static_cast<unsigned char>(c)) ? u'\x20' : u'\0');
        lower.push_back(static_cast<char16_t>(c | caseBits.back()));
    }
    const auto last = lastBlock(lower);
    std::size_t slot = hashName(lower, last) & mask_;
    for (; slots_[slot].member != none; slot = (slot + 1) & mask_)
        if (equal(slots_[slot], lower, last))
            return;
    slots_[slot] = {{last, lastBlock(caseBits)},
                    static_cast<std::uint32_t>(others_.size()),
                    member,
                    static_cast<std::uint16_t>(name.size())};
    for (std::size_t i = 0; i + blockLength < lower.size(); i += blockLength)
        others_.push_back({load(lower.data() + i), load(caseBits.data() + i)});
}

inline bool NameTable::equal(const Slot& slot, std::u16string_view name, std::uint64_t last) const noexcept {
    if (slot.length != name.size() || (last | slot.last.caseBits) != slot.last.lower)
        return false;
    const Block* block = others_.data() + slot.others;
    for (std::size_t i = 0; i + blockLength < name.size(); i += blockLength, ++block)
        if ((load(name.data() + i) | block->caseBits) != block->lower)
            return false;
    return true;
}

std::uint16_t NameTable::find(std::u16string_view name) const noexcept {
    const auto last = lastBlock(name);
    for (std::size_t slot = hashName(name, last) & mask_; slots_[slot].member != none;
         slot = (slot + 1) & mask_)
        if (equal(slots_[slot], name, last))
            return slots_[slot].member;
    return none;
}

} // namespace vlgs
