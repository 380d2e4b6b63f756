// SPDX-License-Identifier: MIT
// Where the library's conversions and those of the platform under the tests are known to differ, and why.
#pragma once

#include "platform/Locale.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vlgs::com {

inline constexpr const char* none = "-"; // no result

struct Difference {
    std::string_view what, locale;
    std::string input, platform, ours; // a pattern stands before the value formatted by it

    bool has(std::string_view part) const { return input.find(part) != input.npos; }
    bool onlyOurs() const { return platform == none && ours != none; }
    bool onlyThePlatforms() const { return platform != none && ours == none; }
    bool isLocale(std::string_view names) const { return names.find(locale) != names.npos; }
    std::string platformWithout(char c) const {
        std::string text = platform;
        std::erase(text, c);
        return text;
    }
    bool hasWeekday() const {
        for (int weekday = 1; weekday <= 7; ++weekday)
            if (has(String(Locale::named(locale).weekdayName(weekday)).toUtf8()))
                return true;
        return false;
    }
    bool hasMonth(const Locale& language) const {
        for (int month = 1; month <= 12; ++month)
            if (has(String(language.monthName(month, NameForm::Genitive)).toUtf8()))
                return true;
        return false;
    }
    bool designatorInside() const {
        const std::string pattern = input.substr(0, input.rfind(' '));
        const auto first = std::min(pattern.find("AM/PM"), pattern.find("am/pm"));
        return first != pattern.npos && first + 5 < pattern.size();
    }
    double value() const { return std::strtod(input.c_str() + (input.rfind(' ') + 1), nullptr); }
};

struct KnownDifference {
    std::string_view name, reason;
    bool (*applies)(const Difference&);
};

inline constexpr KnownDifference knownDifferences[] = {
    {"two-digit years", "30 to 49 are 1930 to 1949 for the run time, 2030 to 2049 for the platform here",
     [](const Difference& d) {
         return d.what == "date of" && std::atoi(d.platform.c_str()) == std::atoi(d.ours.c_str()) + 100;
     }},
    {"weekday names", "texts with them are no dates for the run time; the platform here reads over them",
     [](const Difference& d) { return d.what == "date of" && d.hasWeekday() && d.onlyThePlatforms(); }},
    {"English months, and months beside a day",
     "the platform here knows the names of the locale by themselves alone",
     [](const Difference& d) {
         return d.what == "date of" && d.onlyOurs() &&
                (d.hasMonth(Locale::named("en-US")) || d.hasMonth(Locale::named(d.locale)));
     }},
    {"commas behind", "they stay where a weekday's name was, so the library reads over them",
     [](const Difference& d) {
         return d.what == "date of" && d.onlyOurs() && d.input.find_last_not_of(' ') == d.input.rfind(',');
     }},
    {"digits of other scripts", "the platform here takes them for ASCII ones or leaves them out",
     [](const Difference& d) { return d.has("\u0661") && d.onlyThePlatforms(); }},
    {"times with dots", "where dates have dots, the library also reads times as that locale writes them",
     [](const Difference& d) {
         return d.what == "date of" && d.isLocale("fi-FI da-DK") && d.has(".") && d.onlyOurs();
     }},
    {"months with numbers for names",
     "the platform here takes \"3\u6708\" for a 3 behind a day, and knows no short Chinese names",
     [](const Difference& d) {
         return d.what == "date of" && d.isLocale("ja-JP zh-CN ko-KR") &&
                (d.has("\u6708") || d.has("\uC6D4")) && d.ours != none;
     }},
    {"marks of direction", "the platform here does not know a separator that begins with one",
     [](const Difference& d) { return d.what == "date of" && d.has("\u200F") && d.onlyOurs(); }},
    {"months that begin with another", "the platform here finds the other: \u010Derven of \u010Dervenec",
     [](const Difference& d) {
         return d.what == "date of" && d.isLocale("cs-CZ") && d.has("\u010D") && d.onlyOurs();
     }},
    {"numbers with a blank behind",
     "where groups are parted by blanks, the platform here takes it for a separator",
     [](const Difference& d) {
         const bool words = d.input.find_first_not_of("0123456789.,+-() ") != d.input.npos;
         return (d.what == "date of" ? !words : d.has("&")) && d.onlyOurs() && d.input.ends_with(' ');
     }},
    {"currency with an exponent", "the platform here refuses both together",
     [](const Difference& d) {
         return d.what == "number of" && d.onlyOurs() && d.input.find_first_of("eE") != d.input.npos;
     }},
    {"two signs", "the run time takes one, or parentheses",
     [](const Difference& d) {
         return d.what == "number of" && d.onlyThePlatforms() && d.has("+") &&
                d.input.find_first_of("-(") != d.input.npos;
     }},
    {"signs before &H and &O", "the run time takes none",
     [](const Difference& d) { return d.what == "number of" && d.onlyThePlatforms() && d.has("&"); }},
    {"points in texts with an exponent", "the platform here writes a point in every locale",
     [](const Difference& d) {
         std::string pointed = d.ours;
         std::ranges::replace(pointed, ',', '.');
         return d.what == "text of" && d.has("e") && pointed == d.platform;
     }},
    {"small numbers without an exponent", "the platform here writes all their zeros from Wine 10 on",
     [](const Difference& d) {
         return d.what == "text of" && std::abs(d.value()) < 1e-4 && d.ours.find('E') != d.ours.npos &&
                d.platform.find('E') == d.platform.npos;
     }},
    {"quotation marks of patterns", "the platform here leaves them in the text",
     [](const Difference& d) {
         return d.platform != d.platformWithout('\'') && d.platformWithout('\'') == d.ours;
     }},
    {"years below 1000", "four digits of a year are four for the library, as for Windows",
     [](const Difference& d) {
         return (d.what == "text of moment" || d.what == "moment by") && d.value() < -328716;
     }},
    {"weeks", "the platform here counts some weeks of a year one short",
     [](const Difference& d) { return d.what == "moment by" && d.has("ww"); }},
    {"designators before other parts",
     "the platform here refuses a/p, counts hours behind a designator to 24 and loses the text behind it",
     [](const Difference& d) { return d.what == "moment by" && (d.has("a/p") || d.designatorInside()); }},
    {"hours beside AM/PM", "the platform here counts them to 24, though to 12 beside am/pm",
     [](const Difference& d) { return d.what == "moment by" && d.has("AM/PM") && d.has("h"); }},
    {"midnight", "the platform here writes no time for ttttt at midnight",
     [](const Difference& d) {
         return d.what == "moment by" && d.has("ttttt") && d.value() == std::trunc(d.value());
     }},
    {"months behind hours and years", "m is minutes for the platform here wherever hours stand before it",
     [](const Difference& d) { return d.what == "moment by" && d.has("yy:m"); }},
    {"numbers below 1",
     "the platform here cuts their whole part off, and keeps the sign of one that is then 0",
     [](const Difference& d) { return d.what == "number by" && std::abs(d.value()) < 1; }},
    {"signs of masks with a text in front", "the platform here writes the sign behind the text",
     [](const Difference& d) { return d.what == "number by" && d.value() < 0 && d.has("\"= "); }},
};

inline const KnownDifference* knownDifference(const Difference& difference) {
    const auto* known = std::ranges::find_if(
        knownDifferences, [&](const KnownDifference& candidate) { return candidate.applies(difference); });
    return known == std::end(knownDifferences) ? nullptr : known;
}

} // namespace vlgs::com
