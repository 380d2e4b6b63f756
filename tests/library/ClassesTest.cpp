#include "library/Classes.h"

#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <map>

namespace vlgs {
namespace {

using test::errorOf;

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
} // namespace vlgs
