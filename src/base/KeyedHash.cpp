// SPDX-License-Identifier: MIT
#include "base/KeyedHash.h"

#include <cstring>
#include <random>

namespace vlgs {

const KeyedHash& KeyedHash::ofThisProcess() noexcept {
    static const KeyedHash seeded = [] {
        std::random_device device;
        const auto random64 = [&] { return std::uint64_t{device()} << 32 | device(); };
        const std::uint64_t key = random64();
        return KeyedHash(key, random64());
    }();
    return seeded;
}

std::uint64_t hashExactly(std::u16string_view text) noexcept {
    KeyedHash hash;
    constexpr std::size_t unitsPerWord = sizeof(std::uint64_t) / sizeof(char16_t);
    std::uint64_t word;
    for (; text.size() >= unitsPerWord; text.remove_prefix(unitsPerWord)) {
        std::memcpy(&word, text.data(), sizeof word);
        hash.add(word);
    }
    // What is left, at most three units, and how many they are.
    word = static_cast<std::uint64_t>(text.size()) << 48;
    for (std::size_t i = 0; i < text.size(); ++i)
        word |= static_cast<std::uint64_t>(text[i]) << (16 * i);
    hash.add(word);
    return hash.finish();
}

} // namespace vlgs
