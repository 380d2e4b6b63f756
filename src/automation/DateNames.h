// SPDX-License-Identifier: MIT
// The words of dates and times: names of months and weekdays, designators of the halves of the day.
#pragma once

#include "platform/Locale.h"

#include <deque>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace vlgs {

/// Blanks between the parts of a date: also the tab, the no-break and the ideographic blank.
constexpr bool isDateBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\u00A0' || c == u'\u202F' || c == u'\u3000';
}
std::u16string_view skipDateBlanks(std::u16string_view text);

/// The number in front of a text, which then begins behind it; nothing where there is none, or one of ten or
/// more digits, which is no part of a date.
std::optional<int> takeDateNumber(std::u16string_view& text);

enum class HalfOfDay { None, Morning, Afternoon };

/// The words of one locale. They are asked of the host when the first of them is needed, and kept.
class DateNames {
  public:
    explicit DateNames(const Locale& locale) : locale_(locale) {}
    DateNames(const DateNames&) = delete;
    DateNames& operator=(const DateNames&) = delete;

    // Each of these takes the longest of its words from the beginning of the text, in any case. A word ends
    // where its letters, or its digits, do.

    /// A month in the locale's language or in English, 1 to 12; nothing where there is no name.
    std::optional<int> takeMonth(std::u16string_view& text) const;
    /// Whether there was a weekday in the locale's language.
    bool takeWeekday(std::u16string_view& text) const;
    /// A designator as the locale writes it, also without its dots or blanks, or as English does.
    HalfOfDay takeHalf(std::u16string_view& text) const;

    /// Whether months have names like "3月", which begin with what could be a number.
    bool monthsBeginWithDigits() const;

  private:
    struct Word {
        std::u16string_view text;
        int meaning; // month, or half of the day
    };
    struct Words {
        std::vector<Word> months, weekdays, halves;
        std::deque<std::u16string> forms; // of designators, that the locale does not have
    };
    const Words& words() const;
    static void addHalf(Words& words, HalfOfDay half, std::u16string_view name,
                        std::initializer_list<std::u16string_view> english);
    static const Word* take(const std::vector<Word>& words, std::u16string_view& text);

    Locale locale_;
    mutable std::optional<Words> words_;
    mutable std::optional<bool> digits_;
};

} // namespace vlgs
