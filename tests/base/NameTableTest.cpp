// SPDX-License-Identifier: MIT
#include "base/NameTable.h"

#include "base/CaseFold.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vlgs {
namespace {

TEST(NameTable, TellsNamesApartThatAreAlikeAtBothEnds) {
    const std::vector<std::string> names = {
        "A",     "b",           "Ab",          "aBc",          "_ab",          "Abcd",
        "Abcde", "HeadOneTail", "HeadTwoTail", "HeadOneTails", "Headtail",     "Head_ail",
        "Item",  "Items",       "eMsg_1",      "eMsg_2",       "AAAABBBBAAAA", "AAAABBCBAAAA"};
    NameTable table(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        table.add(names[i], static_cast<std::uint16_t>(i));
    for (std::size_t i = 0; i < names.size(); ++i) {
        const String name = String::fromUtf8(names[i]);
        EXPECT_EQ(table.find(name), i) << names[i];
        EXPECT_EQ(table.find(toUpper(name)), i) << names[i];
        EXPECT_EQ(table.find(toLower(name)), i) << names[i];
    }
}

TEST(NameTable, FindsNothingButItsNames) {
    NameTable table(3);
    table.add("Item_1", 0);
    table.add("ok", 1);
    table.add("item_1", 2);
    EXPECT_EQ(table.find(u"Item_1"), 0) << "a name added again keeps its answer";
    // The case bit counts for letters alone, and beyond ASCII nothing is a letter.
    for (const std::u16string_view other : {u"", u"o", u"okk", u"Item_2", u"Item\u007f1", u"Item_\u0011",
                                            u"\u0149tem_1", u"\u0130tem_1", u"o\u212a", u"Item_1Item_1"})
        EXPECT_EQ(table.find(other), NameTable::none) << String(other).toUtf8();
    EXPECT_EQ(NameTable(0).find(String(u"x")), NameTable::none);
}

} // namespace
} // namespace vlgs
