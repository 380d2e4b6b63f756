// SPDX-License-Identifier: MIT
#include "viewprops/ViewProperties.h"

#include "automation/LateBound.h"
#include "automation/OrderedCollection.h"
#include "frame/SharedState.h"
#include "library/Classes.h"
#include "support/Raised.h"
#include "viewprops/ViewProperty.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

Variant assign(const Ref<Object>& object, std::u16string_view member, InvokeKind kind, Variant value) {
    return callMember(object, member, kind, {{&value, 1}});
}

TEST(ViewProperties, HaveNoDictionaryUntilAStringIsSet) {
    const auto properties = make<ViewProperties>();
    EXPECT_FALSE(properties->Dictionary());
    EXPECT_EQ(properties->PropertyString(), u"");
    properties->SetPropertyString(u"");
    ASSERT_TRUE(properties->Dictionary());
    EXPECT_EQ(properties->Dictionary()->Count(), 0);
}

TEST(ViewProperties, EmptyTheDictionaryThatTheyLetGo) {
    auto properties = make<ViewProperties>();
    const auto set = [&] {
        properties->SetPropertyString(u"A=/i1;");
        return properties->Dictionary();
    };
    const auto first = set();
    const auto second = set();
    EXPECT_EQ(first->Count(), 0);
    EXPECT_EQ(second->Count(), 1);
    properties->Clear();
    EXPECT_EQ(second->Count(), 0);
    EXPECT_FALSE(properties->Dictionary());
    const auto third = set();
    properties = nullptr;
    EXPECT_EQ(third->Count(), 0);
}

TEST(ViewProperties, AFailedSettingChangesNothing) {
    const auto properties = make<ViewProperties>();
    properties->SetPropertyString(u"A=/i1;");
    const auto before = properties->Dictionary();
    const struct {
        const char16_t* text;
        const char* ending;
    } cases[] = {{u"B=/s\"", "\r\nData= [B=/s\"]"},
                 {u"B=/i1;B=/i2", "\r\nThis key is already associated with an element of this collection"}};
    for (const auto& [text, ending] : cases) {
        EXPECT_TRUE(raises(messageError(11522), "VlGeneralServices.ViewProperties.PropertyString (Let)",
                           ending, [&, given = text] { properties->SetPropertyString(given); }));
        EXPECT_EQ(properties->Dictionary(), before);
        EXPECT_EQ(properties->PropertyString(), u"A=/i1;");
    }
}

TEST(ViewProperties, ServeLateBoundCallers) {
    EXPECT_EQ(errorOf([] { createObject(u"VlGeneralServices.ViewProperties"); }), 429);
    const auto properties = make<ViewProperties>(make<Dictionary>());
    const auto added = createObject(u"VlGeneralServices.ViewProperty");
    assign(added, u"DataType", InvokeKind::PropertyPut, u"s");
    assign(added, u"Value", InvokeKind::PropertyPut, u"text");
    // `properties.Dictionary(…)` reaches the dictionary's own default member.
    Variant arguments[] = {u"Key", added};
    callMember(call(properties, u"Dictionary").reference(), u"Add", InvokeKind::Method, {arguments});
    EXPECT_EQ(call(properties, u"Dictionary", u"Key"), Variant(added));
    EXPECT_EQ(call(properties, u"PropertyString"), Variant(u"Key=/stext;"));
}

TEST(ViewProperty, HoldsObjectsByReferenceWhicheverWayTheyAreSet) {
    const auto property = make<ViewProperty>();
    EXPECT_TRUE(property->Value().isEmpty());
    for (const auto kind : {InvokeKind::PropertyPut, InvokeKind::PropertyPutRef}) {
        const auto items = make<OrderedCollection>();
        assign(property, u"Value", kind, items);
        EXPECT_EQ(call(property, u"Value"), Variant(items));
        assign(property, u"Value", kind, 5);
        EXPECT_EQ(call(property, u"Value"), Variant(5));
        EXPECT_EQ(items->referenceCount(), 1);
    }
}

TEST(ViewProperty, ClearingDependsOnWhatItHolds) {
    const auto property = make<ViewProperty>(u"s", u"x");
    property->SetKeySideViewProperty(make<ViewProperty>());
    property->Clear();
    EXPECT_EQ(property->DataType(), u"");
    EXPECT_EQ(property->Value(), Variant(u""));
    EXPECT_FALSE(property->KeySideViewProperty());
    property->SetValue(make<OrderedCollection>());
    property->Clear();
    EXPECT_EQ(property->Value(), Variant(nullptr));
}

TEST(ViewProperty, ThatHoldsItselfHasNoText) {
    const auto property = make<ViewProperty>();
    property->SetValue(property);
    EXPECT_EQ(errorOf([&] { toText(Variant(property)); }), 13);
    property->Clear();
}

} // namespace
} // namespace vlgs::test
