#include "base/Text.h"

#include "base/CaseFold.h"

#include <algorithm>
#include <string>

namespace vlgs {

std::u16string_view trimLeft(std::u16string_view text) noexcept {
    const auto first = text.find_first_not_of(u' ');
    return first == text.npos ? text.substr(text.size()) : text.substr(first);
}

std::u16string_view trimRight(std::u16string_view text) noexcept {
    const auto last = text.find_last_not_of(u' ');
    return text.substr(0, last == text.npos ? 0 : last + 1);
}

std::u16string_view trim(std::u16string_view text) noexcept {
    return trimLeft(trimRight(text));
}

std::u16string_view cutAtNul(std::u16string_view text) noexcept {
    return text.substr(0, text.find(u'\0'));
}

String replaceAll(std::u16string_view text, std::u16string_view find, std::u16string_view replacement) {
    if (find.empty())
        return text;
    std::u16string out;
    std::size_t from = 0;
    for (auto at = text.find(find); at != text.npos; at = text.find(find, from)) {
        out.append(text, from, at - from).append(replacement);
        from = at + find.size();
    }
    if (from == 0)
        return text;
    return out.append(text, from);
}

std::vector<std::u16string_view> split(std::u16string_view text, std::u16string_view delimiter) {
    std::vector<std::u16string_view> pieces;
    std::size_t from = 0;
    if (!delimiter.empty())
        for (auto at = text.find(delimiter); at != text.npos; at = text.find(delimiter, from)) {
            pieces.push_back(text.substr(from, at - from));
            from = at + delimiter.size();
        }
    pieces.push_back(text.substr(from));
    return pieces;
}

std::vector<std::u16string_view> splitIgnoringCase(std::u16string_view text, std::u16string_view delimiter) {
    // Below 128 nothing but a letter equals another character.
    const bool isCaseless = std::ranges::all_of(delimiter, [](char16_t c) {
        return c < 0x80 && !(c >= u'A' && c <= u'Z') && !(c >= u'a' && c <= u'z');
    });
    if (isCaseless)
        return split(text, delimiter);
    std::vector<std::u16string_view> pieces;
    std::size_t from = 0;
    for (auto at = findIgnoringCase(text, delimiter); at != text.npos;
         at = findIgnoringCase(text, delimiter, from)) {
        pieces.push_back(text.substr(from, at - from));
        from = at + delimiter.size();
    }
    pieces.push_back(text.substr(from));
    return pieces;
}

String decimal(std::int64_t value) {
    const auto digits = std::to_string(value);
    return String::build(digits.size(), [&](char16_t* to) {
        for (char digit : digits)
            *to++ = static_cast<char16_t>(digit);
    });
}

} // namespace vlgs
