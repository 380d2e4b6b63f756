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

// The last block of a name, which is the only one of a short name.
std::uint64_t lastBlock(std::u16string_view name) noexcept {
    if (name.size() >= blockLength)
        return load(name.data() + name.size() - blockLength);
    std::uint64_t block = 0;
    for (const char16_t c : name)
        block = block << 16 | c;
    return block;
}

std::uint64_t firstBlock(std::u16string_view name) noexcept {
    return name.size() >= blockLength ? load(name.data()) : lastBlock(name);
}

// The length and both ends tell most names apart. Letters of either case and some other characters fall
// together, which costs a comparison at most. The factors are odd numbers of evenly spread bits: 2^64 divided
// by the golden ratio and by the square root of 2.
std::uint32_t hashName(std::u16string_view name) noexcept {
    const std::uint64_t first = (firstBlock(name) | everyCaseBit) + name.size();
    const std::uint64_t last = lastBlock(name) | everyCaseBit;
    return static_cast<std::uint32_t>((first * 0x9E3779B97F4A7C15 + last * 0xB504F333F9DE6485) >> 32);
}

} // namespace

NameTable::NameTable(std::size_t names) : slots_(std::bit_ceil(names * 2 + 1)) {}

void NameTable::add(std::string_view name, std::uint16_t member) {
    std::u16string lower, caseBits;
    for (const char c : name) {
        caseBits.push_back(ascii::isLetter(static_cast<unsigned char>(c)) ? u'\x20' : u'\0');
        lower.push_back(static_cast<char16_t>(c | caseBits.back()));
    }
    const auto hash = hashName(lower);
    auto slot = hash & (slots_.size() - 1);
    for (; slots_[slot].member != none; slot = (slot + 1) & (slots_.size() - 1))
        if (slots_[slot].hash == hash && equal(slots_[slot], lower))
            return;
    slots_[slot] = {hash, member, static_cast<std::uint16_t>(name.size()),
                    static_cast<std::uint32_t>(blocks_.size())};
    for (std::size_t i = 0; i + blockLength < lower.size(); i += blockLength)
        blocks_.push_back({load(lower.data() + i), load(caseBits.data() + i)});
    blocks_.push_back({lastBlock(lower), lastBlock(caseBits)});
}

inline bool NameTable::equal(const Slot& slot, std::u16string_view name) const noexcept {
    if (slot.length != name.size())
        return false;
    const Block* block = blocks_.data() + slot.firstBlock;
    for (std::size_t i = 0; i + blockLength < name.size(); i += blockLength, ++block)
        if ((load(name.data() + i) | block->caseBits) != block->lower)
            return false;
    return (lastBlock(name) | block->caseBits) == block->lower;
}

std::uint16_t NameTable::find(std::u16string_view name) const noexcept {
    const auto hash = hashName(name);
    for (auto slot = hash & (slots_.size() - 1); slots_[slot].member != none;
         slot = (slot + 1) & (slots_.size() - 1))
        if (slots_[slot].hash == hash && equal(slots_[slot], name))
            return slots_[slot].member;
    return none;
}

} // namespace vlgs
