// SPDX-License-Identifier: MIT
#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace vlgs {
namespace {

constexpr unsigned singleBytePages[] = {437,  850,  852,  866,  874,   1250,  1251,  1252,  1253, 1254,
                                        1255, 1256, 1257, 1258, 20866, 28591, 28592, 28595, 28605};
constexpr unsigned doubleBytePages[] = {932, 936, 949, 950};

std::string allBytes() {
    std::string bytes;
    for (int byte = 0; byte < 0x100; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

TEST(CodePage, EveryByteOfASingleBytePageSurvivesTheRoundTrip) {
    for (unsigned number : singleBytePages) {
        const auto page = CodePage::find(number);
        ASSERT_TRUE(page) << number;
        EXPECT_EQ(page->number(), number);
        const auto text = page->decode(allBytes());
        ASSERT_EQ(text.length(), 0x100u) << number;
        EXPECT_EQ(page->encodeExactly(text), allBytes()) << number;
        for (std::int16_t code = 0; code < 0x100; ++code) {
            EXPECT_EQ(page->characterOf(code), text[static_cast<std::size_t>(code)]) << number;
            EXPECT_EQ(page->codeOf(page->characterOf(code)), code) << number;
            EXPECT_FALSE(page->isLeadByte(static_cast<unsigned char>(code)));
        }
    }
}

TEST(CodePage, EveryCharacterOfADoubleBytePageIsWrittenAsACodeThatReadsBackAsIt) {
    for (unsigned number : doubleBytePages) {
        const auto page = CodePage::find(number);
        ASSERT_TRUE(page);
        int characters = 0;
        for (unsigned unit = 1; unit < 0x10000; ++unit) {
            const auto character = static_cast<char16_t>(unit);
            const auto bytes = page->encodeExactly({&character, 1});
            const auto code = page->codeOf(character);
            if (!bytes) {
                EXPECT_EQ(code, '?');
                continue;
            }
            ++characters;
            EXPECT_EQ(page->decode(*bytes), std::u16string_view(&character, 1)) << number << ' ' << unit;
            EXPECT_EQ(page->characterOf(code), character) << number << ' ' << unit;
            EXPECT_EQ(bytes->size(), code < 0 ? 2u : 1u);
            EXPECT_EQ(page->isLeadByte(static_cast<unsigned char>(bytes->front())), code < 0);
        }
        EXPECT_GT(characters, 9000) << number;
    }
}

struct Mapping {
    unsigned page;
    const char* bytes;
    const char16_t* text;
};

constexpr Mapping mappings[] = {
    {1252, "\x80\x81\x9F\xE9", u"€\u0081Ÿé"},
    {1250, "\x83\xBF\xD8", u"\u0083żŘ"},
    {1251, "\xCF\x98\xFF", u"П\u0098я"},
    {1253, "\xC1\xAA\xD2", u"Α\uF8F9\uF8FA"},
    {1255, "\xCA\xE0\xD9", u"\u05BA\u05D0\uF88D"},
    {874, "\xA1\xDB\x81", u"ก\uF8C1\u0081"},
    {28605, "\xA4\xBD\x80", u"€œ\u0080"},
    {28595, "\xBF\xF0", u"П№"},
    {20866, "\xF0\xA3", u"Пё"},
    {932, "\x93\xFA\x96\x7B\x5C\xB1\x81\x60", u"日本\\ｱ～"},
    {932, "\x81\xCA\xFA\x5C\xFA\x40\xF0\x40", u"￢纊ⅰ\uE000"},
    {936, "\xC4\xE3\xBA\xC3\x80\xA1\xA4\xAA\xA1", u"你好€·\uE000"},
    {949, "\xB0\xA1\x81\x41\xC9\xA1", u"가갂\uE000"},
    {950, "\xA4\xA4\xA4\xE5\xF9\xF9\xA4\x51\xFA\x40", u"中文═十\uE000"},
    {65001, "A\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80", u"Aé日😀"},
};

TEST(CodePage, KnownCharactersMapBothWays) {
    for (const auto& [number, bytes, text] : mappings) {
        const auto page = CodePage::find(number);
        ASSERT_TRUE(page) << number;
        EXPECT_EQ(page->decode(bytes).toUtf8(), String(text).toUtf8()) << number;
        EXPECT_EQ(page->encodeExactly(text), bytes) << number;
    }
}

TEST(CodePage, ACharacterThatThePageLacksBecomesAQuestionMarkAndIsReported) {
    const auto latin = *CodePage::find(1252);
    EXPECT_EQ(latin.encode(u"aЖb\u2212"), "a?b?");
    EXPECT_EQ(latin.encodeExactly(u"aЖb"), std::nullopt);
    std::string bytes = "x";
    EXPECT_FALSE(latin.append(bytes, u"Ж"));
    EXPECT_TRUE(latin.append(bytes, u"é"));
    EXPECT_EQ(bytes, "x?\xE9");
    EXPECT_EQ(CodePage::find(932)->encode(u"😀é"), "???");
    const char16_t lone[] = {u'a', 0xD800, u'b'};
    EXPECT_EQ(CodePage::find(65001)->encodeExactly({lone, 3}), std::nullopt);
    EXPECT_EQ(CodePage::find(65001)->codeOf(u'Ж'), '?');
    EXPECT_FALSE(CodePage::find(4711));
}

TEST(CodePage, MalformedDoubleBytesGiveTheSubstituteAndLeaveLineEndsAlone) {
    const auto japanese = *CodePage::find(932);
    EXPECT_EQ(japanese.decode("\x93\r\n\x85\x40"
                              "a\x93"),
              u"・\r\n・a・");
    EXPECT_EQ(CodePage::find(936)->decode("\x81 \xA2\xAB\xFF"), u"? ?\uF8F5");
    EXPECT_EQ(japanese.characterOf(0x93), u'・');
    EXPECT_EQ(japanese.codeOf(u'日'), static_cast<std::int16_t>(0x93FA));
}

TEST(CodePage, LongTextsOfMixedCharactersAreCutNowhere) {
    String pattern = u"plain text that fills whole blocks of ASCII characters, 日本, ";
    std::u16string text;
    for (int i = 0; i < 500; ++i)
        text.append(pattern).append(static_cast<std::size_t>(i % 67), u'x').push_back(u'語');
    for (unsigned number : {932u, 936u, 950u, 65001u}) {
        const auto page = *CodePage::find(number);
        EXPECT_EQ(page.decode(*page.encodeExactly(text)).view(), text) << number;
    }
    std::u16string latin(text.size(), u'é');
    latin += std::u16string(100000, u'a');
    EXPECT_EQ(CodePage::find(1252)->decode(CodePage::find(1252)->encode(latin)).view(), latin);
}

} // namespace
} // namespace vlgs
