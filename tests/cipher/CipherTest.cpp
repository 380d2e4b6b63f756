// SPDX-License-Identifier: MIT
#include "cipher/Cipher.h"

#include "cipher/CipherText.h"
#include "cipher/KeyGenerator.h"
#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>

namespace vlgs::test {
namespace {

constexpr const char16_t* key = u"00998877665544332211";

// The test vector published with the algorithm.
TEST(Skipjack, GivesThePublishedResult) {
    const Skipjack cipher({0x00, 0x99, 0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11});
    const Skipjack::Block plain = {0x33, 0x22, 0x11, 0x00, 0xDD, 0xCC, 0xBB, 0xAA};
    const Skipjack::Block enciphered = {0x25, 0x87, 0xCA, 0xE2, 0x7A, 0x12, 0xD3, 0x00};
    std::vector<Skipjack::Block> blocks(1, plain);
    cipher.encrypt(blocks);
    EXPECT_EQ(blocks[0], enciphered);
    cipher.decrypt(blocks);
    EXPECT_EQ(blocks[0], plain);
}

TEST(Skipjack, BlocksSideBySideComeOutAsOneByOne) {
    const Skipjack cipher(cipherKey(key));
    std::vector<Skipjack::Block> together(29);
    for (std::size_t i = 0; i < together.size(); ++i)
        std::iota(together[i].begin(), together[i].end(), static_cast<std::uint8_t>(37 * i));
    const auto plain = together;
    auto single = plain;
    cipher.encrypt(together);
    for (auto& block : single)
        cipher.encrypt({&block, 1});
    EXPECT_EQ(together, single);
    cipher.decrypt(together);
    EXPECT_EQ(together, plain);
}

TEST(Cipher, TextsBecomeUpperCaseDigitsOfWholeBlocks) {
    const auto cipher = make<Cipher>();
    EXPECT_EQ(cipher->encode(u"", key), u"");
    EXPECT_EQ(cipher->encode(u"12345678", key).length(), 16u);
    const String two = cipher->encode(u"123456789", key);
    EXPECT_EQ(two.length(), 32u);
    for (const char16_t digit : two)
        EXPECT_TRUE((digit >= u'0' && digit <= u'9') || (digit >= u'A' && digit <= u'F'));
    EXPECT_EQ(two.view().substr(0, 16), cipher->encode(u"12345678", key));
    EXPECT_EQ(cipher->encode(u"1234567812345678", key).view().substr(16), two.view().substr(0, 16));
}

TEST(Cipher, DecodedTextsHaveNulsWhereTheBlockWasFilled) {
    const auto cipher = make<Cipher>();
    for (std::size_t length : {1u, 7u, 8u, 9u, 4095u, 4096u, 4097u, 10'000u}) {
        std::u16string text(length, u'\0');
        for (std::size_t i = 0; i < length; ++i)
            text[i] = static_cast<char16_t>(u' ' + i % 90);
        const String digits = cipher->encode(text, key);
        text.resize((length + 7) / 8 * 8);
        EXPECT_EQ(cipher->decode(digits, key), String(text)) << length;
    }
}

TEST(Cipher, DigitsBeyondWholeBlocksAreIgnored) {
    const auto cipher = make<Cipher>();
    const String digits = cipher->encode(u"12345678", key);
    EXPECT_EQ(cipher->decode(u"", key), u"");
    EXPECT_EQ(cipher->decode(digits.view().substr(0, 15), key), u"");
    EXPECT_EQ(cipher->decode(concat(digits, digits.view().substr(0, 15)), key), u"12345678");
    EXPECT_EQ(cipher->decode(String::fromUtf8("z!\xC3\xA9 zzzzzzzzzzzz"), key),
              cipher->decode(u"0000000000000000", key));
    const Setting page("VLGS_CODEPAGE", "1252");
    EXPECT_EQ(cipher->encode(cipher->decode(u"2587cae27a12d300", key), key), u"2587CAE27A12D300");
}

TEST(Cipher, CharactersAreTheCodesOfTheCodePage) {
    const auto cipher = make<Cipher>();
    const auto through = [&](const char16_t* text) { return cipher->decode(cipher->encode(text, key), key); };
    {
        const Setting page("VLGS_CODEPAGE", "1252");
        EXPECT_EQ(through(u"Grö\u20ACe Ж1"), u"Grö\u20ACe ?1");
    }
    {
        const Setting page("VLGS_CODEPAGE", "1251");
        EXPECT_EQ(through(u"Жёлтый 1"), u"Жёлтый 1");
    }
    {
        const Setting page("VLGS_CODEPAGE", "932"); // U+3044 is the code 0x82A2, of which A2 stays
        EXPECT_EQ(through(u"\u3044\uFF71aaaaaa"), u"\uFF62\uFF71aaaaaa");
    }
}

TEST(Cipher, AnyTextServesAsKey) {
    struct Case {
        const char16_t* digits;
        Skipjack::Key bytes;
    };
    const Case cases[] = {
        {u"00998877665544332211", {0x00, 0x99, 0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11}},
        {u"aAfF0123456789abcdefFF", {0xAA, 0xFF, 0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}},
        {u"", {}},
        {u"FFG0FxFF", {0xFF, 0, 0, 0xFF}},
        {u"11 223", {0x11, 0, 0x23}},
        {u"115", {0x11, 0x05}},
        {u"\u0131\u0431FF", {0, 0xFF}},
    };
    for (const auto& [digits, bytes] : cases)
        EXPECT_EQ(cipherKey(digits), bytes) << String(digits).toUtf8();
}

TEST(KeyGenerator, KeysFollowTheTimer) {
    const String made = generateCipherKey();
    EXPECT_EQ(made.length(), 20u);
    EXPECT_TRUE(std::ranges::all_of(made, [](char16_t digit) {
        return (digit >= u'0' && digit <= u'9') || (digit >= u'A' && digit <= u'F');
    }));

    EXPECT_EQ(keyByteAt(43'200.5F), keyByteAt(43'200.5F));
    std::set<unsigned> seen;
    for (int tick = 0; tick < 5000; ++tick)
        seen.insert(keyByteAt(40'000.0F + static_cast<float>(tick) / 128));
    EXPECT_GT(seen.size(), 200u);
}

TEST(CipherFiles, HoldTheDigitsAndNothingElse) {
    const Scratch scratch;
    const auto cipher = make<Cipher>();
    String text = u"a secret text...";
    for (int round = 0; round < 2; ++round) { // the second one replaces the file
        cipher->writeEncodedFile(scratch.path("x.dat"), key, text);
        EXPECT_EQ(scratch.read("x.dat"), cipher->encode(text, key).toUtf8());
        EXPECT_EQ(cipher->readEncodedFile(scratch.path("x.dat"), key), text);
        text = u"a shorter one...";
    }
#ifndef _WIN32
    EXPECT_EQ(std::filesystem::status(scratch.host("x.dat")).permissions(), std::filesystem::perms(0600));
#endif
    scratch.write("empty", "");
    EXPECT_EQ(cipher->readEncodedFile(scratch.path("empty"), key), u"");
    scratch.write("junk", "\r\n\xFF tail");
    EXPECT_EQ(cipher->readEncodedFile(scratch.path("junk"), key), u"");
}

TEST(CipherFiles, FailAsTheRunTimeDoes) {
    const Scratch scratch;
    const auto cipher = make<Cipher>();
    String text = u"x";
    EXPECT_EQ(errorOf([&] { cipher->readEncodedFile(scratch.path("none"), key); }), 53);
    EXPECT_EQ(errorOf([&] { cipher->readEncodedFile(scratch.path("none/x"), key); }), 76);
    EXPECT_EQ(errorOf([&] { cipher->readEncodedFile(scratch.path(""), key); }), 70);
    EXPECT_EQ(errorOf([&] { cipher->writeEncodedFile(scratch.path("none/x"), key, text); }), 76);
}

} // namespace
} // namespace vlgs::test
