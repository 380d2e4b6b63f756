#include "library/Classes.h"

#include "base/CaseFold.h"
#include "base/Error.h"

#include <gtest/gtest.h>

#include <set>

namespace vlgs {
namespace {

std::int32_t creationError(std::u16string_view name) {
    try {
        createObject(name);
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(Classes, UnknownNamesCannotBeCreated) {
    for (const char16_t* name : {u"", u"VlGeneralServices", u"VlGeneralServices.",
                                 u"VlGeneralServices.Nothing", u"Other.Files", u".Files", u"Dictionary"})
        EXPECT_EQ(creationError(name), 429) << String(name).toUtf8();
}

TEST(Classes, EveryClassIsFoundByBothItsNamesInAnyCase) {
    for (const auto* info : classes()) {
        EXPECT_EQ(findClass(info->programmaticId()), info);
        EXPECT_EQ(findClass(toUpper(info->programmaticId())), info);
        EXPECT_EQ(findClass(toLower(String::fromUtf8(info->name()))), info);
        if (!info->header().creatable) {
            EXPECT_EQ(creationError(info->programmaticId()), 429) << info->name();
        }
    }
}

TEST(Classes, IdentifiersAreAllDifferent) {
    std::set<std::array<std::uint8_t, 16>> seen;
    for (const auto* info : classes()) {
        EXPECT_TRUE(seen.insert(info->header().classId.bytes).second) << info->name();
        EXPECT_TRUE(seen.insert(info->header().interfaceId.bytes).second) << info->name();
        if (!info->header().eventInterface.empty()) {
            EXPECT_TRUE(seen.insert(info->header().eventInterfaceId.bytes).second) << info->name();
        }
    }
    for (const auto* info : enumerations())
        EXPECT_TRUE(seen.insert(info->id.bytes).second) << info->name;
    for (const auto* info : records())
        EXPECT_TRUE(seen.insert(info->id.bytes).second) << info->name;
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
