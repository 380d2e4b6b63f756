// Texts as dates: the run time's conversion of a text to a date in the user's locale.
#pragma once

#include "automation/Variant.h"

#include <optional>

namespace vlgs {

/// The moment that a text stands for.
///
/// A date is day, month and year in the order of the locale's short date or, where the numbers do not fit
/// that order, in another one in which they do (13/2/2009 is 13 February in every locale); a number of three
/// or four digits or above 31 in front is the year. Months may be names or abbreviations in the user's
/// language or in English. Between them stand blanks and "/", "-", ".", "," or the locale's own separator and
/// units ("年"). Two-digit years lie in 1930 to 2029; a missing year is this year, a missing day the first. A
/// time is hours and minutes, or hours, minutes and seconds, with ":" or the locale's separator, or an hour
/// with a designator
/// ("10 AM"); it stands before or after the date, its designator before or after the time. A time alone lies
/// on day 0. Commas and blanks at either end do not matter. A text that is no date but a number is a day
/// count.
///
/// Raises 13 for any other text: weekday names, years outside 100 to 9999, days that no month has.
Date textToDate(std::u16string_view text);

/// The same, nothing for a text that is no date.
std::optional<Date> parseDate(std::u16string_view text);

/// The day of a text in the form of the locale's long date, weekday name included; nothing for any other
/// text.
std::optional<Date> parseLongDate(std::u16string_view text);

} // namespace vlgs
