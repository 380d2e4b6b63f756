// SPDX-License-Identifier: MIT
#include "conversion/Timestamps.h"

#include "automation/Convert.h"
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Dates.h"
#include "base/Text.h"
#include "conversion/LocaleSettings.h"
#include "frame/Errors.h"
#include "platform/Locale.h"

#include <algorithm>
#include <string>

namespace vlgs {

namespace {

constexpr const char16_t* source = u"VlGeneralServices.modConversion.g_CTimestamp";
constexpr std::u16string_view marker = u"~~";

// The text of a value; one that has none gives "".
String textOf(const Variant& value) {
    try {
        return toText(value);
    } catch (const Error&) {
        return {};
    }
}

// The test that tells values that are taken as dates directly from texts and empty values.
bool isDirect(const Variant& value) {
    return (code(value.type()) & 7) != 0;
}

// Replaces every month name by its abbreviation between markers.
String markMonths(String text) {
    const Locale locale = Locale::user();
    for (int month = 1; month <= 12; ++month) {
        const auto abbreviation = locale.monthName(month, NameForm::Abbreviated);
        text = replaceAllIgnoringCase(text, locale.monthName(month), abbreviation);
        text = trim(replaceAllIgnoringCase(text, abbreviation, concat(marker, abbreviation, marker)));
    }
    return text;
}

std::u16string_view dropGarbage(std::u16string_view text) {
    const auto keeps = [](std::u16string_view rest) {
        return rest.starts_with(marker) || ascii::isDigit(rest.front());
    };
    while (!text.empty() && !keeps(text))
        text.remove_prefix(1);
    return text;
}

String truncateGarbage(const String& text) {
    const String marked = markMonths(text);
    std::u16string kept(dropGarbage(marked));
    std::ranges::reverse(kept);
    kept.assign(dropGarbage(kept));
    std::ranges::reverse(kept);
    return trim(replaceAll(kept, marker, u""));
}

WantedPart wantedOf(TimestampParts parts) {
    return parts.date == parts.time ? WantedPart::Any : parts.date ? WantedPart::Date : WantedPart::Time;
}

std::optional<Date> momentOf(String text, WantedPart wanted, bool truncate) {
    if (const auto date = isoMoment(text))
        return date;
    const DateReader reader(Locale::user());
    auto date = reader.read(text, wanted);
    // The user's own long form first: in some languages a weekday's abbreviation begins a month's name.
    if (!date)
        date = reader.readLongDate(text);
    if (date)
        return date;
    text = removeWeekdayNames(text, WeekdayOrder::FullNamesFirst);
    date = reader.read(text, wanted);
    return date || !truncate ? date : reader.read(truncateGarbage(text), wanted);
}

std::int32_t failureOf(TimestampParts parts) {
    return parts.date == parts.time ? eMsg_InvalidDateTimeFormat
           : parts.date             ? eMsg_InvalidDateFormat
                                    : eMsg_InvalidTimeFormat;
}

// A timestamp pattern and its pieces on either side of the blank.
struct Patterns {
    explicit Patterns(std::u16string_view pattern)
        : timestamp(pattern), date(pattern.substr(0, pattern.find(u' '))),
          time(pattern.substr(pattern.find(u' ') + 1)) {}
    DatePattern timestamp;
    DatePattern date;
    DatePattern time;
};
const Patterns& universalPatterns() {
    static const Patterns patterns(universalTimestampFormat);
    return patterns;
}
const Patterns& localePatterns() {
    static const Patterns patterns(localeTimestampFormat);
    return patterns;
}

Date dateOf(const Variant& value, TimestampParts parts, bool truncate) {
    if (isDirect(value))
        return toDate(value);
    const String text = textOf(value);
    const auto date = text.empty() ? std::nullopt : momentOf(text, wantedOf(parts), truncate);
    const bool timeAlone = date && parts.date && !parts.time && partsOf(*date).year == 1899;
    if (!date || timeAlone)
        raiseMessage(source, failureOf(parts), concat(u"Date=", text));
    return *date;
}

} // namespace

String g_CTimestamp(const Variant& vValue, TimestampParts parts, Date& dtTypedReturn, bool bTruncGarbage,
                    bool bUseLocaleFormat) {
    return underSource(source, [&] {
        const Date date = dateOf(vValue, parts, bTruncGarbage);
        const bool both = parts.date == parts.time;
        const auto& patterns = bUseLocaleFormat ? localePatterns() : universalPatterns();
        String text = formatDate(date,
                                 both         ? patterns.timestamp
                                 : parts.date ? patterns.date
                                              : patterns.time,
                                 FirstDayOfWeek::System);
        dtTypedReturn = both ? date : parts.date ? dayOf(date) : timeOf(date);
        return text;
    });
}

String partAs(const Variant& vValue, TimestampParts part, std::u16string_view pattern, Date& dtTypedReturn) {
    g_CTimestamp(vValue, part, dtTypedReturn, true, false);
    return formatDate(dtTypedReturn, pattern);
}

String g_CUniversalTimestampToLocale(const Variant& vTimestamp) {
    String text = toText(vTimestamp);
    text = replaceAllIgnoringCase(text, u"-", u"{date}");
    text = replaceAllIgnoringCase(text, u":", u"{time}");
    text = replaceAllIgnoringCase(text, u"{date}", g_GetLocaleSetting(localeDate));
    text = replaceAllIgnoringCase(text, u"{time}", g_GetLocaleSetting(localeTime));
    return formatValueAsDate(text, localeTimestampFormat);
}

} // namespace vlgs
