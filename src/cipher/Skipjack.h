// SPDX-License-Identifier: MIT
// The Skipjack block cipher: blocks of 64 bits, keys of 80 bits, 32 rounds ("SKIPJACK and KEA Algorithm
// Specifications", version 2.0, National Institute of Standards and Technology, 1998).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace vlgs {

class Skipjack {
  public:
    static constexpr std::size_t blockLength = 8;
    using Key = std::array<std::uint8_t, 10>;
    /// Eight bytes, the first one the high byte of the first of the four words.
    using Block = std::array<std::uint8_t, blockLength>;

    explicit Skipjack(const Key& key) noexcept;

    /// Encipher and decipher each block by itself, in place.
    void encrypt(std::span<Block> blocks) const noexcept;
    void decrypt(std::span<Block> blocks) const noexcept;

  private:
    // For each key byte the F-table as a round uses it: entry x is F(x ^ key byte).
    std::array<std::array<std::uint8_t, 256>, std::tuple_size_v<Key>> keyed_;
};

} // namespace vlgs
