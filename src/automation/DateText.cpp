// SPDX-License-Identifier: MIT
#include "automation/DateText.h"

#include "automation/DateItems.h"
#include "automation/DatePatternReader.h"
#include "automation/NumberText.h"
#include "base/Error.h"
#include "platform/Clock.h"

#include <array>
#include <span>

namespace vlgs {

namespace {

std::u16string_view withoutOuterPunctuation(std::u16string_view text) {
    const auto outer = [](char16_t c) { return isDateBlank(c) || c == u','; };
    while (!text.empty() && outer(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && outer(text.back()))
        text.remove_suffix(1);
    return text;
}

Date dateOf(const Moment& moment) {
    const auto day = moment.day.value_or(CalendarDay{1899, 12, 30});
    const auto time = moment.time.value_or(TimeOfDay{});
    return vlgs::dateOf(DateParts{day.year, day.month, day.day, time.hour, time.minute, time.second});
}

// ---- The order of day, month and year ----

// The numbers and the month name of a date.
struct DayParts {
    std::array<int, 3> numbers{};
    std::size_t count = 0;
    int month = 0;
    std::size_t monthPlace = 0; // how many numbers stand before it
};

std::optional<DayParts> dayParts(std::span<const DateItem> items) {
    DayParts parts;
    for (const auto& item : items) {
        if (item.kind == DateItem::Number) {
            if (parts.count == parts.numbers.size())
                return std::nullopt;
            parts.numbers[parts.count++] = item.value;
        } else {
            if (parts.month != 0)
                return std::nullopt;
            parts.month = item.value;
            parts.monthPlace = parts.count;
        }
    }
    return parts;
}

std::optional<CalendarDay> firstOf(int year, int month) {
    return validDay(year, month, 1);
}

std::optional<CalendarDay> namedDay(const DayParts& parts, DateOrder order, int thisYear) {
    const auto& [numbers, count, month, place] = parts;
    if (count == 1) {
        const auto day = validDay(thisYear, month, numbers[0]);
        return day ? day : firstOf(numbers[0], month);
    }
    if (count != 2)
        return std::nullopt;
    const auto dayFirst = validDay(numbers[1], month, numbers[0]);
    const auto yearFirst = validDay(numbers[0], month, numbers[1]);
    if (place == 0)
        return dayFirst;
    if (place == 2)
        return yearFirst;
    const bool prefersYear = order == DateOrder::YearMonthDay;
    return (prefersYear && yearFirst) || !dayFirst ? yearFirst : dayFirst;
}

std::optional<CalendarDay> twoNumbers(int first, int second, DateOrder order, int thisYear) {
    const bool dayFirst = order == DateOrder::DayMonthYear;
    for (const bool swapped : {dayFirst, !dayFirst})
        if (const auto day = validDay(thisYear, swapped ? second : first, swapped ? first : second))
            return day;
    const auto yearLast = firstOf(second, first); // 3/45 is March 1945
    return yearLast ? yearLast : firstOf(first, second);
}

std::optional<CalendarDay> threeNumbers(const std::array<int, 3>& numbers, DateOrder order) {
    using Places = std::array<std::size_t, 3>; // of year, month and day
    constexpr Places monthDayYear{2, 0, 1}, dayMonthYear{2, 1, 0}, yearMonthDay{0, 1, 2},
        yearDayMonth{0, 2, 1};
    constexpr std::array<Places, 4> orders[] = {
        {monthDayYear, yearMonthDay, dayMonthYear, yearDayMonth},
        {dayMonthYear, monthDayYear, yearMonthDay, yearDayMonth},
        {yearMonthDay, monthDayYear, dayMonthYear, yearDayMonth},
    };
    for (const auto& [year, month, day] : orders[static_cast<std::size_t>(order)])
        if (const auto result = validDay(numbers[year], numbers[month], numbers[day]))
            return result;
    return std::nullopt;
}

std::optional<CalendarDay> dayOf(const DayParts& parts, DateOrder order, int thisYear) {
    if (parts.month != 0)
        return namedDay(parts, order, thisYear);
    if (parts.count == 2)
        return twoNumbers(parts.numbers[0], parts.numbers[1], order, thisYear);
    return parts.count == 3 ? threeNumbers(parts.numbers, order) : std::nullopt;
}

// ---- The ways to read a text ----

class Reading {
  public:
    Reading(const Locale& locale, const DateNames& names) : locale_(locale), names_(names) {}

    std::optional<Moment> read(std::u16string_view text, WantedPart wanted) const {
        text = withoutOuterPunctuation(text);
        if (text.empty())
            return std::nullopt;
        if (wanted == WantedPart::Time)
            if (auto moment = ownTimeFirst(text))
                return moment;
        if (auto moment = ownDayFirst(text))
            return moment;
        if (wanted == WantedPart::Date)
            if (auto moment = general(text); moment && moment->day)
                return moment;
        if (auto moment = ownTimeFirst(text))
            return moment;
        if (auto moment = general(text))
            return moment;
        return ownTimeBehind(text);
    }

  private:
    // A date by numbers and names in any order, a time, or both.
    std::optional<Moment> general(std::u16string_view text) const {
        auto items = dateItems(withoutOuterPunctuation(text), locale_, names_);
        Moment moment;
        if (!items || !takeTime(*items, moment.time))
            return std::nullopt;
        if (items->empty())
            return moment.time ? std::optional(moment) : std::nullopt;
        const auto parts = dayParts(*items);
        moment.day = parts ? dayOf(*parts, locale_.dateOrder(), thisYear_) : std::nullopt;
        return moment.day ? std::optional(moment) : std::nullopt;
    }

    // A date in one of the locale's forms, and a time behind it.
    std::optional<Moment> ownDayFirst(std::u16string_view text) const {
        for (const auto item : {LocaleItem::ShortDatePattern, LocaleItem::LongDatePattern}) {
            auto rest = text;
            if (auto moment = DatePatternReader(locale_.text(item), names_).read(rest);
                moment && moment->day && addTime(*moment, rest))
                return moment;
        }
        DatePatternReader days(locale_.text(LocaleItem::LongDatePattern), names_);
        if (auto rest = text; days.dropYear(thisYear_))
            if (auto moment = days.read(rest); moment && moment->day && addTime(*moment, rest))
                return moment;
        return std::nullopt;
    }

    // A time in the locale's form, and a date behind it.
    std::optional<Moment> ownTimeFirst(std::u16string_view text) const {
        auto rest = text;
        auto moment = ownTime(rest);
        return moment && addDay(*moment, rest) ? moment : std::nullopt;
    }

    std::optional<Moment> ownTime(std::u16string_view& text) const {
        DatePatternReader reader(locale_.text(LocaleItem::TimePattern), names_);
        if (auto moment = reader.read(text); moment && moment->time)
            return moment;
        reader.dropSeconds();
        auto moment = reader.read(text);
        return moment && moment->time ? moment : std::nullopt;
    }

    // A date in any form before a time in the locale's form, whose separator may be that of dates:
    // "2009.03.07 14.05". The last blank, or the one before it, stands between them.
    std::optional<Moment> ownTimeBehind(std::u16string_view text) const {
        auto blank = text.size();
        for (int tries = 0; tries < 2; ++tries) {
            while (blank > 0 && !isDateBlank(text[blank - 1]))
                --blank;
            if (blank == 0)
                return std::nullopt;
            auto behind = text.substr(blank--);
            const auto time = ownTime(behind);
            auto moment = time && behind.empty() ? general(text.substr(0, blank)) : std::nullopt;
            if (moment && !moment->time) {
                moment->time = time->time;
                return moment;
            }
        }
        return std::nullopt;
    }

    // What follows a moment in one of the locale's forms: nothing, or more behind a blank or a comma.
    static bool endsOrParts(std::u16string_view rest) {
        return rest.empty() || isDateBlank(rest.front()) || rest.front() == u',';
    }

    bool addTime(Moment& moment, std::u16string_view rest) const {
        if (!endsOrParts(rest))
            return false;
        rest = withoutOuterPunctuation(rest);
        if (rest.empty())
            return true;
        auto behind = rest;
        auto time = ownTime(behind);
        if (!time || !withoutOuterPunctuation(behind).empty())
            time = general(rest);
        if (!time || time->day)
            return false;
        moment.time = time->time;
        return true;
    }

    bool addDay(Moment& moment, std::u16string_view rest) const {
        if (!endsOrParts(rest))
            return false;
        rest = withoutOuterPunctuation(rest);
        if (rest.empty())
            return true;
        for (const auto item : {LocaleItem::ShortDatePattern, LocaleItem::LongDatePattern}) {
            auto behind = rest;
            const auto day = DatePatternReader(locale_.text(item), names_).read(behind);
            if (day && day->day && withoutOuterPunctuation(behind).empty()) {
                moment.day = day->day;
                return true;
            }
        }
        const auto day = general(rest);
        if (!day || day->time)
            return false;
        moment.day = day->day;
        return true;
    }

    const Locale& locale_;
    const DateNames& names_;
    const int thisYear_ = localNow().year;
};

std::optional<Date> dayCount(std::u16string_view text, const Locale& locale) {
    const auto number = parseNumber(text, NumberGroups::Refuse, locale);
    if (!number)
        return std::nullopt;
    try {
        partsOf({*number});
    } catch (const Error&) {
        return std::nullopt;
    }
    return Date{*number};
}

} // namespace

DateReader::DateReader(const Locale& locale) : locale_(locale), names_(locale) {}

std::optional<Date> DateReader::read(std::u16string_view text, WantedPart wanted) const {
    const auto moment = Reading(locale_, names_).read(text, wanted);
    return moment ? std::optional(dateOf(*moment)) : dayCount(text, locale_);
}

std::optional<Date> DateReader::readLongDate(std::u16string_view text) const {
    auto rest = withoutOuterPunctuation(text);
    const DatePatternReader reader(locale_.text(LocaleItem::LongDatePattern), names_,
                                   DatePatternReader::Weekdays::Keep);
    const auto moment = reader.read(rest);
    return moment && moment->day && rest.empty() ? std::optional(dateOf(*moment)) : std::nullopt;
}

std::optional<Date> isoMoment(std::u16string_view text) noexcept {
    constexpr std::u16string_view form = u"0000-00-00 00:00:00";
    if (text.size() != 10 && text.size() != 16 && text.size() != 19)
        return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (form[i] == u'0' ? text[i] < u'0' || text[i] > u'9' : text[i] != form[i])
            return std::nullopt;
    const auto two = [&](std::size_t at) {
        return at < text.size() ? (text[at] - u'0') * 10 + (text[at + 1] - u'0') : 0;
    };
    const DateParts parts{two(0) * 100 + two(2), two(5), two(8), two(11), two(14), two(17)};
    if (!isDay(parts.year, parts.month, parts.day) || parts.hour > 23 || parts.minute > 59 ||
        parts.second > 59)
        return std::nullopt;
    return dateOf(parts);
}

std::optional<Date> parseDate(std::u16string_view text, WantedPart wanted) {
    if (const auto date = isoMoment(text))
        return date;
    return DateReader(Locale::user()).read(text, wanted);
}

Date textToDate(std::u16string_view text, WantedPart wanted) {
    const auto date = parseDate(text, wanted);
    if (!date)
        raise(RunTimeError::TypeMismatch);
    return *date;
}

} // namespace vlgs
