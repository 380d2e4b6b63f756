// SPDX-License-Identifier: MIT
// Dates as texts: the pattern language of the run time's formatting function.
#pragma once

#include "automation/Variant.h"
#include "platform/Locale.h"

#include <string>
#include <vector>

namespace vlgs {

/// 0 asks for the user's setting, 1 (Sunday) to 7 (Saturday).
enum class FirstDayOfWeek { System = 0, Sunday = 1 };
/// The week that counts as the first: that of 1 January, the first of four days in the year, the first full
/// one.
enum class FirstWeekOfYear { System = 0, January1 = 1, FourDays = 2, FullWeek = 3 };

enum class DateToken : std::uint8_t;

/// A pattern taken apart, for callers that format by it again and again. It refers to the text it was made
/// from, which has to outlive it.
class DatePattern {
  public:
    explicit DatePattern(std::u16string_view pattern);

    struct Piece {
        DateToken token;
        std::u16string_view text; // of a literal, what is put out
    };
    const std::vector<Piece>& pieces() const noexcept { return pieces_; }
    /// Hours count to 12, since there is a designator.
    bool hasDesignator() const noexcept { return hasDesignator_; }

    /// Two digits of the year, month, day, hour, minute or second: which ones, and where in the text.
    struct Digits {
        std::size_t pair;
        std::size_t at;
    };
    /// What all texts by this pattern have in common, with a gap for each of `digits()`; empty unless the
    /// pattern has but literal text and numbers of fixed width.
    std::u16string_view layout() const noexcept { return layout_; }
    const std::vector<Digits>& digits() const noexcept { return digits_; }

  private:
    void lay(const Piece& piece);

    std::vector<Piece> pieces_;
    bool hasDesignator_ = false;
    std::u16string layout_;
    std::vector<Digits> digits_;
};

/// The moment by a pattern, in the user's locale. Letters may have either case.
///
///     c                     ddddd ttttt, without the time at midnight and without the date on day 0
///     d dd ddd dddd         day, weekday name
///     ddddd dddddd          the locale's short and long date
///     w ww                  weekday 1 to 7, week
///     m mm mmm mmmm         month, month name; m and mm directly after hours: minutes
///     q y yy yyyy           quarter, day of the year, year
///     g gg ggg              era name, which is empty
///     h hh n nn s ss        hour, to 12 where the pattern has a designator; minute, second
///     ttttt                 the locale's time
///     AM/PM am/pm A/P a/p   designators as they stand
///     AMPM                  the locale's designators
///     / :                   the locale's separators
///
/// A backslash takes the next character, double quotes the text between them as they stand; so does every
/// other character. Raises 6 for a day count outside the years 100 to 9999.
String formatDate(Date date, std::u16string_view pattern, FirstDayOfWeek firstDay = FirstDayOfWeek::Sunday,
                  FirstWeekOfYear firstWeek = FirstWeekOfYear::January1);

String formatDate(Date date, const DatePattern& pattern, FirstDayOfWeek firstDay = FirstDayOfWeek::Sunday,
                  FirstWeekOfYear firstWeek = FirstWeekOfYear::January1);

/// The same in another locale than the user's.
String formatDate(Date date, const DatePattern& pattern, const Locale& locale,
                  FirstDayOfWeek firstDay = FirstDayOfWeek::Sunday,
                  FirstWeekOfYear firstWeek = FirstWeekOfYear::January1);

/// The same for a value as the formatting function takes it: a text that is no date comes back as it is.
String formatValueAsDate(const Variant& value, std::u16string_view pattern,
                         FirstDayOfWeek firstDay = FirstDayOfWeek::Sunday,
                         FirstWeekOfYear firstWeek = FirstWeekOfYear::January1);

/// The text of a date as a text conversion makes it, pattern `c`.
String dateToText(Date date);

} // namespace vlgs
