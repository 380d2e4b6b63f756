// SPDX-License-Identifier: MIT
#include "base/CaseFold.h"

#include <gtest/gtest.h>

#include <string>

namespace vlgs {
namespace {

constexpr auto npos = std::u16string_view::npos;

struct Pair {
    const char16_t* a;
    const char16_t* b;
};

TEST(CaseFold, TextsThatDifferOnlyInCaseAreEqual) {
    const Pair pairs[] = {
        {u"Alpha", u"ALPHA"},
        {u"@AZ[`az{", u"@az[`AZ{"},
        {u"ÄÖÜÉÑ", u"äöüéñ"},
        {u"ŸŽŐ", u"ÿžő"},
        {u"ΣΑΣ", u"σας"}, // final and ordinary sigma
        {u"МОСКВА", u"москва"},
        {u"\u212A\u212B", u"kå"}, // Kelvin and Angstrom signs
        {u"\u1E9E", u"ß"},
        {u"\u00B5", u"\u03BC"},
        {u"\uAB70", u"\u13A0"},                               // Cherokee folds to its capitals
        {u"\uA7AE", u"\u026A"},                               // a distance beyond 15 bits
        {u"\U00010400x\U0001E900", u"\U00010428X\U0001E922"}, // surrogate pairs
        {u"abc\U00010400", u"ABC\U00010428"},                 // a pair across the words of four units
    };
    for (const auto& [a, b] : pairs) {
        SCOPED_TRACE(String(a).toUtf8());
        EXPECT_TRUE(equalIgnoringCase(a, b));
        EXPECT_EQ(compareIgnoringCase(a, b), 0);
        EXPECT_EQ(hashIgnoringCase(a), hashIgnoringCase(b));
        EXPECT_EQ(foldCase(std::u16string_view(a)), foldCase(std::u16string_view(b)));
    }
}

TEST(CaseFold, OtherTextsDiffer) {
    const Pair pairs[] = {
        {u"ß", u"ss"},      {u"ß", u"s"},         {u"I", u"\u0131"},       {u"\u0130", u"i"},
        {u"a", u"a "},      {u"", u"a"},          {u"[\\]^", u"{|}~"},     {u"\u00D7", u"\u00F7"},
        {u"abcd", u"abce"}, {u"abcde", u"abcdf"}, {u"e\u0301", u"\u00E9"},
    };
    for (const auto& [a, b] : pairs) {
        SCOPED_TRACE(String(a).toUtf8());
        EXPECT_FALSE(equalIgnoringCase(a, b));
        EXPECT_NE(hashIgnoringCase(a), hashIgnoringCase(b));
        EXPECT_LT(compareIgnoringCase(a, b) * compareIgnoringCase(b, a), 0);
    }
    EXPECT_FALSE(equalIgnoringCase(std::u16string_view(u"a\0b", 3), std::u16string_view(u"a\0c", 3)));
}

TEST(CaseFold, OrderIsThatOfTheFoldedUnits) {
    EXPECT_LT(compareIgnoringCase(u"ABCD_", u"abcdE"), 0); // '_' lies between the two cases
    EXPECT_LT(compareIgnoringCase(u"Abcdefg", u"aBCDEFGH"), 0);
    EXPECT_GT(compareIgnoringCase(u"ä", u"Z"), 0);
}

TEST(CaseFold, LoneSurrogatesStayAsTheyAre) {
    for (const std::u16string text : {u"\xD801", u"\xDC00", u"\xDC00\xD801", u"x\xDC00y"})
        EXPECT_EQ(foldCase(std::u16string_view(text)), std::u16string_view(text));
    EXPECT_EQ(foldCase(u'\xD801'), u'\xD801');
    EXPECT_EQ(foldCase(u'Ä'), u'ä');
}

TEST(CaseFold, UpperAndLowerAreTheSimpleMappings) {
    EXPECT_EQ(toLower(u"AZ[ÄΣİ\u1E9E\U00010400"), u"az[äσi\u00DF\U00010428");
    EXPECT_EQ(toUpper(u"az{äςıßÿµ\U00010428"), u"AZ{ÄΣIßŸ\u039C\U00010400");
}

TEST(CaseFold, FindsTheFirstOccurrence) {
    struct Case {
        const char16_t* text;
        const char16_t* find;
        std::size_t from;
        std::size_t expected;
    };
    const Case cases[] = {
        {u"one TWO three", u"two", 0, 4},
        {u"aBaBaC", u"ABAC", 0, 2},
        {u"AAAAB", u"aab", 0, 2},
        {u"abcabc", u"ABC", 1, 3},
        {u"abc", u"abcd", 0, npos},
        {u"abc", u"c", 3, npos},
        {u"abc", u"", 3, 3},
        {u"abc", u"", 4, npos},
        {u"straße ÄÖ", u"äö", 0, 7},
        {u"x\U00010400", u"\U00010428", 0, 1},
    };
    for (const auto& [text, find, from, expected] : cases)
        EXPECT_EQ(findIgnoringCase(text, find, from), expected) << String(text).toUtf8();
}

TEST(CaseFold, FindingIsLinearInRepetitiveTexts) {
    // Half a million by a million comparisons, if it were not.
    const String text(1'000'000, u'a');
    const std::u16string find = std::u16string(500'000, u'A') + u'b';
    EXPECT_EQ(findIgnoringCase(text, find), npos);
    EXPECT_EQ(findIgnoringCase(concat(text, u"B"), find), 500'000u);
}

TEST(CaseFold, ReplacesEveryOccurrence) {
    EXPECT_EQ(replaceAllIgnoringCase(u"%s and %S", u"%s", u"%s!"), u"%s! and %s!");
    EXPECT_EQ(replaceAllIgnoringCase(u"aAa", u"aa", u"-"), u"-a");
    EXPECT_EQ(replaceAllIgnoringCase(u"ABab", u"ab", u""), u"");
    EXPECT_EQ(replaceAllIgnoringCase(u"abc", u"", u"x"), u"abc");
    EXPECT_EQ(replaceAllIgnoringCase(u"abc", u"d", u"x"), u"abc");
}

} // namespace
} // namespace vlgs
