// SPDX-License-Identifier: MIT
// Dates, times and timestamps as users type them: the one parser behind the date and time members of
// `Conversion`.
#pragma once

#include "automation/Variant.h"

namespace vlgs {

/// The universal forms, the same on every machine.
inline constexpr const char16_t* universalDateFormat = u"yyyy\\-mm\\-dd";
inline constexpr const char16_t* universalTimeFormat = u"hh\\:nn\\:ss";
inline constexpr const char16_t* universalTimestampFormat = u"yyyy\\-mm\\-dd hh\\:nn\\:ss";
/// Year first, with the user's separators ("mm" behind "hh" is minutes).
inline constexpr const char16_t* localeTimestampFormat = u"yyyy/mm/dd hh:mm:ss";

/// Which parts of a moment are wanted; asking for neither asks for both.
struct TimestampParts {
    bool date = false;
    bool time = false;
};

/// The value as text in the universal pattern, or in that with the user's separators.
///
/// A value that is neither text nor empty is taken as a date. A text is read in the user's locale, then
/// without weekday names, and, with `bTruncGarbage`, once more without what stands before and behind the
/// first and last digit or month name. `dtTypedReturn` receives the moment, of which a part that is not
/// wanted is dropped.
///
/// Raises 11530 (both parts wanted), 11554 (date) or 11555 (time) with the extra text "Date=" and the value
/// for a text that is no such moment (a date of the year 1899 is none either), and what the conversion of
/// other values raises, all under the source "VlGeneralServices.modConversion.g_CTimestamp".
String g_CTimestamp(const Variant& vValue, TimestampParts parts, Date& dtTypedReturn, bool bTruncGarbage,
                    bool bUseLocaleFormat);

/// One part of the value, read as `g_CTimestamp` reads it with truncation, by a pattern of the date
/// formatter.
String partAs(const Variant& vValue, TimestampParts part, std::u16string_view pattern, Date& dtTypedReturn);

/// A timestamp text with the user's date and time separators in place of "-" and ":", formatted as
/// "yyyy/mm/dd hh:mm:ss"; a text that is then no date comes back as it stands after the replacements.
String g_CUniversalTimestampToLocale(const Variant& vTimestamp);

} // namespace vlgs
