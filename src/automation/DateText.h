// SPDX-License-Identifier: MIT
// Texts as dates: the run time's conversion of a text to a date in the user's locale.
#pragma once

#include "automation/DateNames.h"
#include "automation/Variant.h"

#include <optional>

namespace vlgs {

/// What a caller wants of a text that could be either: "9.15" is a day or a time where both are written with
/// dots.
enum class WantedPart { Any, Date, Time };

/// Reads texts as dates, in one locale.
///
/// A date is day, month and year in the order of the locale's short date or, where the numbers do not fit
/// that order, in another one in which they do (13/2/2009 is 13 February in every locale); years below 100
/// lie in 1930 to 2029; a missing year is this year, a missing day the first. Months may be names or
/// abbreviations in the locale's language or in English. Between the parts stand blanks, commas and one of
/// "/", "-" or the locale's own separator, or its units ("年").
///
/// A time is hours and minutes, or hours, minutes and seconds, with ":" or, where dates are not written with
/// dots, "."; or as the locale writes it; or an hour with a designator ("10 AM"). It stands before or behind
/// the date, its designator before or behind the time. A time alone lies on day 0.
///
/// Commas and blanks at either end do not matter. Weekday names, years outside 100 to 9999 and days that no
/// month has make a text no date.
class DateReader {
  public:
    explicit DateReader(const Locale& locale);

    /// The moment of a text. A text that is no date but a number without group separators is a day count.
    std::optional<Date> read(std::u16string_view text, WantedPart wanted = WantedPart::Any) const;

    /// The day of a text in the form of the locale's long date, weekday name included.
    std::optional<Date> readLongDate(std::u16string_view text) const;

  private:
    Locale locale_;
    DateNames names_;
};

/// The moment of "2009-03-07", "2009-03-07 14:05" or "2009-03-07 14:05:09", the forms that programs write,
/// which every locale reads so; nothing for any other text. It spares asking which locale is the user's.
std::optional<Date> isoMoment(std::u16string_view text) noexcept;

/// The moment of a text in the user's locale. Raises 13 for a text that is none.
Date textToDate(std::u16string_view text, WantedPart wanted = WantedPart::Any);

/// The same, nothing for a text that is no date.
std::optional<Date> parseDate(std::u16string_view text, WantedPart wanted = WantedPart::Any);

} // namespace vlgs
