// SPDX-License-Identifier: MIT
// Tests of single characters that mean the ASCII ones alone, and hexadecimal digits. Bytes and UTF-16 alike.
#pragma once

#include <string_view>

namespace vlgs::ascii {

constexpr bool isDigit(char16_t c) noexcept {
    return c >= u'0' && c <= u'9';
}

constexpr bool isLetter(char16_t c) noexcept {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

/// A letter in lower case, any other character as it is.
constexpr char16_t toLower(char16_t c) noexcept {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

/// The value of a hexadecimal digit of either case, -1 for any other character.
constexpr int hexValue(char16_t c) noexcept {
    if (isDigit(c))
        return c - u'0';
    const char16_t lower = toLower(c);
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

inline constexpr std::u16string_view hexDigits = u"0123456789ABCDEF";
inline constexpr std::u16string_view lowerHexDigits = u"0123456789abcdef";

} // namespace vlgs::ascii
