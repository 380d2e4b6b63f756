// SPDX-License-Identifier: MIT
#include "cipher/CipherText.h"

#include "base/Ascii.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vlgs {

namespace {

constexpr std::size_t digitsPerBlock = 2 * Skipjack::blockLength;
constexpr std::size_t batch = 512; // blocks under way at once

constexpr std::uint8_t noDigit = 0xFF;

constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    for (std::size_t c = 0; c < values.size(); ++c) {
        const int value = ascii::hexValue(static_cast<char16_t>(c));
        values[c] = value < 0 ? noDigit : static_cast<std::uint8_t>(value);
    }
    return values;
}();

std::uint8_t digitValue(char16_t digit) noexcept {
    return digit < digitValues.size() ? digitValues[digit] : noDigit;
}

std::uint8_t pairValue(char16_t high, char16_t low) noexcept {
    const auto first = digitValue(high);
    const auto second = digitValue(low);
    return first == noDigit || second == noDigit ? std::uint8_t{0}
                                                 : static_cast<std::uint8_t>(first << 4 | second);
}

/// Puts one byte for each character into the blocks and zeros behind the last one.
void fill(std::span<Skipjack::Block> blocks, std::u16string_view text, CodePage page) noexcept {
    auto* to = blocks.front().data();
    for (const char16_t character : text)
        *to++ = character < 0x80 ? static_cast<std::uint8_t>(character)
                                 : static_cast<std::uint8_t>(page.codeOf(character) & 0xFF);
    std::fill(to, blocks.back().data() + Skipjack::blockLength, std::uint8_t{0});
}

} // namespace

Skipjack::Key cipherKey(std::u16string_view digits) noexcept {
    Skipjack::Key key{};
    for (std::size_t i = 0; i < key.size() && 2 * i < digits.size(); ++i) {
        const auto pair = digits.substr(2 * i, 2);
        key[i] = pair.size() == 2 ? pairValue(pair[0], pair[1]) : pairValue(u'0', pair[0]);
    }
    return key;
}

String encipherText(std::u16string_view text, const Skipjack::Key& key) {
    const Skipjack cipher(key);
    const auto page = CodePage::system();
    const auto blockCount = text.size() / Skipjack::blockLength + (text.size() % Skipjack::blockLength != 0);
    return String::build(blockCount * digitsPerBlock, [&](char16_t* to) {
        std::array<Skipjack::Block, batch> blocks;
        while (!text.empty()) {
            const auto piece = text.substr(0, batch * Skipjack::blockLength);
            const auto used =
                std::span(blocks).first((piece.size() + Skipjack::blockLength - 1) / Skipjack::blockLength);
            fill(used, piece, page);
            cipher.encrypt(used);
            for (const auto& block : used)
                for (const auto byte : block) {
                    *to++ = ascii::hexDigits[byte >> 4];
                    *to++ = ascii::hexDigits[byte & 0xF];
                }
            text.remove_prefix(piece.size());
        }
    });
}

String decipherText(std::u16string_view digits, const Skipjack::Key& key) {
    const Skipjack cipher(key);
    std::array<char16_t, 256> characters;
    for (std::size_t code = 0; code < characters.size(); ++code)
        characters[code] = CodePage::system().characterOf(static_cast<std::int16_t>(code));
    const auto blockCount = digits.size() / digitsPerBlock;
    return String::build(blockCount * Skipjack::blockLength, [&](char16_t* to) {
        std::array<Skipjack::Block, batch> blocks;
        const char16_t* from = digits.data();
        for (std::size_t left = blockCount; left > 0;) {
            const auto used = std::span(blocks).first(std::min(left, batch));
            for (auto& block : used)
                for (auto& byte : block) {
                    byte = pairValue(from[0], from[1]);
                    from += 2;
                }
            cipher.decrypt(used);
            for (const auto& block : used)
                for (const auto byte : block)
                    *to++ = characters[byte];
            left -= used.size();
        }
    });
}

} // namespace vlgs
