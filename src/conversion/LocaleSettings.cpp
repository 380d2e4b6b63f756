#include "conversion/LocaleSettings.h"

#include "base/CaseFold.h"
#include "base/Text.h"
#include "platform/Locale.h"

#include <string>

namespace vlgs {

namespace {

// Values are read through a buffer of 50 characters, the last of which is NUL.
constexpr std::size_t longestValue = 49;

bool contains(std::u16string_view text, std::u16string_view part) {
    return findIgnoringCase(text, part) != std::u16string_view::npos;
}

String datePattern(String pattern) {
    pattern = replaceAllIgnoringCase(pattern, u"gg", u"ggg");
    return contains(pattern, u"yy") ? pattern : replaceAllIgnoringCase(pattern, u"y", u"yy");
}

String timePattern(String pattern) {
    pattern = replaceAllIgnoringCase(pattern, u"m", u"n");
    if (contains(pattern, u"t")) {
        pattern = replaceAllIgnoringCase(pattern, u"t", u"");
        pattern = concat(pattern, pattern.view().ends_with(u' ') ? u"AMPM" : u" AMPM");
    }
    return trim(pattern);
}

} // namespace

String g_GetLocaleSetting(std::int32_t lInfoType) {
    const auto item = Locale::user().item(lInfoType);
    // The NUL behind the value protects the blanks at its end from the trimming.
    String value(trimLeft(item ? item->view().substr(0, longestValue) : std::u16string_view()));
    switch (lInfoType) {
    case localeDate:
        if (value.empty())
            value = u"/";
        break;
    case localeShortDate:
    case localeLongDate:
        value = datePattern(value);
        break;
    case localeTimeFormat:
        value = timePattern(value);
        break;
    default:
        break;
    }
    return cutAtNul(value);
}

udtLocaleSettings g_GetLocaleSettings() {
    udtLocaleSettings settings;
    settings.sDate = g_GetLocaleSetting(localeDate);
    settings.sDecimal = g_GetLocaleSetting(localeDecimal);
    settings.sListSep = g_GetLocaleSetting(localeListSeparator);
    settings.sLongDate = g_GetLocaleSetting(localeLongDate);
    settings.sShortDate = g_GetLocaleSetting(localeShortDate);
    settings.sNegative = g_GetLocaleSetting(localeNegative);
    settings.sPositive = g_GetLocaleSetting(localePositive);
    settings.sThousands = g_GetLocaleSetting(localeThousands);
    settings.sTime = g_GetLocaleSetting(localeTime);
    return settings;
}

String removeWeekdayNames(const String& text, WeekdayOrder order) {
    const Locale locale = Locale::user();
    String rest = text;
    const auto remove = [&](int weekday, NameForm form) {
        rest = trim(replaceAllIgnoringCase(rest, locale.weekdayName(weekday, form), u""));
    };
    if (order == WeekdayOrder::DayByDay) {
        for (int weekday = 1; weekday <= 7 && !rest.empty(); ++weekday) {
            remove(weekday, NameForm::Full);
            remove(weekday, NameForm::Abbreviated);
        }
    } else {
        for (const NameForm form : {NameForm::Full, NameForm::Abbreviated})
            for (int weekday = 1; weekday <= 7 && !rest.empty(); ++weekday)
                remove(weekday, form);
    }
    return rest;
}

} // namespace vlgs
