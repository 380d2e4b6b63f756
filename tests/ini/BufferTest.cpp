// SPDX-License-Identifier: MIT
#include "ini/Buffer.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <vector>

namespace vlgs::test {
namespace {

std::vector<std::string> texts(const Variant& value) {
    std::vector<std::string> result;
    for (const auto& text : value.array().as<String>())
        result.push_back(text.toUtf8());
    return result;
}

std::string text(const Buffer& buffer) {
    return buffer.GetData(eStream_String, String()).text().toUtf8();
}

std::size_t byteCount(const Buffer& buffer) {
    return buffer.GetData(_eStream_ByteArray, String()).array().size();
}

TEST(Buffer, StoresEachTextWithItsDelimiterInTheChosenForm) {
    struct Case {
        bool compact;
        std::size_t bytes;
    };
    for (const auto& [compact, bytes] : {Case{false, 8}, Case{true, 4}}) {
        const auto buffer = make<Buffer>();
        buffer->SetDelimiter(u"\r\n");
        buffer->SetCompact(compact);
        buffer->PutData(u"ab", String());
        EXPECT_EQ(byteCount(*buffer), bytes);
        EXPECT_EQ(text(*buffer), "ab\r\n");
        EXPECT_EQ(texts(buffer->GetData(eStream_StringArray, String())),
                  (std::vector<std::string>{"ab", ""}));
    }
}

TEST(Buffer, IsOneZeroByteWhileNothingIsStored) {
    const auto buffer = make<Buffer>();
    EXPECT_EQ(buffer->GetData(_eStream_ByteArray, String()), Variant(Array::ofBytes({0})));
    EXPECT_EQ(texts(buffer->GetData(eStream_StringArray, u",")), std::vector<std::string>{""});
    EXPECT_TRUE(buffer->GetData(eStream_String, String()).text().empty());
    buffer->SetCompact(true);
    EXPECT_EQ(buffer->GetData(eStream_String, String()).text(), String(1, u'\0'));
    EXPECT_TRUE(buffer->GetData(enumStreamTypes(4), String()).isEmpty());
}

TEST(Buffer, TakesArraysElementByElement) {
    struct Case {
        Array array;
        std::string text;
        std::size_t bytes;
    };
    Array booleans = Array::vector(VarType::Boolean, 2, 5);
    booleans.set(5, true);
    Array integers = Array::vector(VarType::Integer, 2, -3);
    integers.set(-3, 7);
    const Case cases[] = {
        {Array::ofStrings({u"a", u"b"}), "a,b,", 8},
        {Array::ofVariants({1, u"x", true}, 1), "1,x,True,", 18},
        {integers, "7,0,", 8},
        {Array::ofBytes({0x41, 0, 0x42, 0, 0x43}), "AB", 5},
        {Array::ofLongs({0x00420041, 0x43}), std::string("ABC\0", 4), 8},
        {booleans, "\xEF\xBF\xBF" + std::string(1, '\0'), 4},
    };
    for (const auto& [array, expected, bytes] : cases) {
        const auto buffer = make<Buffer>();
        buffer->PutData(array, u",");
        EXPECT_EQ(text(*buffer), expected);
        EXPECT_EQ(byteCount(*buffer), bytes);
    }
}

TEST(Buffer, RefusesWhatHasNoElementsToStore) {
    struct Case {
        Variant data;
        std::int32_t number;
    };
    const Case cases[] = {
        {Array(), 9}, {Array(VarType::String, {{0, 2}, {0, 2}}), 9}, {Array::vector(VarType::Object, 1), 13},
        {null, 94},   {Array::ofVariants({u"kept", null}), 94},
    };
    for (const auto& [data, number] : cases)
        EXPECT_EQ(errorOf([&, &given = data] { make<Buffer>()->PutData(given, u","); }), number);
}

TEST(Buffer, SplitsAtTheDelimiterInAnyCase) {
    const auto buffer = make<Buffer>();
    buffer->PutData(u"oneXtwoxthree", String());
    EXPECT_EQ(texts(buffer->GetData(eStream_StringArray, u"x")),
              (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_EQ(texts(buffer->GetData(eStream_StringArray, u"k")), std::vector<std::string>{"oneXtwoxthree"});
}

TEST(Buffer, ReadsWhatIsStoredInTheFormOfTheMoment) {
    const auto buffer = make<Buffer>();
    buffer->PutData(u"ab", String());
    buffer->SetCompact(true);
    EXPECT_EQ(text(*buffer), std::string("a\0b\0", 4));
    buffer->PutData(u"c", String());
    buffer->SetCompact(false);
    EXPECT_EQ(text(*buffer), "ab");
}

TEST(Buffer, SetsEverythingBack) {
    const auto buffer = make<Buffer>();
    for (const auto& [set, got] : {std::pair{17, 17}, {0, 200}, {-5, 200}}) {
        buffer->SetChunkSize(set);
        EXPECT_EQ(buffer->ChunkSize(), got);
    }
    buffer->SetChunkSize(9);
    buffer->SetDelimiter(u";");
    buffer->SetCompact(true);
    buffer->PutData(missing, String());
    EXPECT_EQ(byteCount(*buffer), 1u);
    buffer->Clear();
    EXPECT_EQ(buffer->ChunkSize(), 200);
    EXPECT_TRUE(buffer->Delimiter().empty());
    EXPECT_FALSE(buffer->Compact());
    EXPECT_TRUE(text(*buffer).empty());
}

// A store that grew by its chunk size alone would copy 50 GB here.
TEST(Buffer, GrowsInLinearTime) {
    const auto buffer = make<Buffer>();
    buffer->SetChunkSize(1);
    for (int i = 0; i < 1'000'000; ++i)
        buffer->PutData(u"0123456789", u"\n");
    EXPECT_EQ(byteCount(*buffer), 22'000'000u);
}

} // namespace
} // namespace vlgs::test
