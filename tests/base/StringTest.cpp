// SPDX-License-Identifier: MIT
#include "base/String.h"
#include "base/Text.h"

#include <gtest/gtest.h>

namespace vlgs {
namespace {

TEST(String, ReadsAndWritesUtf8) {
    const struct {
        std::string_view utf8;
        std::u16string_view text;
        std::string_view back;
    } cases[] = {
        {"", u"", ""},
        {"Gr\xC3\xB6\xC3\x9F"
         "e",
         u"Gr\u00F6\u00DFe",
         "Gr\xC3\xB6\xC3\x9F"
         "e"},
        {"\xF0\x9F\x98\x80", u"\U0001F600", "\xF0\x9F\x98\x80"},
        {{"a\0b", 3}, {u"a\0b", 3}, {"a\0b", 3}},
        {"\xFF", u"\uFFFD", "\xEF\xBF\xBD"},
        {"\xE2\x82", u"\uFFFD", "\xEF\xBF\xBD"},                                         // cut short
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}, // a surrogate
        {"\xC0\x80", u"\uFFFD\uFFFD", "\xEF\xBF\xBD\xEF\xBF\xBD"},                       // overlong
    };
    for (const auto& [utf8, text, back] : cases) {
        EXPECT_EQ(String::fromUtf8(utf8), text) << utf8;
        EXPECT_EQ(String(text).toUtf8(), back) << utf8;
    }
    const char16_t lone[] = {0xD800, u'x', 0xDC00};
    EXPECT_EQ(String(std::u16string_view(lone, 3)).toUtf8(), "\xEF\xBF\xBDx\xEF\xBF\xBD");
}

TEST(String, CopiesShareAndAppendingLeavesThemAlone) {
    String a(u"left");
    const String b = a;
    EXPECT_EQ(a.data(), b.data());
    a += u"right";
    EXPECT_EQ(a, u"leftright");
    EXPECT_EQ(b, u"left");
    a += a; // its own characters
    EXPECT_EQ(a, u"leftrightleftright");
    EXPECT_EQ(a.data()[a.length()], u'\0');
}

TEST(Text, TrimsBlanksAlone) {
    EXPECT_EQ(trim(u"  a b  "), u"a b");
    EXPECT_EQ(trim(u"\t a \t"), u"\t a \t");
    EXPECT_EQ(trim(u"   "), u"");
    EXPECT_EQ(cutAtNul(std::u16string_view(u"ab\0cd", 5)), u"ab");
}

TEST(Text, SplitsAtEveryDelimiter) {
    using Pieces = std::vector<std::u16string_view>;
    EXPECT_EQ(split(u"", u","), Pieces{u""});
    EXPECT_EQ(split(u"a,,b,", u","), (Pieces{u"a", u"", u"b", u""}));
    EXPECT_EQ(split(u"a\r\nb", u"\r\n"), (Pieces{u"a", u"b"}));
    EXPECT_EQ(split(u"a,b", u""), Pieces{u"a,b"});
    // Long delimiters that nearly stand everywhere.
    const std::u16string delimiter = std::u16string(10000, u'-') + u".";
    EXPECT_EQ(split(std::u16string(400000, u'-'), delimiter).size(), 1u);
    const std::u16string text = u"a-" + delimiter + u"b" + delimiter;
    EXPECT_EQ(split(text, delimiter), (Pieces{u"a-", u"b", u""}));
    EXPECT_EQ(replaceAll(text, delimiter, u"+"), u"a-+b+");
}

TEST(Text, ReplacesFromLeftToRight) {
    EXPECT_EQ(replaceAll(u"aaa", u"aa", u"b"), u"ba");
    EXPECT_EQ(replaceAll(u"a%1b%1", u"%1", u"%1%1"), u"a%1%1b%1%1");
    EXPECT_EQ(replaceAll(u"abc", u"", u"x"), u"abc");
}

} // namespace
} // namespace vlgs
