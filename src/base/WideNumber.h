// SPDX-License-Identifier: MIT
// Whole numbers of 96 bits, as decimals hold them, and their decimal texts.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace vlgs {

/// A whole number of 96 bits, which no type of 32-bit hosts holds.
class WideNumber {
  public:
    WideNumber() = default;
    WideNumber(std::uint32_t high, std::uint64_t low)
        : parts_{static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(low >> 32), high} {}
    bool isZero() const { return (parts_[0] | parts_[1] | parts_[2]) == 0; }
    std::uint32_t high() const { return parts_[2]; }
    std::uint64_t low() const { return std::uint64_t{parts_[1]} << 32 | parts_[0]; }
    /// Multiplies and adds; false when the result has more than 96 bits.
    bool multiplyAndAdd(std::uint32_t factor, std::uint32_t summand) {
        std::uint64_t carry = summand;
        for (auto& part : parts_) {
            carry += std::uint64_t{part} * factor;
            part = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        return carry == 0;
    }
    /// Takes the last decimal digit away and gives it.
    char takeDigit() {
        std::uint64_t rest = 0;
        for (std::size_t i = parts_.size(); i-- > 0;) {
            rest = rest << 32 | parts_[i];
            parts_[i] = static_cast<std::uint32_t>(rest / 10);
            rest %= 10;
        }
        return static_cast<char>('0' + rest);
    }

  private:
    std::array<std::uint32_t, 3> parts_{}; // lowest first
};

/// The exact text of a number with a decimal point `scale` places from its end; no point for no places.
inline std::string decimalText(WideNumber number, std::size_t scale) {
    std::string digits;
    while (!number.isZero() || digits.size() <= scale)
        digits.push_back(number.takeDigit());
    std::ranges::reverse(digits);
    if (scale > 0)
        digits.insert(digits.size() - scale, 1, '.');
    return digits;
}

} // namespace vlgs
