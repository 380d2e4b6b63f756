// SPDX-License-Identifier: MIT
#include "cipher/KeyGenerator.h"

#include "automation/Convert.h"
#include "base/Ascii.h"

#include <bit>
#include <chrono>

namespace vlgs {

namespace {

/// The run time's random numbers: x' = (x · 1140671485 + 12820163) mod 2^24, the fraction x' / 2^24
/// (Microsoft Knowledge Base, article 231847).
class RandomFractions {
  public:
    explicit RandomFractions(float timer) noexcept {
        const auto bits = std::bit_cast<std::uint32_t>(timer);
        state_ = ((bits ^ bits >> 16) & 0xFFFF) << 8;
    }
    float next() noexcept {
        state_ = (state_ * 1140671485 + 12820163) & 0xFFFFFF;
        return static_cast<float>(state_) / 0x1000000;
    }

  private:
    std::uint32_t state_;
};

float secondsSinceMidnight() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    return duration<float>(now - floor<days>(now)).count();
}

} // namespace

unsigned char keyByteAt(float secondsSinceMidnight) noexcept {
    const float scaled = RandomFractions(secondsSinceMidnight).next() * 255.0F;
    return static_cast<unsigned char>(roundHalfToEven(scaled));
}

String generateCipherKey() {
    constexpr std::size_t bytes = 10;
    return String::build(2 * bytes, [&](char16_t* to) {
        for (std::size_t i = 0; i < bytes; ++i) {
            const auto byte = keyByteAt(secondsSinceMidnight());
            *to++ = ascii::hexDigits[byte >> 4];
            *to++ = ascii::hexDigits[byte & 0xF];
        }
    });
}

} // namespace vlgs
