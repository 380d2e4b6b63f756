// SPDX-License-Identifier: MIT
#include "conversion/LocaleSettings.h"

#include "base/CaseFold.h"
#include "base/Text.h"
#include "platform/Locale.h"

#include <algorithm>
#include <string>
#include <vector>

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

// The value as the host gives it. A NUL behind it protects the blanks at its end from trimming.
String valueOf(std::int32_t lInfoType) {
    const auto item = Locale::user().item(lInfoType);
    return String(trimLeft(item ? item->view().substr(0, longestValue) : std::u16string_view()));
}

// What the product makes of a value.
String repaired(std::int32_t lInfoType, String value) {
    switch (lInfoType) {
    case localeDate:
        return value.empty() ? String(u"/") : value;
    case localeShortDate:
    case localeLongDate:
        return datePattern(value);
    case localeTimeFormat:
        return timePattern(value);
    default:
        return value;
    }
}

// A pattern with its words between single quotes taken out of the way of the repairs.
class WordsApart {
  public:
    explicit WordsApart(std::u16string_view pattern) {
        for (std::size_t at = 0; at < pattern.size();) {
            const auto open = std::min(pattern.find(u'\'', at), pattern.size());
            const auto close = std::min(pattern.find(u'\'', open + 1), pattern.size());
            for (const char16_t c : pattern.substr(at, open - at))
                if (c != placeholder) // no character of text
                    rest_ += c;
            if (open < pattern.size()) {
                rest_ += placeholder;
                words_.push_back(close == open + 1 ? u"'" : pattern.substr(open + 1, close - open - 1));
            }
            at = close + 1;
        }
    }
    const std::u16string& rest() const { return rest_; }

    /// The repaired rest with the words in it, each character of them as the formatter takes it literally.
    String together(std::u16string_view rest) const {
        std::u16string pattern;
        auto word = words_.begin();
        for (const char16_t c : rest) {
            if (c != placeholder) {
                pattern += c;
                continue;
            }
            for (const char16_t letter : *word++)
                pattern.append({u'\\', letter});
        }
        return pattern;
    }

  private:
    static constexpr char16_t placeholder = u'\uFDD0';
    std::u16string rest_;
    std::vector<std::u16string_view> words_;
};

} // namespace

String g_GetLocaleSetting(std::int32_t lInfoType) {
    return cutAtNul(repaired(lInfoType, valueOf(lInfoType)));
}

String formattingPattern(std::int32_t lInfoType) {
    const String value = cutAtNul(valueOf(lInfoType));
    if (value.view().find(u'\'') == std::u16string_view::npos)
        return repaired(lInfoType, value);
    const WordsApart words(value);
    return words.together(repaired(lInfoType, words.rest()));
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
