// SPDX-License-Identifier: MIT
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "base/Dates.h"
#include "support/Raised.h"
#include "support/UserLocale.h"

#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <random>

namespace vlgs::test {
namespace {

TEST(Dates, CountsDaysAndTheirTimesFromDayZero) {
    const struct {
        DateParts parts;
        double days;
    } cases[] = {
        {{1899, 12, 30, 0, 0, 0}, 0},       {{1899, 12, 29, 6, 0, 0}, -1.25},
        {{1899, 12, 30, 18, 0, 0}, 0.75},   {{1900, 1, 1, 0, 0, 0}, 2},
        {{100, 1, 1, 12, 0, 0}, -657434.5}, {{2009, 3, 7, 12, 0, 0}, 39879.5},
        {{9999, 12, 31, 0, 0, 0}, 2958465}, {{2000, 2, 29, 0, 0, 0}, 36585},
    };
    for (const auto& [parts, days] : cases) {
        EXPECT_EQ(dateOf(parts).days, days);
        EXPECT_EQ(partsOf({days}), parts) << days;
    }
    EXPECT_EQ(weekdayOf({0}), 7);
    EXPECT_EQ(weekdayOf({-1.25}), 6);
    EXPECT_FALSE(isDay(1900, 2, 29));
    for (const double outside :
         {-657435.0, 2958466.0, 2958465.999999999, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(errorOf([&] { partsOf({outside}); }), 6) << outside;
}

TEST(Dates, MovesAcrossDayZero) {
    EXPECT_EQ(addSeconds({-1.25}, 86400).days, 0.25);
    EXPECT_EQ(addSeconds({0.25}, -86400).days, -1.25);
    EXPECT_EQ(addDays({367}, 365).days, 732);
    EXPECT_EQ(secondsBetween({-1.25}, {0.25}), 86400);
    EXPECT_EQ(daysBetween({-0.75}, {1}), 1);
    EXPECT_EQ(dayOf({-1.25}).days, -1);
    EXPECT_EQ(timeOf({-1.25}).days, 0.25);
    EXPECT_EQ(errorOf([] { addDays({2958465}, 1); }), 5);
    EXPECT_EQ(errorOf([] { addDays({0}, INT64_MAX); }), 5);
}

TEST(DateFormat, KnowsThePatternLanguage) {
    const UserLocale english("en-US");
    const Date noonish = dateOf({2009, 3, 7, 14, 5, 9});
    const struct {
        Date date;
        std::u16string_view pattern;
        std::u16string_view text;
    } cases[] = {
        {noonish, u"yyyy\\-mm\\-dd hh\\:nn\\:ss", u"2009-03-07 14:05:09"},
        {noonish, u"yyyy/mm/dd hh:mm:ss", u"2009/03/07 14:05:09"},
        {noonish, u"YYYY mm HH mm", u"2009 03 14 05"},
        {noonish, u"d dd ddd dddd", u"7 07 Sat Saturday"},
        {noonish, u"m mmm mmmm", u"3 Mar March"},
        {noonish, u"q y yy w ww", u"1 66 09 7 10"},
        {noonish, u"h:n:s AM/PM", u"2:5:9 PM"},
        {noonish, u"hh am/pm A/P a/p AMPM", u"02 pm P p PM"},
        {noonish, u"ddddd | dddddd | ttttt", u"3/7/2009 | Saturday, March 7, 2009 | 2:05:09 PM"},
        {noonish, u"c", u"3/7/2009 2:05:09 PM"},
        {{39879}, u"c", u"3/7/2009"},
        {{0.5}, u"c", u"12:00:00 PM"},
        {{0}, u"c", u"12:00:00 AM"},
        {{0}, u"h AM/PM", u"12 AM"},
        {noonish, u"ggg\"y: \"yyyy\\d", u"y: 2009d"},
        {dateOf({100, 1, 1, 0, 0, 0}), u"yyyy yy", u"0100 00"},
        {dateOf({9999, 12, 31, 23, 59, 59}), u"c", u"12/31/9999 11:59:59 PM"},
        {{-1.25}, u"yyyy-mm-dd hh:nn", u"1899-12-29 06:00"},
        {{0}, u"\"at \"c", u"at 12:00:00 AM"},
        {{-0.5}, u"c", u"12:00:00 PM"},
        {{-1}, u"c ddd w", u"12/29/1899 Fri 6"},
        {dateOf({100, 1, 1, 12, 0, 0}), u"h:n:s a/p AMPM ddd w ww y q", u"12:0:0 p PM Fri 6 1 1 1"},
        {dateOf({2000, 2, 29, 0, 0, 0}), u"dd mmm y hh:nn AM/PM", u"29 Feb 60 12:00 AM"},
        {dateOf({9999, 12, 31, 23, 59, 59}), u"dddd ww y q h hh", u"Friday 53 365 4 23 23"},
        {{39879.999999}, u"yyyy\\-mm\\-dd hh\\:nn\\:ss", u"2009-03-08 00:00:00"},
        {noonish, u"mm hh-mm nn m", u"03 14-05 05 3"},
    };
    for (const auto& [date, pattern, text] : cases)
        EXPECT_EQ(formatDate(date, pattern).toUtf8(), String(text).toUtf8()) << String(pattern).toUtf8();
}

TEST(DateFormat, CountsWeeksByEitherRule) {
    const UserLocale english("en-US");
    const auto week = [](DateParts day, int first, FirstWeekOfYear rule) {
        return formatDate(dateOf(day), u"ww", FirstDayOfWeek(first), rule).toUtf8();
    };
    EXPECT_EQ(week({2009, 1, 1, 0, 0, 0}, 2, FirstWeekOfYear::FourDays), "1");
    EXPECT_EQ(week({2010, 1, 3, 0, 0, 0}, 2, FirstWeekOfYear::FourDays), "53");
    EXPECT_EQ(week({2008, 12, 29, 0, 0, 0}, 2, FirstWeekOfYear::FourDays), "1");
    EXPECT_EQ(week({2009, 1, 1, 0, 0, 0}, 1, FirstWeekOfYear::FullWeek), "52");
    EXPECT_EQ(week({2009, 12, 31, 0, 0, 0}, 1, FirstWeekOfYear::January1), "53");
}

struct Reading {
    std::u16string_view text;
    std::u16string_view moment; // as yyyy-mm-dd hh:nn:ss, "" for none
};

void expectReadings(std::span<const Reading> readings) {
    for (const auto& [text, moment] : readings) {
        const auto date = parseDate(text);
        const String got = date ? formatDate(*date, u"yyyy\\-mm\\-dd hh\\:nn\\:ss") : String();
        EXPECT_EQ(got.toUtf8(), String(moment).toUtf8()) << String(text).toUtf8();
    }
}

TEST(DateText, ReadsDatesInAMonthFirstLocale) {
    const UserLocale english("en-US");
    const Reading readings[] = {
        {u"2009-03-07 14:05:09", u"2009-03-07 14:05:09"},
        {u"3/7/2009", u"2009-03-07 00:00:00"},
        {u"13/2/2009", u"2009-02-13 00:00:00"},
        {u"3/7/29", u"2029-03-07 00:00:00"},
        {u"3/7/30", u"1930-03-07 00:00:00"},
        {u"2009/13/2", u"2009-02-13 00:00:00"},
        {u"7 Mar 2009", u"2009-03-07 00:00:00"},
        {u"March 7, 2009", u"2009-03-07 00:00:00"},
        {u"7-MARCH-09", u"2009-03-07 00:00:00"},
        {u"2009 March 7", u"2009-03-07 00:00:00"},
        {u"Mar 2009", u"2009-03-01 00:00:00"},
        {u"3/2009", u"2009-03-01 00:00:00"},
        {u", 3/7/2009 ,", u"2009-03-07 00:00:00"},
        {u"29 Feb 2008", u"2008-02-29 00:00:00"},
        {u"1/1/100", u"0100-01-01 00:00:00"},
        {u"12/31/9999 11:59:59 PM", u"9999-12-31 23:59:59"},
        {u"10:30 3/7/2009", u"2009-03-07 10:30:00"},
        {u"14:05", u"1899-12-30 14:05:00"},
        {u"2 pm", u"1899-12-30 14:00:00"},
        {u"12AM", u"1899-12-30 00:00:00"},
        {u"AM 10:05", u"1899-12-30 10:05:00"},
        {u"3/7/2009 2:05:09 PM", u"2009-03-07 14:05:09"},
        {u"39879.5", u"2009-03-07 12:00:00"},
        {u"-1.25", u"1899-12-29 06:00:00"},
        {u"14.30", u"1899-12-30 14:30:00"},
        {u"2.5", u"1899-12-30 02:05:00"},
        {u"1.5.2", u"1899-12-30 01:05:02"},
        {u"1 2 3 4.5.6", u"2003-01-02 04:05:06"},
        {u"1.2.3 4 5 6", u"2006-04-05 01:02:03"},
        {u"3/7/2009 14.30", u"2009-03-07 14:30:00"},
        {u"3/7/2009\t1 : 5 PM", u"2009-03-07 13:05:00"},
        {u"3\u30007\u30002009", u"2009-03-07 00:00:00"},
        {u"13:05 AM", u"1899-12-30 13:05:00"},
        {u"1/2/2003 4 pm", u"2003-01-02 16:00:00"},
        {u"14 2 3", u"2014-02-03 00:00:00"},
        {u"13/12/09", u"2013-12-09 00:00:00"},
        {u"31/12/99", u"1999-12-31 00:00:00"},
        {u"2/29/3", u"2002-03-29 00:00:00"},
        {u"01/02/0003", u"2003-01-02 00:00:00"},
        {u"9 6 March", u"2009-03-06 00:00:00"},
        {u"March 9 6", u"2006-03-09 00:00:00"},
        {u"3.7.2009", u""},
        {u"2009.03.07", u""},
        {u"Mar. 7, 2009", u""},
        {u"1 2 am 3", u""},
        {u"1/2 3:04 5", u""},
        {u"March 2009 5", u""},
        {u"1/2/3/4:5", u""},
        {u"1:2:3:4", u""},
        {u"1 am 2 pm", u""},
        {u"29 Feb 2009", u""},
        {u"Saturday, March 07, 2009", u""},
        {u"due 7 Mar 2009", u""},
        {u"3/7/99999", u""},
        {u"1/1/99 1/1/99", u""},
        {u"25:00", u""},
        {u"10:60", u""},
        {u"10:", u""},
        {u"10:30 11:30", u""},
        {u"3//7/2009", u""},
        {u"3/7/", u""},
        {u"March", u""},
        {u"", u""},
        {u" , ", u""},
        {u"\u200E3/7/2009", u""},
        {u"\u0663/7/2009", u""},
    };
    expectReadings(readings);
}

TEST(DateText, SuppliesThisYear) {
    const UserLocale english("en-US");
    const int year = localNow().year;
    EXPECT_EQ(parseDate(u"3/7"), dateOf({year, 3, 7, 0, 0, 0}));
    EXPECT_EQ(parseDate(u"7 March"), dateOf({year, 3, 7, 0, 0, 0}));
    EXPECT_EQ(parseDate(u"13/2"), dateOf({year, 2, 13, 0, 0, 0}));
}

TEST(DateText, ReadsTheUsersOwnForms) {
    const struct {
        const char* locale;
        std::vector<Reading> readings;
    } cases[] = {
        {"de-DE",
         {{u"07.03.2009", u"2009-03-07 00:00:00"},
          {u"7. M\u00E4rz 2009", u"2009-03-07 00:00:00"},
          {u"7 march 2009 14:05", u"2009-03-07 14:05:00"},
          {u"March 7, 2009", u"2009-03-07 00:00:00"},
          {u"3.7.", u""},
          {u"14.30", u""},
          {u"39879,5", u"2009-03-07 12:00:00"},
          {u"3/13/2009", u"2009-03-13 00:00:00"}}},
        {"ja-JP",
         {{u"2009/03/07", u"2009-03-07 00:00:00"},
          {u"2009\u5E743\u67087\u65E5", u"2009-03-07 00:00:00"},
          {u"2009\u5E743\u67087\u65E5 14:05", u"2009-03-07 14:05:00"},
          {u"2009'\u5E74'3'\u6708'7'\u65E5'", u"2009-03-07 00:00:00"}}},
        {"fi-FI",
         {{u"14.05.09", u"1899-12-30 14:05:09"},
          {u"7.3.2009 14.05.09", u"2009-03-07 14:05:09"},
          {u"2009.03.07 14.05.09", u"2009-03-07 14:05:09"},
          {u"7 maaliskuu 2009 14.05", u"2009-03-07 14:05:00"},
          {u"2009.03.07 25.05", u""}}},
        {"ko-KR",
         {{u"\uC624\uD6C4 2:05:09", u"1899-12-30 14:05:09"}, {u"2009-03-07 14:05", u"2009-03-07 14:05:00"}}},
        {"en-GB",
         {{u"3/2/2009", u"2009-02-03 00:00:00"},
          {u"2/13/2009", u"2009-02-13 00:00:00"},
          {u"1/2/29", u"2029-02-01 00:00:00"},
          {u"07 March 2009 2.30", u"2009-03-07 02:30:00"}}},
        {"fr-FR",
         {{u"7 mars 2009", u"2009-03-07 00:00:00"},
          {u"1 ao\u00FBt 30 10:30", u"1930-08-01 10:30:00"},
          {u"samedi 7 mars 2009", u""}}},
        {"ru-RU",
         {{u"7 \u043C\u0430\u0440\u0442\u0430 2009", u"2009-03-07 00:00:00"},
          {u"\u043C\u0430\u0440\u0442 2009", u"2009-03-01 00:00:00"}}},
        {"bg-BG",
         {{u"7.03.2009 \u0433.", u"2009-03-07 00:00:00"}, {u"7.03.2009 '\u0433.'", u"2009-03-07 00:00:00"}}},
        {"cs-CZ", {{u"11. prosince 2009", u"2009-12-11 00:00:00"}, {u"p\u00E1tek 2009", u""}}},
        {"hu-HU", {{u"2009. 03. 07.", u"2009-03-07 00:00:00"}, {u"7/3/2009", u"2009-07-03 00:00:00"}}},
        {"sv-SE", {{u"09-03-07", u"2009-03-07 00:00:00"}, {u"31/12/99", u"1999-12-31 00:00:00"}}},
        {"ar-EG",
         {{u"\u0645\u0627\u0631\u0633 7 2009", u"2009-03-07 00:00:00"},
          {u"2:05 \u0645", u"1899-12-30 14:05:00"}}},
    };
    for (const auto& [locale, readings] : cases) {
        const UserLocale user(locale);
        SCOPED_TRACE(locale);
        expectReadings(readings);
    }
    const UserLocale japanese("ja-JP");
    EXPECT_EQ(parseDate(u"3\u67087\u65E5 14:05"), dateOf({localNow().year, 3, 7, 14, 5, 0}));
}

// Finnish writes dates and times with dots.
TEST(DateText, PrefersThePartThatIsWanted) {
    const UserLocale finnish("fi-FI");
    const struct {
        std::u16string_view text;
        DateParts date, time;
    } cases[] = {
        {u"9.11.05", {2005, 11, 9}, {1899, 12, 30, 9, 11, 5}},
        {u"9.11", {localNow().year, 11, 9}, {1899, 12, 30, 9, 11, 0}},
        {u"14.30", {1899, 12, 30, 14, 30, 0}, {1899, 12, 30, 14, 30, 0}},
        {u"7.3.2009 9.11", {2009, 3, 7, 9, 11, 0}, {2009, 3, 7, 9, 11, 0}},
    };
    for (const auto& [text, date, time] : cases) {
        EXPECT_EQ(parseDate(text, WantedPart::Date), dateOf(date)) << String(text).toUtf8();
        EXPECT_EQ(parseDate(text, WantedPart::Time), dateOf(time)) << String(text).toUtf8();
    }
}

TEST(DateText, ReadsBackWhatTheFormatterWrites) {
    const UserLocale english("en-US");
    std::mt19937 random(11);
    std::uniform_int_distribution<std::int64_t> seconds(-657434LL * 86400, 2958465LL * 86400);
    for (int i = 0; i < 20000; ++i) {
        const Date date = addSeconds({0}, seconds(random));
        for (const auto* pattern : {u"c", u"yyyy\\-mm\\-dd hh\\:nn\\:ss", u"d mmmm yyyy h\\:nn\\:ss AMPM"}) {
            const String text = formatDate(date, pattern);
            const auto back = parseDate(text);
            ASSERT_TRUE(back) << text.toUtf8();
            EXPECT_EQ(secondsBetween(*back, date), 0) << text.toUtf8();
        }
    }
}

} // namespace
} // namespace vlgs::test
