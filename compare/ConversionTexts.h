// SPDX-License-Identifier: MIT
// Texts that may be dates or numbers, made by a grammar from a locale's own words and signs.
#pragma once

#include "platform/Locale.h"

#include <array>
#include <cmath>
#include <random>
#include <string>

namespace vlgs::com {

class ConversionTexts {
  public:
    ConversionTexts(const Locale& locale, unsigned seed) : locale_(locale), random_(seed) {}

    std::u16string date() {
        std::u16string text;
        switch (below(16)) {
        case 0:
            text = numbers();
            break;
        case 1:
        case 2:
            text = time();
            break;
        case 3:
            text = time() + u" " + day();
            break;
        case 4:
        case 5:
        case 6:
            text = day() + (one(10) ? u", " : u" ") + time();
            break;
        default:
            text = day();
        }
        if (one(20))
            text.insert(below(text.size() + 1), 1, pick(garbage));
        if (const auto blank = text.find(u' '); blank != text.npos && one(20))
            text[blank] = pick(u"\t\u00A0\u3000");
        if (one(2000))
            text = std::u16string(locale_.weekdayName(static_cast<int>(1 + below(7)))) + u" " + text;
        return padded(one(2000) ? text + u"," : text);
    }

    std::u16string number() {
        std::u16string text = one(8) ? grouped() : digits(1 + below(9));
        if (one(2))
            text += std::u16string(locale_.text(LocaleItem::DecimalSeparator)) + digits(below(6));
        const bool exponent = one(10);
        if (exponent)
            text += (one(2) ? u"E" : u"e-") + digits(1 + below(2));
        if (exponent ? one(100) : one(12))
            text = one(2) ? std::u16string(locale_.text(LocaleItem::CurrencySymbol)) + text
                          : text + u" " + std::u16string(locale_.text(LocaleItem::CurrencySymbol));
        if (one(4))
            text = one(4) ? text + u"-" : one(4) ? u"(" + text + u")" : (one(4) ? u"+" : u"-") + text;
        if (one(40))
            text = (one(2) ? u"&H" : u"&o") + digits(1 + below(6));
        if (one(15))
            text.insert(below(text.size() + 1), 1, pick(garbage));
        return padded(std::move(text));
    }

    /// A number of up to 14 significant digits, one in a hundred with an exponent in its text.
    double value() {
        const int size = static_cast<int>(below(15));
        const auto digits =
            std::floor(std::pow(10.0, size) * (1 + static_cast<double>(below(900000)) / 100000));
        const int places = static_cast<int>(below(static_cast<std::size_t>(size) + 4));
        const double value = digits / std::pow(10.0, one(100) ? places + 8 : places);
        return one(2) ? -value : value;
    }

    /// The same, mostly not nearer to 0 than 1.
    double valueFromOne() {
        for (;;)
            if (const double number = value(); std::abs(number) >= 1 || one(200))
                return number;
    }

    /// A day count of a moment in whole seconds, mostly of the years 1000 to 9999.
    double moment() {
        const double first = one(100) ? -657434 : -328716;
        const double day =
            one(4) ? first + static_cast<double>(below(3287181)) : static_cast<double>(below(60000));
        if (one(3))
            return day;
        const double time = static_cast<double>(below(86400)) / 86400;
        return one(20) ? time : day < 0 ? day - time : day + time;
    }

    std::u16string datePattern() {
        static constexpr std::u16string_view days[] = {u"d",    u"dd", u"ddd",  u"dddd",  u"m", u"mm", u"mmm",
                                                       u"mmmm", u"yy", u"yyyy", u"ddddd", u"q", u"y",  u"w"};
        static constexpr std::u16string_view times[] = {u"h:nn", u"hh:mm:ss", u"h", u"n", u"nn:ss", u"s"};
        static constexpr std::u16string_view rare[] = {u"ww",    u"a/p",      u"AM/PM h",
                                                       u"ttttt", u"AM/PM\\-", u"yy:m"};
        static constexpr std::u16string_view between[] = {u" ",   u"/",   u":",  u"-",
                                                          u"\\-", u"\\:", u", ", u"\"at \""};
        std::u16string pattern;
        for (auto i = 1 + below(4); i > 0; --i)
            pattern += std::u16string(days[below(std::size(days))]) +
                       std::u16string(i > 1 ? between[below(std::size(between))] : u"");
        if (one(2))
            pattern += u" " + std::u16string(times[below(std::size(times))]);
        if (one(8))
            pattern += one(2) ? u" AM/PM" : u"am/pm";
        return one(100) ? pattern + u" " + std::u16string(rare[below(std::size(rare))]) : pattern;
    }

    std::u16string numberMask() {
        std::u16string mask = one(3) ? u"#,##" : std::u16string(below(4), u'#');
        mask += std::u16string(mask.empty() || one(2) ? 1 + below(3) : 0, u'0');
        if (one(2))
            mask += u"." + std::u16string(below(4), u'0') + std::u16string(below(3), u'#');
        return one(100) ? u"\"= \"" + mask : mask;
    }

  private:
    static constexpr std::u16string_view garbage = u"x!?;+#'\"_@~\u0661\u200E";

    std::size_t below(std::size_t count) { return count == 0 ? 0 : random_() % count; }
    bool one(std::size_t in) { return below(in) == 0; }
    std::uint64_t wide() { return std::uint64_t{random_()} << 32 | random_(); }
    char16_t pick(std::u16string_view from) { return from[below(from.size())]; }
    std::u16string digits(std::size_t count) {
        std::u16string text;
        for (; count > 0; --count)
            text += static_cast<char16_t>(u'0' + below(10));
        return text;
    }
    std::u16string decimal(std::size_t value, std::size_t width = 1) {
        std::u16string text;
        for (; value > 0 || text.size() < width; value /= 10)
            text.insert(text.begin(), static_cast<char16_t>(u'0' + value % 10));
        return text;
    }
    std::u16string upToTwo(std::size_t value) { return decimal(value, 1 + below(2)); }
    std::u16string grouped() {
        std::u16string text = digits(1 + below(3));
        for (auto i = 1 + below(2); i > 0; --i)
            text += std::u16string(locale_.text(LocaleItem::ThousandsSeparator)) + digits(3);
        return text;
    }
    std::u16string padded(std::u16string text) {
        if (one(20))
            text.insert(0, 1, u' ');
        return one(20) ? text + u" " : text;
    }

    std::u16string separator() {
        switch (below(6)) {
        case 0:
            return u"/";
        case 1:
            return u"-";
        case 2:
            return u" ";
        default:
            const auto own = locale_.text(LocaleItem::DateSeparator);
            const bool directed = own.starts_with(u'\u200F');
            return std::u16string(directed && !one(100) ? own.substr(1) : own);
        }
    }
    std::u16string year() {
        if (one(5)) // two digits that every pivot takes alike
            return decimal(one(2) ? below(30) : 50 + below(50), 2);
        return decimal(one(20) ? 100 + below(9900) : 1900 + below(150));
    }
    std::u16string day() { return one(3) ? namedDay() : numericDay(); }
    std::u16string numericDay() {
        std::array<std::u16string, 3> parts{year(), upToTwo(1 + below(12)),
                                            upToTwo(1 + below(one(20) ? 31 : 28))};
        static constexpr std::array<std::size_t, 3> orders[] = {{1, 2, 0}, {2, 1, 0}, {0, 1, 2}};
        const auto& order = orders[one(8) ? below(3) : static_cast<std::size_t>(locale_.dateOrder())];
        const auto between = separator();
        const auto first = order[0] != 0 || !one(6) ? parts[order[0]] + between : std::u16string();
        if (one(6))
            return parts[order[0]] + between + parts[order[1]];
        return first + parts[order[1]] + between + parts[order[2]];
    }
    // Names that the platform here does not find, for they begin with another month's or with a digit.
    bool isHidden(std::u16string_view name, int month) const {
        if (name.front() >= u'0' && name.front() <= u'9' && locale_.monthName(month) != name)
            return true;
        for (int other = 1; other <= 12; ++other)
            if (other != month && name.starts_with(locale_.monthName(other)))
                return true;
        return false;
    }
    std::u16string name() {
        if (one(500)) {
            const Locale language = one(2) ? locale_ : Locale::named("en-US");
            return std::u16string(language.monthName(static_cast<int>(1 + below(12)), NameForm::Genitive));
        }
        int month = 0;
        std::u16string text;
        do {
            month = static_cast<int>(1 + below(12));
            text = locale_.monthName(month, one(3) ? NameForm::Abbreviated : NameForm::Full);
        } while (isHidden(text, month) && !one(100));
        if (one(10))
            for (char16_t& c : text)
                if (c >= u'a' && c <= u'z')
                    c = static_cast<char16_t>(c - 32);
        return text;
    }
    std::u16string namedDay() {
        const auto day = upToTwo(1 + below(one(20) ? 31 : 28));
        const auto fullYear = decimal(1900 + below(150));
        // Names like "3\u6708" behind a day would be numbers.
        const auto month = name();
        const bool numbered = month.front() >= u'0' && month.front() <= u'9' && !one(100);
        switch (below(numbered ? 3 : 6)) {
        case 0:
            return month + u" " + day + (one(2) ? u", " : u" ") + fullYear;
        case 1:
            return fullYear + u" " + month + u" " + day;
        case 2:
            return month + u" " + (one(2) ? day : fullYear);
        case 3:
            return day + u"-" + month + u"-" + fullYear;
        default:
            return day + (one(2) ? u" " : u"") + month + u" " + fullYear;
        }
    }
    std::u16string time() {
        const bool rare = one(30);
        const bool dottedDates = locale_.text(LocaleItem::DateSeparator).starts_with(u'.');
        const std::u16string_view colon = one(dottedDates ? 200 : 12) ? u"." : u":";
        std::u16string text = upToTwo(below(rare ? 30 : 24));
        const bool hourAlone = one(8);
        if (!hourAlone) {
            text += std::u16string(colon) + upToTwo(below(rare ? 70 : 60));
            if (one(2))
                text += std::u16string(colon) + upToTwo(below(60));
        }
        if (hourAlone || one(4))
            text += std::u16string(one(2) ? u" " : u"") +
                    std::u16string(locale_.text(one(2) ? LocaleItem::Morning : LocaleItem::Afternoon));
        return text;
    }
    // Numbers with anything between them.
    std::u16string numbers() {
        static constexpr std::u16string_view between[] = {u" ", u" ", u"/", u"-", u".", u":", u", "};
        const bool dottedTimes = locale_.text(LocaleItem::TimeSeparator) == u".";
        std::u16string text = upToTwo(below(30));
        for (auto i = below(5); i > 0; --i) {
            const auto mark = between[below(std::size(between))];
            text +=
                std::u16string(mark == u"." && dottedTimes && !one(20) ? u" " : mark) + upToTwo(below(28));
        }
        return text;
    }

    Locale locale_;
    std::mt19937 random_;
};

} // namespace vlgs::com
