// SPDX-License-Identifier: MIT
#include "automation/Convert.h"
#include "automation/NumberFormat.h"
#include "automation/NumberText.h"
#include "support/Raised.h"
#include "support/UserLocale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vlgs::test {
namespace {

TEST(NumberText, WritesFifteenDigitsWithoutGroups) {
    const UserLocale english("en-US");
    const struct {
        Variant number;
        std::u16string_view text;
    } cases[] = {
        {0.0, u"0"},
        {-0.0, u"0"},
        {1234.5, u"1234.5"},
        {0.1 + 0.2, u"0.3"},
        {1.0 / 3, u"0.333333333333333"},
        {0.0001, u"0.0001"},
        {0.00001, u"1E-05"},
        {123456789012345.0, u"123456789012345"},
        {1e15, u"1E+15"},
        {-1.5e300, u"-1.5E+300"},
        {0.1f, u"0.1"},
        {Currency{-12345678}, u"-1234.5678"},
        {Currency{50000}, u"5"},
        {Decimal{28, 0, 0, 1}, u"0.0000000000000000000000000001"},
        {Decimal{0, 0x80, 0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF}, u"-79228162514264337593543950335"},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(toText(number).toUtf8(), String(text).toUtf8());
}

TEST(NumberText, ReadsWhatTheNumericTestAccepts) {
    const UserLocale english("en-US");
    const struct {
        std::u16string_view text;
        double value;
    } good[] = {
        {u" 12 ", 12},   {u"-1.5", -1.5}, {u"1.5-", -1.5}, {u"(2)", -2},   {u"$1,234.5", 1234.5},
        {u"1,2,3", 123}, {u".5", 0.5},    {u"5.", 5},      {u"1e3", 1000}, {u"1E-3", 0.001},
        {u"&HFF", 255},  {u"&o17", 15},   {u"+7", 7},      {u"-$3", -3},   {u"$-3", -3},
        {u"1e-400", 0},  {u"0.1", 0.1},   {u"1D2", 100},
    };
    for (const auto& [text, value] : good)
        EXPECT_DOUBLE_EQ(textToNumber(text), value) << String(text).toUtf8();
    for (const auto* text : {u"", u" ", u".", u"-", u"--1", u"1.2.3", u"1e", u"abc", u"1 2", u"(1", u"1)",
                             u"&H", u"&HG", u"$", u"1,234,", u"\u0661", u"e5", u"-(1)", u"1..2"}) {
        const bool trailingGroup = std::u16string_view(text) == u"1,234,";
        EXPECT_EQ(isNumericText(text), trailingGroup) << String(text).toUtf8();
        if (!trailingGroup) {
            EXPECT_EQ(errorOf([&] { textToNumber(text); }), 13) << String(text).toUtf8();
        }
    }
    EXPECT_EQ(errorOf([] { textToNumber(u"1e400"); }), 6);
    EXPECT_EQ(toLong(u"&HFFFFFFFF"), -1);
}

TEST(NumberText, FollowsTheUsersSeparators) {
    const UserLocale german("de-DE");
    EXPECT_EQ(toText(1234.5), u"1234,5");
    EXPECT_EQ(textToNumber(u"1.234,5"), 1234.5);
    EXPECT_FALSE(isNumericText(u"1,234.5"));
    EXPECT_EQ(textToNumber(u"-1.234,5 \u20AC"), -1234.5);
    EXPECT_EQ(textToNumber(u"(\u20AC1E5)"), -100000);
    EXPECT_FALSE(isNumericText(u"$5"));
    const UserLocale french("fr-FR");
    EXPECT_EQ(textToNumber(u"1 234\u00A0567,5 \u20AC"), 1234567.5);
    EXPECT_FALSE(isNumericText(u"1 234.5"));
}

TEST(NumberText, ReadsBackWhatItWrites) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())),
                                        static_cast<int>(random() % 200) - 100);
        EXPECT_NEAR(textToNumber(numberToText(value)) / value, 1, 1e-14);
    }
}

TEST(Convert, RoundsHalvesToEvenAndOverflows) {
    EXPECT_EQ(toLong(2.5), 2);
    EXPECT_EQ(toLong(3.5), 4);
    EXPECT_EQ(toLong(-0.5), 0);
    EXPECT_EQ(toLong(u"12.0"), 12);
    EXPECT_EQ(toLong(2147483647.5 - 0.1), 2147483647);
    EXPECT_EQ(errorOf([] { toLong(2147483647.5); }), 6);
    EXPECT_EQ(errorOf([] { toInteger(32768); }), 6);
    EXPECT_EQ(errorOf([] { toByte(-1); }), 6);
    EXPECT_EQ(errorOf([] { toLong(NAN); }), 6);
    EXPECT_EQ(errorOf([] { toLong(null); }), 94);
    EXPECT_EQ(errorOf([] { toText(missing); }), 13);
    EXPECT_EQ(errorOf([] { toText(nullptr); }), 91);
    EXPECT_TRUE(toBoolean(u"tRUE"));
    EXPECT_TRUE(toBoolean(u"-2"));
    EXPECT_EQ(errorOf([] { toBoolean(u"maybe"); }), 13);
    EXPECT_EQ(toCurrency(u"922337203685477.5807").units, 9223372036854775807);
    EXPECT_EQ(toDecimal(u"1.25"), (Decimal{2, 0, 0, 125}));
    EXPECT_EQ(errorOf([] { toDecimal(u"1E29"); }), 6);
}

TEST(NumberFormat, FillsTheMask) {
    const UserLocale english("en-US");
    const struct {
        double value;
        std::u16string_view mask;
        std::u16string_view text;
    } cases[] = {
        {7, u"0000", u"0007"},
        {12345, u"0000", u"12345"},
        {1234.5, u"##############0.00##############", u"1234.50"},
        {-0.25, u"##############0.00##############", u"-0.25"},
        {0.123456789012345, u"##############0.00##############", u"0.123456789012345"},
        {0, u"##############0.00##############", u"0.00"},
        {1e20, u"##############0.00##############", u"100000000000000000000.00"},
        {0.005, u"0.00", u"0.01"},
        {-0.001, u"0.00", u"0.00"},
        {999.5, u"0", u"1000"},
        {1e-10, u"0.##", u"0."},
        {0.10049, u"00.###", u"00.1"},
        {1234567, u"#,##0", u"1,234,567"},
        {1234567, u"0,", u"1235"},
        {0.5, u"#.##", u".5"},
        {12, u"0 \"pcs\"\\#", u"12 pcs#"},
    };
    for (const auto& [value, mask, text] : cases)
        EXPECT_EQ(formatNumber(value, mask).toUtf8(), String(text).toUtf8());
}

} // namespace
} // namespace vlgs::test
