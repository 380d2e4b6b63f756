// SPDX-License-Identifier: MIT
#include "general/Arrays.h"

#include "automation/Dictionary.h"
#include "automation/LateBound.h"
#include "general/Dictionaries.h"
#include "general/General.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vlgs {
namespace {

Variant array(std::vector<Dimension> dimensions, const Variant& first = {}) {
    Array result(VarType::Variant, std::move(dimensions));
    if (result.size() > 0)
        result.put(0, first);
    return result;
}

TEST(Arrays, DimensionsAreCounted) {
    struct Case {
        Variant value;
        std::int32_t upper;
        std::uint8_t dimensions;
        std::int16_t lower; // 7 where nothing is stored
    };
    const Case cases[] = {
        {5, 0, 0, 7},
        {Array(), 0, 0, 7},
        {array({{0, 3}}), 1, 1, 0},
        {array({{-2, 1}, {1, 4}}), 2, 2, -2},
        {array({{40000, 1}}), 1, 1, 7},
        {array(std::vector<Dimension>(59, {1, 1})), 59, 59, 1},
        {array(std::vector<Dimension>(60, {1, 1})), 61, 60, 1},
    };
    for (const auto& [value, upper, dimensions, expected] : cases) {
        std::int16_t lower = 7;
        EXPECT_EQ(g_GetArrayUpperDimension(value, &lower), upper);
        EXPECT_EQ(g_GetArrayDimensions(value), dimensions);
        EXPECT_EQ(lower, expected);
    }
}

TEST(Arrays, ElementsAreCountedFromTheUpperBound) {
    struct Case {
        Variant value;
        std::uint8_t dimension;
        std::int32_t count;
    };
    const Case cases[] = {
        {u"text", 1, 0},
        {Array(), 1, 0},
        {array({{1, 3}}), 1, 3},
        {array({{0, 4}}), 1, 4},
        {array({{2, 4}}), 1, 5},
        {array({{-3, 2}}), 1, -2},
        {array({{0, 4}}), 2, 0},
        {array({{0, 4}}), 0, 0},
        {array({{0, 4}, {1, 9}}), 2, 9},
        {array({{0, 1}}), 1, 0}, // one element, Empty
        {array({{1, 1}}, null), 1, 0},
        {array({{0, 1}}, u""), 1, 0},
        {array({{0, 1}}, u" "), 1, 1},
        {array({{0, 1}}, 0), 1, 1},
        {array({{-1, 3}}), 1, 0}, // counts 1 as well, so its first element is looked at
        {array({{-1, 3}}, 5), 1, 1},
        {array({{0, 1}, {0, 1}}), 2, 0},
        {array(std::vector<Dimension>(5, {1, 1})), 5, 0},
        {array(std::vector<Dimension>(6, {1, 1})), 6, 1},
        {array({{2147483647, 1}}), 1, 2147483647},
    };
    for (const auto& [value, dimension, count] : cases)
        EXPECT_EQ(g_GetArrayElemCount(value, dimension), count);
}

TEST(Arrays, PositionsBecomeIndices) {
    const Variant fromZero = array({{0, 3}});
    const Variant fromOne = array({{1, 3}, {0, 3}});
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(fromZero, 1), 0);
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(fromZero, 0), 0);
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(fromZero, -2147483647 - 1), 0);
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(fromOne, 1), 1);
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(fromOne, 9, 2), 8);
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(fromOne, 9, 3), 0);
    EXPECT_EQ(g_GetArrayElemIndexFromPosition(5, 9), 0);
}

TEST(Dictionaries, TheFirstMemberOfEachTextIsTaken) {
    const Variant object(make<Dictionary>());
    const Variant source = Array::ofVariants({1, u"1", u"a", null, object, 2.5, u"a"});
    Ref<Object> dictionary;
    const auto result = g_CopyVariantArrayToDictionary(source, &dictionary);
    EXPECT_EQ(result, dictionary);
    EXPECT_EQ(call(result, u"Keys"), Variant(Array::ofVariants({u"1", u"a", u"", u"2.5"})));
    EXPECT_EQ(call(result, u"Items"), Variant(Array::ofVariants({1, u"a", null, 2.5})));

    g_CopyVariantArrayToDictionary(Array::ofVariants({u"b", u"a"}), &dictionary);
    EXPECT_EQ(call(dictionary, u"Count"), Variant(5));
}

TEST(Dictionaries, OnlyTheFirstRowOfTwoDimensionsIsTaken) {
    Array source(VarType::Long, {{3, 2}, {0, 2}});
    std::ranges::copy(std::vector{10, 11, 20, 21}, source.mutate<std::int32_t>().begin());
    const auto result = g_CopyVariantArrayToDictionary(source, nullptr);
    EXPECT_EQ(call(result, u"Items"), Variant(Array::ofVariants({10, 20})));
}

TEST(Dictionaries, OtherDimensionsGiveNoDictionary) {
    for (const Variant& source : {Variant(5), Variant(Array()), array({{0, 1}, {0, 1}, {0, 1}})}) {
        Ref<Object> dictionary;
        EXPECT_FALSE(g_CopyVariantArrayToDictionary(source, &dictionary));
        EXPECT_TRUE(dictionary);
    }
}

TEST(Dictionaries, ValuesAreAppendedToTheLastDimension) {
    const auto dictionary = g_CopyVariantArrayToDictionary(Array::ofVariants({7, u"x"}), nullptr);

    Variant destination;
    EXPECT_EQ(g_CopyDictionaryToVariantArray(dictionary, &destination), destination);
    EXPECT_EQ(destination, Variant(Array::ofVariants({7, u"x"})));

    destination = Array::ofVariants({1}, 4);
    g_CopyDictionaryToVariantArray(dictionary, &destination);
    EXPECT_EQ(destination, Variant(Array::ofVariants({1, 7, u"x"}, 4)));

    destination = array({{1, 2}, {1, 1}}, u"a");
    g_CopyDictionaryToVariantArray(dictionary, &destination);
    Array rows(VarType::Variant, {{1, 2}, {1, 3}});
    rows.put(0, u"a");
    rows.put(2, 7);
    rows.put(4, u"x");
    EXPECT_EQ(destination, Variant(rows));

    destination = Array::ofLongs({1}); // "x" does not become a number
    g_CopyDictionaryToVariantArray(dictionary, &destination);
    EXPECT_EQ(destination, Variant(Array::ofLongs({1, 7, 0})));
}

TEST(Dictionaries, WithoutADictionaryNothingIsCopied) {
    Variant destination = Array::ofLongs({1});
    EXPECT_TRUE(g_CopyDictionaryToVariantArray(nullptr, &destination).isEmpty());
    EXPECT_EQ(g_CopyDictionaryToVariantArray(make<General>(), &destination), destination);
    EXPECT_EQ(destination, Variant(Array::ofLongs({1})));
    EXPECT_EQ(g_CopyDictionaryToVariantArray(make<Dictionary>(), nullptr),
              Variant(Array::vector(VarType::Variant, 0)));
}

TEST(GeneralClass, AnswersLateBoundCalls) {
    const Ref<Object> general = make<General>();
    EXPECT_EQ(call(general, u"VariantToCSV", Array::ofLongs({2, 1})), Variant(u"2,1"));
    EXPECT_EQ(call(general, u"GetArrayElemCount", Array::ofLongs({2, 1})), Variant(2));
    EXPECT_EQ(call(general, u"IsSameDataType", u"text", Array::ofVariants({2})), Variant(true));
    EXPECT_EQ(call(general, u"HTMLtoText", u"a<br>b"), Variant(u"a\r\nb"));

    Variant arguments[] = {u" a;b ", u";"};
    EXPECT_EQ(call(general, u"ParseDelimitedString", null, u","), Variant(nullptr));
    const Variant items = callMember(general, u"ParseDelimitedString", InvokeKind::Method, {arguments});
    EXPECT_EQ(call(items.reference(), u"Item", 2), Variant(u"B"));
    EXPECT_EQ(arguments[0], Variant(u"a;b"));

    Variant copied[] = {Array::ofLongs({7}), Variant()}; // a variable that holds nothing receives the object
    const Variant copy = callMember(general, u"CopyVariantArrayToDictionary", InvokeKind::Method, {copied});
    EXPECT_TRUE(copy.isObject());
    EXPECT_EQ(copied[1], copy);

    Variant measured[] = {array({{3, 1}}), std::int16_t{0}};
    callMember(general, u"GetArrayUpperDimension", InvokeKind::Method, {measured});
    EXPECT_EQ(measured[1], Variant(std::int16_t{3}));
}

} // namespace
} // namespace vlgs
