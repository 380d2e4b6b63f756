// SPDX-License-Identifier: MIT
#include "base/Text.h"

#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/LinearSearch.h"

#include <algorithm>
#include <optional>
#include <string>

namespace vlgs {

namespace {

char16_t unitAt(std::u16string_view text, std::size_t at) noexcept {
    return text[at];
}

// Short texts are found quicker by the plain search, which could compare all of a long one at every place.
class Search {
  public:
    explicit Search(std::u16string_view find) : find_(find) {
        if (find.size() > longestPlain)
            linear_.emplace(find);
    }
    std::size_t in(std::u16string_view text, std::size_t from) const noexcept {
        return linear_ ? linear_->in(text, from) : text.find(find_, from);
    }

  private:
    static constexpr std::size_t longestPlain = 16;
    std::u16string_view find_;
    std::optional<LinearSearch<std::u16string_view, unitAt>> linear_;
};

} // namespace

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
    const Search search(find);
    std::u16string out;
    std::size_t from = 0;
    for (auto at = search.in(text, 0); at != text.npos; at = search.in(text, from)) {
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
    if (!delimiter.empty()) {
        const Search search(delimiter);
        for (auto at = search.in(text, 0); at != text.npos; at = search.in(text, from)) {
            pieces.push_back(text.substr(from, at - from));
            from = at + delimiter.size();
        }
    }
    pieces.push_back(text.substr(from));
    return pieces;
}

std::vector<std::u16string_view> splitIgnoringCase(std::u16string_view text, std::u16string_view delimiter) {
    // Below 128 nothing but a letter equals another character.
    const bool isCaseless =
        std::ranges::all_of(delimiter, [](char16_t c) { return c < 0x80 && !ascii::isLetter(c); });
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
