// SPDX-License-Identifier: MIT
#include "conversion/Conversion.h"
#include "base/Dates.h"
#include "conversion/MaskedReplace.h"
#include "conversion/RevisionNumbers.h"
#include "platform/Locale.h"
#include "support/Raised.h"
#include "support/UserLocale.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace vlgs::test {
namespace {

constexpr const char* parserSource = "VlGeneralServices.modConversion.g_CTimestamp";

class ConversionTest : public testing::Test {
  protected:
    const UserLocale english_{"en-US"};
    const Ref<Conversion> conversion_ = make<Conversion>();
};

// ---- Locale settings ----

TEST_F(ConversionTest, TurnsPatternsIntoTheFormattersLanguage) {
    EXPECT_EQ(conversion_->ShortDateFormat(), u"M/d/yyyy");
    EXPECT_EQ(conversion_->LongDateFormat(), u"dddd, MMMM d, yyyy");
    EXPECT_EQ(conversion_->LocaleTimeFormat(), u"h:nn:ss AMPM");
    EXPECT_EQ(conversion_->GetLocaleSetting(29), u"/");
    EXPECT_EQ(conversion_->GetLocaleSetting(123456), u"");
    const UserLocale korean("ko-KR");
    EXPECT_EQ(conversion_->LocaleTimeFormat(), u"h:nn:ss AMPM") << "the designator moves to the end";
    const UserLocale german("de-DE");
    EXPECT_EQ(conversion_->GetLocaleSettings().sDecimal, u",");
    EXPECT_EQ(conversion_->GetLocaleSettings().sThousands, u".");
    EXPECT_EQ(conversion_->GetLocaleSettings().sListSep, u";");
    EXPECT_EQ(conversion_->LocaleTimeFormat(), u"HH:nn:ss");
}

// The words of a pattern are literal text in a value, however the pattern itself is turned.
TEST_F(ConversionTest, WritesTheWordsOfTheUsersPatterns) {
    const Date moment = dateOf({2009, 3, 7, 14, 5, 9});
    const struct {
        const char* locale;
        std::u16string_view longFormat, longDate, time;
    } cases[] = {
        {"es-ES", u"dddd, d 'de' MMMM 'de' yyyy", u"s\u00E1bado, 7 de marzo de 2009", u"14:05:09"},
        {"ja-JP", u"yyyy'\u5E74'M'\u6708'd'\u65E5'", u"2009\u5E743\u67087\u65E5", u"14:05:09"},
        {"ee-GH", u"dddd, MMMM d 'lia' yyyy", u"memle\u0256a, tedoxe 7 lia 2009",
         u"ga 2:05:09 \u0263etr\u0254"},
    };
    for (const auto& [locale, longFormat, longDate, time] : cases) {
        const UserLocale user(locale);
        EXPECT_EQ(conversion_->LongDateFormat().toUtf8(), String(longFormat).toUtf8());
        EXPECT_EQ(conversion_->CLongDate(moment, nullptr).toUtf8(), String(longDate).toUtf8());
        EXPECT_EQ(conversion_->CLocaleTime(moment, nullptr).toUtf8(), String(time).toUtf8());
    }
    const UserLocale bulgarian("bg-BG");
    EXPECT_EQ(conversion_->CShortDate(moment, nullptr), u"7.03.2009 \u0433.");
    EXPECT_TRUE(conversion_->ShortDate().view().ends_with(u" \u0433."));
}

TEST_F(ConversionTest, TakesWeekdayNamesOut) {
    EXPECT_EQ(conversion_->RemoveWeekdayName(u"Saturday, March 07, 2009"), u", March 07, 2009");
    EXPECT_EQ(conversion_->RemoveWeekdayName(u" SAT mon 3 "), u"3");
    EXPECT_EQ(conversion_->RemoveWeekdayName(u""), u"");
}

// ---- Revision numbers ----

TEST_F(ConversionTest, CountsRevisions) {
    const std::pair<std::u16string_view, std::u16string_view> next[] = {
        {u"", u"1.0000"},       {u"1.0000", u"1.0001"},
        {u"1.9998", u"1.9999"}, {u"1.9999", u"2.0000"},
        {u"3.5", u"3.0006"},    {u" 2.0010 ", u"2.0011"},
        {u"abc", u""},          {u"1", u""},
        {u"1.", u""},           {u".5", u""},
        {u"0.5", u""},          {u"1.10000", u""},
        {u"1.2.3", u""},        {u"-1.5", u""},
        {u"1 .5", u""},         {u"01.0200", u"1.0201"},
        {u"\u0661.5", u""},
    };
    for (const auto& [from, to] : next)
        EXPECT_EQ(conversion_->IncrementRevisionNumber(from), to) << String(from).toUtf8();
    EXPECT_EQ(raised([&] { conversion_->IncrementRevisionNumber(u"2147483648.1"); }),
              (Raised{6, "VlGeneralServices.modConversion.SplitRevNumber_", "Overflow"}));
    EXPECT_EQ(raised([&] { conversion_->IncrementRevisionNumber(u"2147483647.9999"); }).source,
              "VlGeneralServices.modConversion.g_IncrementRevisionNumber");
    EXPECT_EQ(errorOf([&] { conversion_->IncrementRevisionNumber(String(40000, u'0')); }), 6);
    EXPECT_EQ(conversion_->IncrementRevisionNumber(concat(String(400, u'9'), u".1")), u"");
    EXPECT_EQ(conversion_->IncrementRevisionNumber(u"2147483648."), u"") << "no number at all comes first";
}

TEST_F(ConversionTest, ComparesRevisions) {
    const struct {
        String first, second;
        Variant order;
    } cases[] = {
        {u"1.0001", u"1.1", 0}, {u"1.0002", u"1.0010", -1}, {u"2.0000", u"1.9999", 1},
        {u"", u"1.0000", u""},  {u"1.0", u"junk", u""},     {u"x", u"X", u""},
    };
    for (auto [first, second, order] : cases)
        EXPECT_EQ(conversion_->RevNumComp(first, second), order) << first.toUtf8();
    String text = u"01.20";
    EXPECT_TRUE(conversion_->IsValidCorvaRevisionNumber(text));
    EXPECT_EQ(text, u"1.0020");
    text = u"x1.0";
    EXPECT_FALSE(conversion_->IsValidCorvaRevisionNumber(text));
    EXPECT_EQ(text, u"x1.0");
    const UserLocale german("de-DE");
    text = u"1,5";
    EXPECT_TRUE(conversion_->IsValidCorvaRevisionNumber(text));
    EXPECT_EQ(text, u"1.0005");
    EXPECT_EQ(conversion_->IncrementRevisionNumber(u"1,5.0"), u"");
}

// ---- Timestamps ----

TEST_F(ConversionTest, ReadsMomentsAndDropsGarbageWhereAsked) {
    Date typed;
    EXPECT_EQ(conversion_->CTimestamp(u"2009-03-07 14:05:09", false, false, &typed), u"2009-03-07 14:05:09");
    EXPECT_EQ(typed, dateOf({2009, 3, 7, 14, 5, 9}));
    EXPECT_EQ(conversion_->CTimestamp(u"2009-03-07 14:05:09", true, false, &typed), u"2009-03-07");
    EXPECT_EQ(typed, dateOf({2009, 3, 7, 0, 0, 0}));
    EXPECT_EQ(conversion_->CTimestamp3(u"2009-03-07 14:05:09", true, true, nullptr, false, true),
              u"2009/03/07 14:05:09");
    EXPECT_EQ(conversion_->CTimestamp(u"Saturday, March 07, 2009", true, false, nullptr), u"2009-03-07");
    EXPECT_EQ(conversion_->CTimestamp(u"due 7 Mar 2009!!", true, false, nullptr), u"2009-03-07");
    EXPECT_EQ(conversion_->CTimestamp(u"9 March 2009 - today", true, false, nullptr), u"2009-03-09");
    EXPECT_EQ(conversion_->CTimestamp(39879.5, false, false, nullptr), u"2009-03-07 12:00:00");
    EXPECT_EQ(conversion_->CTimestamp(-1.25, false, true, &typed), u"06:00:00");
    EXPECT_EQ(typed, Date{0.25});
}

TEST_F(ConversionTest, RefusesWhatIsNoMoment) {
    const struct {
        Variant value;
        bool date, time, truncate;
        std::int32_t code;
        const char* extra;
    } cases[] = {
        {u"14:05", true, false, true, 11554, "\r\nDate=14:05"},
        {u"", false, true, true, 11555, "\r\nDate="},
        {{}, true, true, true, 11530, "\r\nDate="},
        {u"due 7 Mar 2009!!", true, false, false, 11554, "\r\nDate=due 7 Mar 2009!!"},
        {u"nothing", false, false, true, 11530, "\r\nDate=nothing"},
        {Array::ofStrings({u"x"}), true, false, true, 11554, "\r\nDate="},
    };
    for (const auto& given : cases)
        EXPECT_TRUE(raises(messageError(given.code), parserSource, given.extra, [&] {
            conversion_->CTimestamp2(given.value, given.date, given.time, nullptr, given.truncate);
        }));
    EXPECT_EQ(raised([&] { conversion_->CTimestamp(null, false, false, nullptr); }),
              (Raised{94, parserSource, "Invalid use of Null"}));
    EXPECT_EQ(errorOf([&] { conversion_->CTimestamp(3e6, false, false, nullptr); }), 6);
}

TEST_F(ConversionTest, AnswersWhetherAValueIsAMoment) {
    String text = u"before";
    EXPECT_FALSE(conversion_->IsValidDate(u"14:05", &text));
    EXPECT_EQ(text, u"before");
    EXPECT_TRUE(conversion_->IsValidDate(u"about 7 Mar 2009", &text));
    EXPECT_EQ(text, u"2009/03/07");
    EXPECT_FALSE(conversion_->IsValidCorvaDate(u"about 7 Mar 2009", false, &text));
    EXPECT_TRUE(conversion_->IsValidTime(u"2:05 pm", &text));
    EXPECT_EQ(text, u"14:05:00");
    EXPECT_TRUE(conversion_->IsValidTimestamp(u"3/7/2009 2 pm", &text));
    EXPECT_EQ(text, u"2009-03-07 14:00:00");
    EXPECT_EQ(conversion_->CUniversalTimestampToLocale(u"2009-03-07 14:05:09"), u"2009/03/07 14:05:09");
    EXPECT_EQ(conversion_->CUniversalTimestampToLocale(u"no-date"), u"no/date");
}

TEST_F(ConversionTest, StaysLinearOnHostileText) {
    const auto refuses = [&](const String& text) {
        EXPECT_EQ(errorOf([&] { conversion_->CTimestamp(text, true, false, nullptr); }), messageError(11554));
    };
    std::u16string months;
    for (int i = 0; i < 100000; ++i)
        months += u"MarchMay";
    for (const String& text : {String(1 << 20, u'a'), String(months), String(1 << 20, u'/'),
                               String(1 << 20, u'~'), String(1 << 20, u' '), String(1 << 20, u','),
                               String(1 << 20, u'1'), String(std::u16string(u"7 Mar\0 2009", 11))})
        refuses(text);
}

// What the formatter writes by the user's patterns is read back: in every month, and so on every weekday.
TEST_F(ConversionTest, ReadsBackTheUsersOwnFormsInEveryLocale) {
    std::map<std::string, std::string> failures;
    for (const Locale& locale : Locale::all()) {
        const std::string name = String(locale.name()).toUtf8();
        const UserLocale user(name.c_str());
        const auto check = [&](const char* what, const String& text, Date expected, auto read) {
            Date back;
            raised([&] { read(text, &back); });
            if (back != expected)
                failures[name + what] = text.toUtf8();
        };
        const auto readDate = [&](const String& text, Date* back) {
            conversion_->CUniversalDate(text, back);
        };
        const auto readTime = [&](const String& text, Date* back) {
            conversion_->CUniversalTime(text, back);
        };
        const auto readBoth = [&](const String& text, Date* back) {
            conversion_->CTimestamp(text, true, true, back);
        };
        for (int month = 1; month <= 12; ++month) {
            const Date moment = dateOf({2009, month, 11, 2 * month - 1, 5, 9});
            check(" short date", conversion_->CShortDate(moment, nullptr), dayOf(moment), readDate);
            check(" long date", conversion_->CLongDate(moment, nullptr), dayOf(moment), readDate);
            check(" time", conversion_->CLocaleTime(moment, nullptr), timeOf(moment), readTime);
            check(" timestamp", conversion_->CTimestamp3(moment, true, true, nullptr, false, true), moment,
                  readBoth);
        }
    }
    // Suffixes of their months' names are part of the pattern.
    for (const auto& [what, text] : failures)
        if (!std::set<std::string>{"eu", "ku", "mn"}.contains(what.substr(0, what.find('-'))))
            ADD_FAILURE() << what << ": " << text;
}

// ---- Attribute values ----

TEST_F(ConversionTest, ConvertsAttributeValues) {
    constexpr auto native = eAttrValConvType_Native;
    constexpr auto locale = eAttrValConvType_Locale;
    const Date noon1901 = dateOf({1901, 1, 1, 12, 0, 0});
    const struct {
        Variant value;
        std::int32_t type;
        enumAttrValueConvTypes form;
        Variant result;
    } cases[] = {
        {{}, 2, native, {}},
        {null, 1, native, {}},
        {Array::ofLongs({1}), 2, native, {}},
        {conversion_, 1, native, {}},
        {5, 1, native, u"5"},
        {u"42", 2, native, 42},
        {u"42.0", 2, native, 42},
        {u"abc", 2, locale, 0},
        {u"3000000000", 2, locale, -1},
        {u"12.5", 2, locale, 12},
        {1234.5, 3, native, u"1234.5"},
        {u"-0.25", 3, locale, -0.25},
        {u"", 3, locale, 0.0},
        {0, 4, locale, dayOf(noon1901)},
        {365, 4, locale, dateOf({1902, 1, 1, 0, 0, 0})},
        {noon1901, 4, native, 0},
        {u"12/31/1900", 4, native, -1},
        {u"junk", 4, locale, dayOf(noon1901)},
        {u"14:05:59", 5, native, 50700},
        {u"14.30", 5, native, 52200},
        {u"9.15", 5, native, 33300},
        {50700, 5, locale, Date{50700 / 86400.0}},
        {true, 6, native, 1},
        {u"True", 6, locale, 1},
        {5, 6, native, 1},
        {u"False", 6, native, 0},
        {u"1.1", 20, native, u"1.0001"},
        {u"abc", 20, locale, u""},
        {5, 0, native, {}},
        {5, 10, native, {}},
        {5, 2, eAttrValConvType_Empty, {}},
    };
    for (const auto& [value, type, form, result] : cases)
        EXPECT_EQ(conversion_->FormatAttrValueData(value, enumAttrValueDataTypes(type), form), result)
            << "type " << type << " to " << form;
}

TEST_F(ConversionTest, RefusesAttributeValues) {
    const auto failure = [&](const Variant& value, enumAttrValueDataTypes type) {
        return raised([&] { conversion_->FormatAttrValueData(value, type, eAttrValConvType_Native); });
    };
    constexpr const char* integer = "VlGeneralServices.modConversion.AttrValueIntegerFromLocaleToNative_";
    EXPECT_EQ(failure(u"abc", eAttrValDataType_Integer).number, messageError(11551));
    EXPECT_EQ(failure(u"abc", eAttrValDataType_Integer).source, integer);
    EXPECT_EQ(failure(u"42.5", eAttrValDataType_Integer).number, messageError(11553));
    EXPECT_EQ(failure(u"3000000000", eAttrValDataType_Integer), (Raised{6, integer, "Overflow"}));
    EXPECT_EQ(failure(u"x", eAttrValDataType_Date).number, messageError(11554));
    EXPECT_EQ(failure(u"x", eAttrValDataType_Time).source, parserSource);
    EXPECT_EQ(failure(u"maybe", eAttrValDataType_Boolean),
              (Raised{13, "VlGeneralServices.modConversion.g_FormatAttrValueData", "Type mismatch"}));
}

TEST_F(ConversionTest, SwapsSeparatorsWithoutUndoingASwap) {
    const UserLocale german("de-DE");
    EXPECT_EQ(conversion_->FormatAttrValueData(-1234.5, eAttrValDataType_Real, eAttrValConvType_Native),
              Variant(u"-1234.5"));
    EXPECT_EQ(conversion_->FormatAttrValueData(u"-1234.5", eAttrValDataType_Real, eAttrValConvType_Locale),
              Variant(-1234.5));
    std::u16string mask;
    MaskedReplacement commas{.find = u",", .replacement = u".", .invertMask = true, .keepMask = true};
    MaskedReplacement points{.find = u".", .replacement = u",", .invertMask = true};
    const String swapped = MaskedReplace_(u"1,234.5,", commas, mask);
    EXPECT_EQ(MaskedReplace_(swapped, points, mask), u"1.234,5.");
    EXPECT_EQ(points.found, 3);
    EXPECT_EQ(points.replaced, 1);
    EXPECT_EQ(mask, u"00000100");
}

} // namespace
} // namespace vlgs::test
