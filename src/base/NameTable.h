// SPDX-License-Identifier: MIT
// The names of a class's members, found without regard to case.
//
// Names are plain ASCII and are compared four characters at a time: a block of a name that is asked for, with
// the case bit set where the known name has a letter, equals the known block in lower case exactly when the
// two are the same name. Names of four and more characters end with a block that may overlap the one before.
#pragma once

#include <cstdint>
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
    bool equal(const Slot& slot, std::u16string_view name, std::uint64_t last) const noexcept;

    std::vector<Slot> slots_; // open addressing, a power of two
    std::size_t mask_;
    std::vector<Block> others_;
};

} // namespace vlgs
