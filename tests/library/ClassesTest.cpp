// SPDX-License-Identifier: MIT
#include "library/Classes.h"

#include "automation/Array.h"
#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace vlgs::test {
namespace {

TEST(Classes, UnknownNamesCannotBeCreated) {
    for (const char16_t* name : {u"", u"VlGeneralServices", u"VlGeneralServices.",
                                 u"VlGeneralServices.Nothing", u"Other.Files", u".Files", u"Dictionary"})
        EXPECT_EQ(errorOf([&] { createObject(name); }), 429) << String(name).toUtf8();
}

TEST(Classes, EveryClassIsFoundByBothItsNamesInAnyCase) {
    for (const auto* info : classes()) {
        EXPECT_EQ(findClass(info->programmaticId()), info);
        EXPECT_EQ(findClass(toUpper(info->programmaticId())), info);
        EXPECT_EQ(findClass(toLower(String::fromUtf8(info->name()))), info);
        if (!info->header().creatable) {
            EXPECT_EQ(errorOf([&] { createObject(info->programmaticId()); }), 429) << info->name();
        }
    }
}

TEST(Classes, TellTheirNamesVersionAndNumber) {
    const std::map<std::string_view, std::int32_t> numbers = {
        {"Collection", 151}, {"Files", 153},      {"General", 154},      {"GUID", 155},
        {"RegUtil", 158},    {"RegValue", 159},   {"CorvaTools", 160},   {"Buffer", 161},
        {"Cipher", 161},     {"Restricted", 162}, {"ViewProperty", 164}, {"ObjectPackager", 165},
        {"Conversion", 166}, {"Resource", 47},
    };
    for (const auto* info : classes()) {
        if (!info->header().creatable || info->name() == "DDE")
            continue;
        const auto object = createObject(info->programmaticId());
        EXPECT_EQ(call(object, u"ClassName"), Variant(info->programmaticId()));
        EXPECT_EQ(call(object, u"ClassVersion"), Variant(u"9.1002.23")) << info->name();
        EXPECT_EQ(call(object, u"ClassID"), Variant(numbers.at(info->name()))) << info->name();
        EXPECT_EQ(call(object, u"ClassFilename"), Variant(u"VlGeneralServices.DLL")) << info->name();
    }
}

// An argument that does not convert to its parameter's type is answered as a failure of the member would be.
TEST(Classes, MembersThatNeverRaiseAnswerArgumentsThatDoNotFit) {
    const Variant list = Array::ofLongs({1}), none = nullptr, misfit;
    const struct {
        const char16_t* type;
        const char16_t* member;
        std::vector<Variant> arguments; // Empty stands for the one that does not fit
        Variant answer;
    } cases[] = {
        {u"Files", u"Path", {misfit}, u""},
        {u"Files", u"IsValidPath", {misfit}, false},
        {u"Files", u"RetrieveVLLFileForVLS", {misfit}, none},
        {u"Files", u"Is40VLSFile", {misfit}, false},
        {u"Files", u"GetReadWriteFile", {misfit, false}, u""},
        {u"General", u"VariantToCSV", {5, misfit}, u"0"},
        {u"General", u"CollectionToCSV", {misfit}, u"0"},
        {u"General", u"ParseDelimitedString", {misfit, u","}, none},
        {u"General", u"CopyVariantArrayToDictionary", {list, misfit}, none},
        {u"General", u"CopyDictionaryToVariantArray", {misfit}, Variant()},
        {u"General", u"GetArrayElemCount", {list, misfit}, 0},
        {u"General", u"GetArrayElemIndexFromPosition", {list, 1, misfit}, 0},
        {u"Conversion", u"GetLocaleSetting", {misfit}, u""},
        {u"Conversion", u"IsValidCorvaRevisionNumber", {misfit}, false},
        {u"Conversion", u"RevNumComp", {u"1.0", misfit}, u""},
        {u"CorvaTools", u"Hash", {misfit}, 0},
    };
    for (const auto& [type, member, arguments, answer] : cases)
        for (const Variant& value : {Variant(null), list}) {
            auto given = arguments;
            std::ranges::replace(given, misfit, value);
            const auto object = createObject(concat(u"VlGeneralServices.", type));
            EXPECT_EQ(callMember(object, member, InvokeKind::MethodOrGet, {given}), answer)
                << String(member).toUtf8();
        }
    const auto items = createObject(u"VlGeneralServices.Collection");
    EXPECT_EQ(call(items, u"Add", 1, null), Variant(94));
    EXPECT_EQ(call(items, u"Add", 1, list), Variant(13));
    EXPECT_EQ(call(items, u"Count"), Variant(0));
    const auto arrays = createObject(u"VlGeneralServices.General");
    EXPECT_EQ(call(arrays, u"GetArrayElemCount", list, 300), Variant(0)) << "no byte";
}

TEST(Classes, ANumberThatATextParameterLeavesAsItIsStaysANumber) {
    Variant given[] = {5};
    EXPECT_EQ(
        callMember(createObject(u"VlGeneralServices.CorvaTools"), u"Hash", InvokeKind::MethodOrGet, {given}),
        Variant(53));
    EXPECT_EQ(given[0], Variant(5));
}

TEST(Classes, RowsTellWhatTheirMembersAndParametersMean) {
    for (const auto* info : classes())
        for (const auto& member : info->members()) {
            EXPECT_FALSE(member.help.empty()) << info->name() << '.' << member.name;
            for (const auto& parameter : member.parameters)
                EXPECT_FALSE(parameter.meaning.empty())
                    << info->name() << '.' << member.name << ' ' << parameter.name;
        }
}

} // namespace
} // namespace vlgs::test
