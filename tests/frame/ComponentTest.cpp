// SPDX-License-Identifier: MIT
#include "frame/Component.h"

#include "frame/ComponentFacts.h"
#include "frame/Errors.h"
#include "frame/Restricted.h"
#include "frame/SharedState.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

namespace vlgs::test {
namespace {

bool holdsCatalogue() {
    return static_cast<bool>(SharedState::ofThread().catalogue);
}

TEST(InstanceCount, TheLastObjectTakesTheCatalogueWithIt) {
    SharedState::ofThread().catalogue = nullptr; // an earlier test may have left one
    auto first = make<Restricted>();
    auto second = make<Restricted>();
    EXPECT_EQ(SharedState::ofThread().instances, 2);
    EXPECT_FALSE(holdsCatalogue());
    const auto catalogue = GetMessageCatalogue();
    EXPECT_EQ(GetMessageCatalogue(), catalogue);
    first = nullptr;
    EXPECT_TRUE(holdsCatalogue());
    second = nullptr;
    EXPECT_FALSE(holdsCatalogue());
    EXPECT_NE(GetMessageCatalogue(), catalogue);
    SharedState::ofThread().catalogue = nullptr;
}

TEST(InstanceCount, ObjectsThatOnlyCountOutMakeTheCatalogueGoEarly) {
    auto object = make<Restricted>();
    GetMessageCatalogue();
    ReleaseInstance();
    EXPECT_FALSE(holdsCatalogue());
    object = nullptr;
    EXPECT_EQ(SharedState::ofThread().instances, -1);
    SharedState::ofThread().instances = 0;
}

TEST(InstanceCount, OverflowsInsteadOfWrapping) {
    std::int32_t& count = SharedState::ofThread().instances;
    count = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(errorOf([] { make<Restricted>(); }), 6);
    EXPECT_EQ(count, std::numeric_limits<std::int32_t>::max());
    count = 0;
}

TEST(InstanceCount, BelongsToTheThread) {
    const auto object = make<Restricted>();
    std::int32_t elsewhere = -1;
    std::thread([&] { elsewhere = SharedState::ofThread().instances; }).join();
    EXPECT_EQ(elsewhere, 0);
}

TEST(InstanceCount, ObjectsMayOutliveTheStateOfTheirThread) {
    std::thread([] {
        thread_local Ref<Restricted> survivor; // made before the state, hence destroyed after it
        survivor = make<Restricted>();
        GetMessageCatalogue();
    }).join();
}

TEST(Catalogue, OneThatIsNotInitialisedIsReplaced) {
    const auto empty = make<MessageCatalogue>();
    SharedState::ofThread().catalogue = empty;
    const auto catalogue = GetMessageCatalogue();
    EXPECT_NE(catalogue, empty);
    EXPECT_TRUE(catalogue->IsInitialized());
    EXPECT_EQ(catalogue->application(), u"VlGeneralServices");
    SharedState::ofThread().catalogue = nullptr;
}

TEST(Identity, PropertiesOfAClass) {
    const auto object = make<Restricted>();
    EXPECT_EQ(object->ClassDescription(), u"VlGeneralServices.Restricted");
    EXPECT_TRUE(object->ClassPath().view().ends_with(u'\\'));
    EXPECT_FALSE(object->ClassPath().view().ends_with(u"\\\\"));
}

TEST(Identity, FileNamesFromBaseNames) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"Server", u"Server.DLL"},       {u"ServerDLL", u"Server.DLL"},    {u"DLLServerDLL", u"Server.DLL"},
        {u"Serverdll", u"Serverdll.DLL"}, {u"ServerEXE", u"Server.EXE"},    {u"Serverexe", u"Serverexe.EXE"},
        {u"DLLandEXE", u"andEXE.DLL"},    {u"ServerOCX", u"ServerOCX.DLL"},
    };
    for (const auto& [base, file] : cases)
        EXPECT_EQ(ComponentFilename(base), file);
}

} // namespace
} // namespace vlgs::test
