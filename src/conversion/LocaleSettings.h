// SPDX-License-Identifier: MIT
// The user's locale as the product's programs know it: single settings, the record of nine, and weekday
// names.
#pragma once

#include "conversion/LocaleRecord.h"

namespace vlgs {

/// Platform numbers of the locale items that the component reads.
inline constexpr std::int32_t localeListSeparator = 12;
inline constexpr std::int32_t localeDecimal = 14;
inline constexpr std::int32_t localeThousands = 15;
inline constexpr std::int32_t localeDate = 29;
inline constexpr std::int32_t localeTime = 30;
inline constexpr std::int32_t localeShortDate = 31;
inline constexpr std::int32_t localeLongDate = 32;
inline constexpr std::int32_t localePositive = 80;
inline constexpr std::int32_t localeNegative = 81;
inline constexpr std::int32_t localeTimeFormat = 4099;

/// A locale item by its platform number: cut at 49 characters, leading blanks removed, and, for patterns,
/// turned into the date formatter's language (minutes are "n", the designator "AMPM" stands last, a
/// one-letter year has two). An empty date separator is "/", an unknown number gives "". Never raises.
String g_GetLocaleSetting(std::int32_t lInfoType);

/// The pattern to format a value by: that of `g_GetLocaleSetting`, with the words between single quotes in
/// the user's pattern ("d 'de' MMMM") as literal text. The formatter itself knows no single quotes.
String formattingPattern(std::int32_t lInfoType);

/// All nine settings. Never raises.
udtLocaleSettings g_GetLocaleSettings();

/// In what order weekday names are removed: each day's full name and then its abbreviation, or all full names
/// first.
enum class WeekdayOrder { DayByDay, FullNamesFirst };

/// The text without the weekday names of the user's language, in any case; blanks are trimmed after each
/// removal, punctuation that followed a name stays.
String removeWeekdayNames(const String& text, WeekdayOrder order);

} // namespace vlgs
