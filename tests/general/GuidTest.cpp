// SPDX-License-Identifier: MIT
#include "general/GUID.h"

#include "support/Raised.h"

#include <gtest/gtest.h>

#include <functional>

namespace vlgs::test {
namespace {

constexpr const char16_t* text = u"{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EAF}";
constexpr const char16_t* lowerCase = u"{6d0c33a1-5b0b-4b52-9e0b-2c1f0c5a7eaf}";
constexpr const char16_t* unbraced = u"6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EAF";

TEST(GuidClass, NewIdentifiersDiffer) {
    const auto guid = make<GUID>();
    const String first = guid->GenerateGUID();
    EXPECT_EQ(first.length(), 38u);
    EXPECT_EQ(first[0], u'{');
    EXPECT_EQ(first[37], u'}');
    EXPECT_FALSE(guid->IsEqualGUID(first, guid->GenerateGUID()));
}

TEST(GuidClass, IdentifiersAreComparedByValue) {
    const auto guid = make<GUID>();
    EXPECT_TRUE(guid->IsEqualGUID(text, lowerCase));
    EXPECT_FALSE(guid->IsEqualGUID(text, u"{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EA0}"));
}

TEST(GuidClass, OwnClassesAnswerInBothDirections) {
    const auto guid = make<GUID>();
    const String id = guid->GUIDFromProgID(u"vlgeneralservices.guid");
    EXPECT_EQ(guid->ProgIDFromGUID(id), u"VlGeneralServices.GUID");
}

TEST(GuidClass, FailuresHaveTheirNumbersAndTexts) {
    const auto guid = make<GUID>();
    struct Case {
        std::function<void()> act;
        std::int32_t number;
        const char* member;
        const char* description;
    };
    const Case cases[] = {
        {[&] { guid->IsEqualGUID(unbraced, unbraced); }, -2147217504, "IsEqualGUID",
         "Error Converting sGUID1 from String"},
        {[&] { guid->IsEqualGUID(text, u"VlGeneralServices.GUID"); }, -2147217504, "IsEqualGUID",
         "Error Converting sGUID2 from String"},
        {[&] { guid->GUIDFromProgID(u"NoSuch.Class"); }, -2147217503, "GUIDFromProgID",
         "Error Converting ProgID to GUID"},
        {[&] { guid->ProgIDFromGUID(u""); }, -2147217504, "ProgIDFromGUID",
         "Error Converting sGUID from String"},
        {[&] { guid->ProgIDFromGUID(text); }, -2147217501, "ProgIDFromGUID",
         "Error Converting ProgID to CLSID"},
    };
    for (const auto& [act, number, member, description] : cases)
        EXPECT_EQ(raised(act),
                  (Raised{number, std::string("VlGeneralServices.GUID.") + member, description}));
}

} // namespace
} // namespace vlgs::test
