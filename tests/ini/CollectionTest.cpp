// SPDX-License-Identifier: MIT
#include "ini/Collection.h"

#include "automation/LateBound.h"
#include "automation/OrderedStore.h"
#include "ini/Property.h"

#include <gtest/gtest.h>

namespace vlgs {
namespace {

// Which failure it is, is the store's: OrderedStoreTest.
TEST(Collection, AnswersFailuresAsNumbers) {
    const auto collection = make<Collection>();
    EXPECT_EQ(collection->Remove(1), 9);
    EXPECT_FALSE(collection->IsPresent(1));
    EXPECT_TRUE(collection->Item(1).isEmpty());
    EXPECT_EQ(collection->Add(1, u"Alpha"), 0);
    EXPECT_EQ(collection->Add(2, u"ALPHA"), 457);
    EXPECT_EQ(collection->Add(3), 0);
    EXPECT_EQ(collection->Add(4), 457); // the empty key is a key
    EXPECT_EQ(collection->Add(5, u"x", 1, 1), 5);
    EXPECT_EQ(collection->Count(), 2);
    EXPECT_EQ(collection->Remove(null), 13);
}

TEST(Collection, ReadsMembersByPositionAndKey) {
    const auto collection = make<Collection>();
    const auto property = make<Property>();
    collection->Add(u"second", u"Beta");
    collection->Add(Variant(property), u"Größe", 1);
    collection->Add(u"last", u"", missing, u"BETA");
    EXPECT_EQ(collection->Item(u"GRÖSSE"), Variant());
    EXPECT_EQ(collection->Item(u"GRÖßE").object(), property.get());
    EXPECT_EQ(collection->Item(2).text(), u"second");
    EXPECT_EQ(collection->Item(u"").text(), u"last");
    EXPECT_TRUE(collection->Item(0).isEmpty());
    EXPECT_TRUE(collection->Item(4).isEmpty());
    EXPECT_TRUE(collection->IsPresent(u"beta"));
    EXPECT_FALSE(collection->IsPresent(Variant()));
}

TEST(Collection, LateBoundCallsLeaveOutWhatIsOptional) {
    const Ref<Object> collection = make<Collection>();
    EXPECT_EQ(call(collection, u"Add", u"a").number(), 0);
    EXPECT_EQ(call(collection, u"Add", u"b").number(), 457);
    EXPECT_EQ(call(collection, u"add", u"c", u"key", 1).number(), 0);
    EXPECT_EQ(call(collection, u"Item", 1).text(), u"c");
    String members;
    Variant member;
    for (const auto enumerator = enumerate(collection); enumerator->next(member);)
        members += member.text();
    EXPECT_EQ(members, u"ca");
}

TEST(Collection, StoreCanBeReplaced) {
    const auto collection = make<Collection>();
    collection->Add(1, u"old");
    const auto enumerator = collection->NewEnum();
    const auto store = make<OrderedStore>();
    store->add(2, u"new");
    collection->SetStore(store);
    EXPECT_FALSE(collection->IsPresent(u"old"));
    EXPECT_EQ(collection->Item(u"NEW").number(), 2);
    Variant member;
    ASSERT_TRUE(enumerator->next(member)); // still over the store that it was made for
    EXPECT_EQ(member.number(), 1);
    collection->SetStore(nullptr);
    EXPECT_EQ(collection->Count(), 0);
    EXPECT_EQ(collection->Add(3), 0);
}

TEST(Property, LetTakesPlainValuesAndSetTakesObjects) {
    const auto property = make<Property>();
    const auto keys = make<Collection>();
    property->LetValue(u"text");
    property->LetValue(Variant(keys));
    property->SetValue(u"ignored");
    EXPECT_EQ(property->Value().text(), u"text");
    property->SetValue(Variant(keys));
    EXPECT_EQ(property->Value().object(), keys.get());

    property->SetName(u"Name");
    const Ref<Object> object = property;
    EXPECT_EQ(call(object, u"Name").text(), u"Name");
    EXPECT_EQ(call(object, u"ClassDescription").text(), u"VlGeneralServices.Property");
    EXPECT_EQ(object->invoke(defaultMember, InvokeKind::PropertyGet, {}).object(), keys.get());
    EXPECT_FALSE(Property::description().header().creatable);
}

} // namespace
} // namespace vlgs
