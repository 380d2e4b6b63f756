#include "platform/Guid.h"

namespace vlgs {

namespace {

constexpr std::size_t textLength = 38;

/// The hyphens' places in the text with braces.
constexpr bool isHyphenAt(std::size_t index) {
    return index == 9 || index == 14 || index == 19 || index == 24;
}

int digitValue(char16_t digit) noexcept {
    if (digit >= u'0' && digit <= u'9')
        return digit - u'0';
    if (digit >= u'A' && digit <= u'F')
        return digit - u'A' + 10;
    if (digit >= u'a' && digit <= u'f')
        return digit - u'a' + 10;
    return -1;
}

} // namespace

String guidText(const GuidValue& guid) {
    return String::build(textLength, [&](char16_t* to) {
        constexpr const char16_t* digits = u"0123456789ABCDEF";
        std::size_t digit = 0;
        for (std::size_t i = 1; i < textLength - 1; ++i) {
            const int shift = digit % 2 == 0 ? 4 : 0;
            to[i] = isHyphenAt(i) ? u'-' : digits[guid.bytes[digit++ / 2] >> shift & 15];
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
        const int value = digitValue(text[i]);
        if (value < 0)
            return std::nullopt;
        auto& byte = guid.bytes[digit++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
    }
    return guid;
}

} // namespace vlgs
