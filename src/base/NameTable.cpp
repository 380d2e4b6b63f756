// SPDX-License-Identifier: MIT
#include "base/NameTable.h"

#include "base/Ascii.h"

#include <bit>
#include <string>

namespace vlgs {

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

} // namespace vlgs
