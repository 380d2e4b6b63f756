// SPDX-License-Identifier: MIT
// The run time's ordered collection and dictionary.
#include "automation/Dictionary.h"
#include "automation/LateBound.h"
#include "automation/OrderedCollection.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <limits>

namespace vlgs::test {
namespace {

String joined(const Array& array) {
    String result;
    for (const Variant& value : array.as<Variant>())
        result += concat(toText(value), u" ");
    return result;
}

TEST(OrderedCollection, RaisesWhatTheStoreAnswers) {
    const auto collection = make<OrderedCollection>();
    collection->Add(1, u"Alpha");
    collection->Add(2);
    collection->Add(3); // without a key, as often as wanted
    collection->Add(4, u"", 1);
    EXPECT_EQ(errorOf([&] { collection->Add(5, u""); }), 457);
    EXPECT_EQ(errorOf([&] { collection->Add(5, 7); }), 13);
    EXPECT_EQ(errorOf([&] { collection->Item(5); }), 9);
    EXPECT_EQ(errorOf([&] { collection->Remove(u"none"); }), 5);
    EXPECT_EQ(collection->Count(), 4);

    const Ref<Object> object = collection;
    EXPECT_EQ(call(object, u"item", 1).number(), 4);
    call(object, u"Remove", u"alpha");
    std::int32_t sum = 0;
    Variant item;
    for (const auto enumerator = enumerate(object); enumerator->next(item);)
        sum = sum * 10 + item.number();
    EXPECT_EQ(sum, 423);
}

TEST(Dictionary, KeepsTheOrderOfAddition) {
    const auto dictionary = make<Dictionary>();
    dictionary->Add(u"b", 1);
    dictionary->Add(u"a", 2);
    dictionary->PutItem(u"c", 3);
    dictionary->PutItem(u"b", 4);
    EXPECT_TRUE(dictionary->Item(u"d").isEmpty()); // reading adds it
    dictionary->Remove(u"a");
    dictionary->PutKey(u"c", u"e");
    dictionary->Add(u"a", 5);
    EXPECT_EQ(joined(dictionary->Keys()), u"b e d a ");
    EXPECT_EQ(joined(dictionary->Items()), u"4 3  5 ");
    EXPECT_EQ(dictionary->Count(), 4);
    EXPECT_FALSE(dictionary->Exists(u"c"));
    dictionary->RemoveAll();
    EXPECT_EQ(dictionary->Keys().upper(), -1);
}

TEST(Dictionary, RaisesThePlatformsErrors) {
    const auto dictionary = make<Dictionary>();
    dictionary->Add(u"a", 1);
    dictionary->Add(u"b", 2);
    EXPECT_EQ(errorOf([&] { dictionary->Add(u"a", 3); }), 457);
    EXPECT_EQ(errorOf([&] { dictionary->Remove(u"c"); }), 32811);
    EXPECT_EQ(errorOf([&] { dictionary->PutKey(u"c", u"d"); }), 32811);
    EXPECT_EQ(errorOf([&] { dictionary->PutKey(u"a", u"b"); }), 457);
    EXPECT_EQ(errorOf([&] { dictionary->PutCompareMode(1); }), 5);
    EXPECT_EQ(errorOf([&] { dictionary->Exists(Array::ofBytes({1})); }), 5);
    dictionary->PutKey(u"a", u"a");
    EXPECT_EQ(joined(dictionary->Items()), u"1 2 ");
}

TEST(Dictionary, TextsCompareByTheMode) {
    const auto dictionary = make<Dictionary>();
    dictionary->Add(u"Ä", 1);
    EXPECT_FALSE(dictionary->Exists(u"ä"));
    dictionary->RemoveAll();
    dictionary->PutCompareMode(Dictionary::textCompare);
    dictionary->Add(u"Ä", 1);
    EXPECT_TRUE(dictionary->Exists(u"ä"));
    dictionary->PutKey(u"ä", u"ä");
    EXPECT_EQ(joined(dictionary->Keys()), u"ä ");
}

TEST(Dictionary, KeysOfOtherTypesCompareByValueOrIdentity) {
    const Ref<Object> one = make<Dictionary>();
    const Ref<Object> two = make<Dictionary>();
    // Each row holds spellings of one key; the rows differ from each other.
    const std::vector<Variant> rows[] = {
        {std::int16_t{1}, 1, 1.0, 1.0f, std::uint8_t{1}, Currency{10'000}, Decimal{2, 0, 0, 100}, Date{1}},
        {1.5, 1.5f, Currency{15'000}, Decimal{1, 0, 0, 15}},
        {0, -0.0, false, Decimal{3, 0x80, 0, 0}},
        {true, -1},
        {Decimal{0, 0, 1, 1}, Decimal{1, 0, 10, 10}},
        {Decimal{0, 0, 1, 2}},
        {Currency{std::numeric_limits<std::int64_t>::max()}},
        {Currency{std::numeric_limits<std::int64_t>::max() - 1}},
        {u"1"},
        {u""},
        {Variant()},
        {null},
        {missing},
        {one},
        {two},
        {Variant(nullptr)},
    };
    const auto dictionary = make<Dictionary>();
    for (const auto& row : rows)
        for (const Variant& key : row) {
            EXPECT_EQ(dictionary->Exists(key), &key != &row.front()) << code(key.type());
            dictionary->PutItem(key, 1);
        }
    EXPECT_EQ(dictionary->Count(), static_cast<std::int32_t>(std::size(rows)));
}

TEST(Dictionary, EnumerationSurvivesChanges) {
    const auto dictionary = make<Dictionary>();
    for (std::int32_t i = 0; i < 200; ++i)
        dictionary->Add(i, i);
    std::int32_t seen = 0;
    Variant key;
    for (const auto keys = dictionary->NewEnum(); keys->next(key); ++seen) {
        ASSERT_EQ(key.number(), seen);
        dictionary->Remove(key);
        if (seen < 200)
            dictionary->Add(200 + seen, seen);
    }
    EXPECT_EQ(seen, 400);
    EXPECT_EQ(dictionary->Count(), 0);
    for (std::int32_t i = 0; i < 1000; ++i) { // a queue, which never holds more than two
        dictionary->Add(i + 1, i);
        dictionary->Add(-i, i);
        dictionary->Remove(i + 1);
        dictionary->Remove(-i);
    }
    dictionary->Add(u"last", 1);
    EXPECT_EQ(joined(dictionary->Keys()), u"last ");
}

TEST(OrderedCollection, EndsHoweverDeepItsItemsHoldOneAnother) {
    class Last final : public Object {
      public:
        explicit Last(bool& ended) : ended_(ended) {}
        ~Last() override { ended_ = true; }

      private:
        bool& ended_;
    };
    for (const int depth : {1, 63, 64, 65, 300'000}) {
        bool ended = false;
        Ref<Object> chain = make<Last>(ended);
        for (int i = 0; i < depth; ++i) {
            const auto collection = make<OrderedCollection>();
            collection->Add(std::move(chain));
            collection->Add(make<OrderedCollection>());
            chain = collection;
        }
        chain = nullptr;
        EXPECT_TRUE(ended) << depth;
    }
}

TEST(Dictionary, LateBoundPropertiesReadAndWrite) {
    const Ref<Object> dictionary = make<Dictionary>();
    Variant write[] = {u"k", 7};
    dictionary->invoke(defaultMember, InvokeKind::PropertyPut, {write});
    EXPECT_EQ(call(dictionary, u"Item", u"k").number(), 7);
    Variant key[] = {u"k", u"n"};
    callMember(dictionary, u"Key", InvokeKind::PropertyPut, {key});
    EXPECT_TRUE(call(dictionary, u"Exists", u"n").boolean());
    Variant key2;
    ASSERT_TRUE(enumerate(dictionary)->next(key2));
    EXPECT_EQ(key2.text(), u"n");
}

} // namespace
} // namespace vlgs::test
