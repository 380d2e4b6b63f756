// SPDX-License-Identifier: MIT
#include "automation/Variant.h"
#include "automation/Array.h"
#include "automation/Convert.h"
#include "base/Error.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace vlgs::test {
namespace {

struct Thing : Object {};

TEST(Variant, HasTheLayoutOfAutomation) {
    Variant decimal(Decimal{2, 0x80, 0x2A000000, 0x0102030405060708});
    unsigned char bytes[16];
    std::memcpy(bytes, static_cast<const void*>(&decimal), sizeof bytes);
    EXPECT_EQ(bytes[0], 14);
    EXPECT_EQ(bytes[2], 2);
    EXPECT_EQ(bytes[3], 0x80);
    EXPECT_EQ(bytes[7], 0x2A);
    EXPECT_EQ(bytes[8], 8);
    EXPECT_EQ(bytes[15], 1);
}

TEST(Variant, KeepsObjectsAliveAndLetsThemGo) {
    const auto thing = make<Thing>();
    {
        Variant first = thing;
        Variant second = first;
        EXPECT_EQ(thing->referenceCount(), 3);
        Variant third = std::move(second);
        first = third;
        first = u"text";
        EXPECT_EQ(thing->referenceCount(), 2);
        third = Array::ofVariants({thing, thing});
        const Variant shared = third;
        EXPECT_EQ(thing->referenceCount(), 3);
    }
    EXPECT_EQ(thing->referenceCount(), 1);
}

TEST(Array, FindsElementsByBoundsOfEachDimension) {
    Array array(VarType::Long, {{1, 2}, {-1, 3}});
    std::int32_t value = 0;
    for (std::int32_t second = -1; second <= 1; ++second)
        for (std::int32_t first = 1; first <= 2; ++first) {
            const std::int32_t indices[] = {first, second};
            array.set(indices, ++value);
        }
    EXPECT_TRUE(std::ranges::equal(array.as<std::int32_t>(), std::vector{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(array.lower(2), -1);
    EXPECT_EQ(array.upper(2), 1);
    const std::int32_t outside[][2] = {{0, 0}, {3, 0}, {1, -2}, {1, 2}};
    for (const auto& indices : outside)
        EXPECT_EQ(errorOf([&] { array.get(indices); }), 9);
    EXPECT_EQ(errorOf([&] { array.get(1); }), 9);
    EXPECT_EQ(errorOf([&] { array.upper(3); }), 9);
}

TEST(Array, ResizesTheLastDimensionAndKeepsWhatStays) {
    Array array(VarType::Variant, {{0, 2}, {0, 1}});
    const std::int32_t at[] = {1, 0};
    array.set(at, u"kept");
    const Array before = array;
    array.resizeLast(3);
    EXPECT_EQ(array.get(at), Variant(u"kept"));
    EXPECT_EQ(array.upper(2), 2);
    EXPECT_EQ(before.upper(2), 0) << "a copy is its own array";
}

TEST(Array, RefusesWhatCannotBe) {
    EXPECT_EQ(errorOf([] { Array(VarType::Long, {}); }), 9);
    EXPECT_EQ(errorOf([] { Array(VarType::Long, std::vector<Dimension>(61, {0, 1})); }), 9);
    EXPECT_EQ(errorOf([] { Array(VarType::Long, {{0, -1}}); }), 9);
    EXPECT_EQ(errorOf([] { Array(VarType::Null, {{0, 1}}); }), 13);
    EXPECT_EQ(errorOf([] { Array(VarType::Long, {{0, 1 << 20}, {0, 1 << 20}}); }), 7);
    EXPECT_EQ(Array(VarType::Byte, std::vector<Dimension>(60, {7, 1})).size(), 1u);
}

TEST(Array, ConvertsWhatIsPutIntoIt) {
    Array array = Array::vector(VarType::Boolean, 1);
    array.set(0, 5);
    EXPECT_EQ(array.as<std::int16_t>()[0], -1);
    EXPECT_EQ(array.get(0), Variant(true));
    EXPECT_EQ(errorOf([&] { array.set(0, u"maybe"); }), 13);
}

} // namespace
} // namespace vlgs::test
