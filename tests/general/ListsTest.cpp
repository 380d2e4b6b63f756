// SPDX-License-Identifier: MIT
#include "general/Lists.h"

#include "automation/Array.h"
#include "automation/LateBound.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace vlgs::test {
namespace {

using Longs = std::vector<std::int32_t>;

Variant longs(std::int32_t lower, const Longs& values) {
    Array array = Array::vector(VarType::Long, static_cast<std::int32_t>(values.size()), lower);
    std::ranges::copy(values, array.mutate<std::int32_t>().begin());
    return array;
}

Variant variants(std::vector<Variant> values) {
    return Array::ofVariants(std::move(values));
}

/// Two dimensions; element (i, j) is 10 i + j.
Variant grid(Dimension first, Dimension second) {
    Array array(VarType::Variant, {first, second});
    for (auto i = first.lower; i <= first.upper(); ++i)
        for (auto j = second.lower; j <= second.upper(); ++j) {
            const std::int32_t indices[] = {i, j};
            array.set(indices, 10 * i + j);
        }
    return array;
}

TEST(VariantToCSV, ListsWhatHasAText) {
    struct Case {
        Variant keys;
        const char16_t* list;
    };
    const Case cases[] = {
        {variants({u"1", u"", u"3"}), u"1,3"},
        {variants({u"", u""}), u"0"},
        {variants({u"a,b"}), u"a,b"},
        {variants({std::int16_t{-7}, std::uint8_t{200}, std::int32_t{-2147483647 - 1}, true, 1.5}),
         u"-7,200,-2147483648,True,1.5"},
        {variants({1, null, 3}), u"0"},
        {variants({1, nullptr}), u"0"},
        {variants({1, variants({2})}), u"0"},
        {variants({Variant(), 2}), u"2"},
        {Variant(), u"0"},
        {null, u"0"},
        {5, u"5"},
        {u"", u""},
        {u"text", u"text"},
        {Array(), u"0"},
        {Array::vector(VarType::Long, 0), u"0"},
        {Array::ofStrings({u"x", u"y"}), u"x,y"},
        {longs(-1, {4, 5}), u"4,5"},
        {grid({0, 2}, {0, 3}), u"0,1,2"},
        {grid({0, 2}, {3, 2}), u"3,4"},
        {grid({-1, 2}, {0, 2}), u"0,1"},
        {grid({1, 2}, {0, 3}), u"0"}, // there is no row 0
        {Array(VarType::Long, {{0, 1}, {0, 1}, {0, 1}}), u"0"},
    };
    for (const auto& [keys, list] : cases)
        EXPECT_EQ(g_VariantToCSV(keys).toUtf8(), String(list).toUtf8());
}

TEST(VariantToCSV, RangesStandOnlyStrictlyInside) {
    struct Case {
        std::int32_t start;
        std::int32_t end;
        const char16_t* list;
    };
    const Case cases[] = {
        {0, 0, u"10,11,12,13,14"}, {2, 2, u"12,13,14"},    {4, 0, u"10,11,12,13,14"},
        {1, 3, u"11,12,13"},       {1, 4, u"11,12,13,14"}, {-1, 2, u"10,11,12"},
        {3, 2, u"13,14"},          {9, 2, u"10,11,12"},    {0, 9, u"10,11,12,13,14"},
    };
    for (const auto& [start, end, list] : cases) {
        EXPECT_EQ(g_VariantToCSV(longs(0, {10, 11, 12, 13, 14}), start, end), list);
        EXPECT_EQ(g_VariantToCSV(grid({0, 1}, {0, 5}), start, end).length(),
                  g_VariantToCSV(longs(0, {0, 1, 2, 3, 4}), start, end).length());
    }
    EXPECT_EQ(g_VariantToCSV(longs(5, {1, 2, 3}), 2, 0), u"0"); // index 2 stands, but is not there
}

TEST(CollectionToCSV, ListsItemsByPosition) {
    const auto items = make<OrderedCollection>();
    EXPECT_EQ(g_CollectionToCSV(items), u"0");
    for (const Variant& item : {Variant(u"a"), Variant(u""), Variant(3), Variant(u"d")})
        items->Add(item);
    EXPECT_EQ(g_CollectionToCSV(items), u"a,3,d");
    EXPECT_EQ(g_CollectionToCSV(items, 2, 3), u"3");
    EXPECT_EQ(g_CollectionToCSV(items, 2, 2), u"3,d");
    EXPECT_EQ(g_CollectionToCSV(items, 4, 0), u"a,3,d");
    items->Add(null);
    EXPECT_EQ(g_CollectionToCSV(items), u"0");
    EXPECT_EQ(g_CollectionToCSV(nullptr), u"0");
}

TEST(CSVToVariant, NumbersComeFromTheLastToTheFirst) {
    struct Case {
        const char16_t* keys;
        Longs numbers;
    };
    const Case cases[] = {
        {u"12,34,56", {56, 34, 12}},
        {u"7,,8", {8, 0, 7}},
        {u"12, 5", {0, 12}},
        {u"-3", {0}},
        {u",", {0, 0}},
        {u"5 ,6,", {0, 6, 0}},
        {u"1.5", {0}},
        {u"x9", {0}},
        {u"2147483647", {2147483647}},
        {u"007", {7}},
        {u"\u0661", {0}},
    };
    for (const auto& [keys, numbers] : cases)
        EXPECT_EQ(g_CSVToVariant(keys, u",", 50), Variant(Array::ofLongs(numbers))) << String(keys).toUtf8();
    EXPECT_EQ(g_CSVToVariant(u"1;2", u";,", 50), Variant(Array::ofLongs({2, 1})));
    EXPECT_EQ(g_CSVToVariant(u"192", u"9", 50), Variant(Array::ofLongs({2, 1})));
    EXPECT_TRUE(g_CSVToVariant(u"", u",", 50).isEmpty());
    EXPECT_TRUE(g_CSVToVariant(u"1", u"", 50).isEmpty());
}

TEST(CSVToVariant, RoomGrowsOnlyWhereADigitNeedsIt) {
    struct Case {
        std::u16string keys;
        std::int32_t chunk;
        std::int32_t failure;
    };
    const auto commas = [](std::size_t count) { return std::u16string(count, u','); };
    const Case cases[] = {
        {u"1" + commas(50), 50, 0},
        {u"1" + commas(51), 50, 9},
        {commas(200), 50, 0},
        {u"x,1", 50, 9}, // field 1 lies beyond the one element made
        {u"x,1,1", 1, 9},
        {u"x,1,1", 2, 0},
        {u"1,2", 0, 9},
        {u"1,2", -1, 9},
        {u"1", 0, 0},
        {u"2147483648", 50, 6},
        {u"99999999999", 50, 6},
        {std::u16string(309, u'0') + u"1", 50, 6},
        {std::u16string(307, u'0') + u"1", 50, 0},
        {u"1,2", 2147483647, 0},
    };
    for (const auto& [keys, chunk, failure] : cases)
        EXPECT_EQ(errorOf([&, &list = keys, &part = chunk] { g_CSVToVariant(list, u",", part); }), failure)
            << String(keys).toUtf8() << " by " << chunk;
}

std::optional<std::string> itemsOf(const char16_t* data, const char16_t* delimiter) {
    String text = data;
    const auto items = g_ParseDelimitedString(text, delimiter);
    if (!items)
        return std::nullopt;
    String list;
    for (std::int32_t i = 1; i <= items->Count(); ++i)
        list = concat(list, u"[", items->Item(i).text(), u"]");
    return list.toUtf8();
}

TEST(ParseDelimitedString, GivesTrimmedItemsInUpperCase) {
    struct Case {
        const char16_t* data;
        const char16_t* delimiter;
        std::optional<std::string> items;
    };
    const Case cases[] = {
        {u"  a, b ,,c  ", u",", "[A][B][C]"},
        {u"a, ,b", u",", "[A][][B]"},
        {u"a,b,", u",", "[A][B]"},
        {u" a,,b ", u",,", "[A,,B]"},
        {u",", u",", ""},
        {u"   ", u",", ""},
        {u"äxßXa", u"x", "[Ä][ßXA]"}, // the delimiter's case counts
        {u"\ta", u",", "[\tA]"},
        {u"a b", u" ", "[A][B]"},
        {u"a", u"", std::nullopt},
        {u"", u",", std::nullopt},
    };
    for (const auto& [data, delimiter, items] : cases)
        EXPECT_EQ(itemsOf(data, delimiter), items) << String(data).toUtf8();
}

TEST(ParseDelimitedString, TrimsTheCallersText) {
    for (const char16_t* delimiter : {u",", u""}) {
        String data = u"  a, b  ";
        g_ParseDelimitedString(data, delimiter);
        EXPECT_EQ(data, u"a, b");
    }
}

} // namespace
} // namespace vlgs::test
