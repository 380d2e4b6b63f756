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

/// A letter in upper case, any other character as it is.
constexpr char16_t toUpper(char16_t c) noexcept {
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

/// The value of a hexadecimal digit of either case, -1 for any other character.
constexpr int hexValue(char16_t c) noexcept {
    if (isDigit(c))
        return c - u'0';
    const char16_t upper = toUpper(c);
    return upper >= u'A' && upper <= u'F' ? upper - u'A' + 10 : -1;
}

inline constexpr std::u16string_view hexDigits = u"0123456789ABCDEF";
inline constexpr std::u16string_view lowerHexDigits = u"0123456789abcdef";

} // namespace vlgs::ascii
