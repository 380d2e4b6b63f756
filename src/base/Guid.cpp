// SPDX-License-Identifier: MIT
#include "base/Guid.h"

namespace vlgs {

namespace {

constexpr std::size_t textLength = 38;

/// The hyphens' places in the text with braces.
constexpr bool isHyphenAt(std::size_t index) {
    return index == 9 || index == 14 || index == 19 || index == 24;
}

} // namespace

String guidText(const GuidValue& guid) {
    return String::build(textLength, [&](char16_t* to) {
        std::size_t digit = 0;
        for (std::size_t i = 1; i < textLength - 1; ++i) {
            const int shift = digit % 2 == 0 ? 4 : 0;
            to[i] = isHyphenAt(i) ? u'-' : ascii::hexDigits[guid.bytes[digit++ / 2] >> shift & 15];
        }
        to[0] = u'{';
        to[textLength - 1] = u'}';
    });
}

std::optional<GuidValue> parseGuid(std::u16string_view text) noexcept {
    if (text.size() != textLength || text.front() != u'{' || text.back() != u'}')
        return std::nullopt;
    GuidValue guid;
    std::size_t digit = 0;
    for (std::size_t i = 1; i < textLength - 1; ++i) {
        if (isHyphenAt(i)) {
            if (text[i] != u'-')
                return std::nullopt;
            continue;
        }
        const int value = ascii::hexValue(text[i]);
        if (value < 0)
            return std::nullopt;
        auto& byte = guid.bytes[digit++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
    }
    return guid;
}

} // namespace vlgs
