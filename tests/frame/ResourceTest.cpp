// SPDX-License-Identifier: MIT
#include "frame/Resource.h"

#include "automation/LateBound.h"
#include "base/Text.h"
#include "frame/MessageTexts.h"
#include "frame/Messages.h"
#include "platform/CodePage.h"
#include "support/Raised.h"
#include "support/UserLocale.h"

#include <gtest/gtest.h>

namespace vlgs::test {
namespace {

class ResourceTest : public ::testing::Test {
  protected:
    const Setting language_{"LANGUAGE", "en"};

    String text(std::int32_t index, const char16_t* language = u"") {
        return resource_->ResourceString(index, language);
    }
    Ref<Resource> resource_ = make<Resource>();
};

TEST_F(ResourceTest, EveryMessageHasATextOfItsOwnInEachLanguage) {
    const CodePage western = *CodePage::find(1252);
    for (const auto& [name, number] : enumMessagesMembers) {
        if (number == eMsg_Empty)
            continue;
        const String english = text(number, u"en");
        for (const char16_t* language : {u"en", u"de", u"fr"}) {
            const String own = text(number, language);
            EXPECT_EQ(own, trim(own)) << name;
            EXPECT_FALSE(own.empty()) << name;
            EXPECT_TRUE(western.encodeExactly(own)) << name;
            EXPECT_EQ(split(own, u"%1").size(), split(english, u"%1").size()) << name;
            EXPECT_EQ(own.view().ends_with(u':'), english.view().ends_with(u':')) << name;
            if (number != eMsg_PostFixChar && std::u16string_view(language) != u"en") {
                EXPECT_NE(own, english) << name;
            }
        }
    }
}

TEST_F(ResourceTest, LanguageCodes) {
    const String german = text(eMsg_InvalidFormat, u"de");
    const String french = text(eMsg_InvalidFormat, u"fr");
    const String english = text(eMsg_InvalidFormat, u"en");
    EXPECT_NE(german, english);
    const std::pair<const char16_t*, const String&> cases[] = {
        {u"DE", german},  {u"de-DE", german}, {u"de_AT", german}, {u"DEU", german},  {u"ger", german},
        {u"DES", german}, {u"fra", french},   {u"fr-CA", french}, {u"FRC", french},  {u"ENU", english},
        {u"", english},   {u"ja", english},   {u"d", english},    {u"den", english}, {u"-", english},
    };
    for (const auto& [code, expected] : cases)
        EXPECT_EQ(text(eMsg_InvalidFormat, code), expected) << String(code).toUtf8();
}

TEST_F(ResourceTest, WithoutALanguageTheOverrideAndThenTheUsersLanguageCount) {
    setenv("LANGUAGE", "ja:fr_CH:de", 1);
    EXPECT_EQ(text(eMsg_InvalidFormat), text(eMsg_InvalidFormat, u"fr"));
    String code = u"de-CH";
    resource_->SetLanguageOverride(code);
    code = u"";
    resource_->SetLanguageOverride(code);
    EXPECT_EQ(resource_->LanguageOverride(), u"de-CH");
    EXPECT_EQ(text(eMsg_InvalidFormat), text(eMsg_InvalidFormat, u"de"));
    EXPECT_EQ(text(eMsg_InvalidFormat, u"ja"), text(eMsg_InvalidFormat, u"de"));
    code = u"ja";
    resource_->SetLanguageOverride(code);
    EXPECT_EQ(text(eMsg_InvalidFormat), text(eMsg_InvalidFormat, u"fr"));
}

TEST_F(ResourceTest, NamesTheLanguageOfTheSystem) {
    const UserLocale swiss("fr-CH");
    EXPECT_EQ(resource_->LanguageNative(), u"français");
    EXPECT_EQ(make<Resource>()->LanguageEnglish(), u"French");
}

TEST_F(ResourceTest, LimitsOfTheIndex) {
    EXPECT_EQ(resource_->MessageMax(), u"11559");
    for (const auto& [index, valid] : {std::pair{1152, true},
                                       {11559, true},
                                       {5000, true},
                                       {1151, false},
                                       {11560, false},
                                       {99, false},
                                       {0, false},
                                       {-1, false}}) {
        std::int32_t number = index;
        EXPECT_EQ(resource_->IsValidIndex(number), valid) << index;
        if (!valid) {
            const String expected = concat(
                u"Error - Invalid resource message code.  Index is out of range. (", decimal(index), u")");
            EXPECT_EQ(text(index, u"de"), expected);
            EXPECT_EQ(resource_->ResourceOfFormat(index, eBitmapResource, u""), Variant(expected));
        }
    }
    EXPECT_EQ(errorOf([&] { text(5000); }), 326);
    EXPECT_EQ(errorOf([&] { resource_->ResourceOfFormat(11501, eBitmapResource, u""); }), 326);
    EXPECT_EQ(resource_->ResourceOfFormat(11501, eStringResource, u"fr"), Variant(text(11501, u"fr")));
}

TEST_F(ResourceTest, ReplaceableTexts) {
    struct Case {
        const char16_t* text;
        std::vector<Variant> elements;
        const char16_t* result;
    };
    std::vector<Variant> ten(9, u"x");
    ten.emplace_back(u"ten");
    const Case cases[] = {
        {u"Copy %1 to %2 (100%%)", {u"a", u"b"}, u"Copy a to b (100%)"},
        {u"%2 %1 %1 %3", {1, true}, u"True 1 1 %3"},
        {u"%10", ten, u"x0"},
        {u"%1", {u"%2", u"!"}, u"!"},
        {u"%2", {u"!", u"%1"}, u"%1"},
        {u"a~~b %%1", {u"x"}, u"a%b %1"},
        {u"%1", {u"~~ %%"}, u"% %%"},
        {u"", {u"x"}, u""},
    };
    for (const auto& [pattern, elements, result] : cases) {
        for (const std::int32_t lower : {0, 1, -5})
            EXPECT_EQ(replaceParameters(pattern, Array::ofVariants(elements, lower)), result);
    }
    for (const Variant& none : {Variant(), Variant(null), Variant(missing)})
        EXPECT_EQ(replaceParameters(u"%1 %%", none), u"%1 %");
    std::vector<Variant> doubling;
    for (int number = 2; number <= 25; ++number) {
        const auto next = concat(u"%", decimal(number));
        doubling.emplace_back(concat(next, next));
    }
    EXPECT_EQ(errorOf([&] { replaceParameters(u"%1", Array::ofVariants(doubling)); }), 7);
    const String large(std::u16string(2 << 20, u'x'));
    EXPECT_EQ(replaceParameters(u"%1%1", Array::ofVariants({large})).length(), 4u << 20);
    EXPECT_EQ(errorOf([] { replaceParameters(u"%1", u"text"); }), 13);
    EXPECT_EQ(errorOf([] { replaceParameters(u"%1", Array::ofVariants({null})); }), 94);
}

TEST_F(ResourceTest, LateBoundCalls) {
    const Ref<Object> object = resource_;
    EXPECT_EQ(call(object, u"ResourceReplaceableString2", 11546, u"en", Array::ofStrings({u"UNC"})),
              Variant(u"The path is in UNC format."));
    EXPECT_EQ(call(object, u"ResourceReplaceableString", 11546, u"en", Array::ofVariants({u"UNC"})),
              Variant(u"The path is in UNC format."));
    EXPECT_EQ(call(object, u"Resource", 11557, 6), Variant(u"42"));
    EXPECT_EQ(call(object, u"MessageMin"), Variant(1152));
    EXPECT_EQ(call(object, u"ResourceFileVersion"), Variant(u"9.1002.0.23"));
    EXPECT_EQ(call(object, u"Languages"), Variant(u"en;de;fr"));
}

} // namespace
} // namespace vlgs::test
