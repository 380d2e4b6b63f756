#include "dde/DDE.h"

#include "frame/SharedState.h"
#include "library/Classes.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vlgs {
namespace {

TEST(DDE, CreationFailsForEveryCaller) {
    const test::Raised expected{
        10000, "VlGeneralServices.DDE.Class_Initialize",
        "The DDE object is not available at this time because it doesn't seem to be working correctly.\r\n"
        "I'll will re-enable this class as soon as I figure out what's wrong and fix the problem.\r\n"};
    EXPECT_EQ(test::raised([] { make<DDE>(); }), expected);
    EXPECT_EQ(test::raised([] { createObject(u"VlGeneralServices.DDE"); }), expected);
}

TEST(DDE, AFailedCreationCountsAnInstanceOut) {
    const auto& state = SharedState::ofThread();
    const auto before = state.instances;
    test::raised([] { make<DDE>(); });
    EXPECT_EQ(state.instances, before - 1);
    AddInstance();
}

TEST(DDE, DescribesItsMembersAndEventsInOrder) {
    const auto names = [](std::span<const MemberInfo> members) {
        std::string text;
        for (const auto& member : members) {
            text += text.empty() ? "" : " ";
            text += std::to_string(member.id) + ':' + std::string(member.name) + '(';
            for (const auto& parameter : member.parameters) {
                text += parameter.optional ? "[" : "";
                text += parameter.name;
                text += parameter.type.byReference ? "&" : "";
                text += parameter.type.type == VarType::Variant ? "?" : "";
                text += parameter.optional ? "]," : ",";
            }
            text += ')';
        }
        return text;
    };
    const auto& info = DDE::description();
    EXPECT_EQ(info.header().eventInterface, "__DDE");
    EXPECT_EQ(names(info.members().subspan(6)),
              "1:Default() 1:Default(sTopic,) 2:OpenLink([sTopic],) 3:ExecuteCommand(sCommand,) "
              "4:GetData(sItem,) 5:SendData(sItem,sData,) 6:CloseLink() 7:IsLinked() 8:LinkTopic() "
              "9:LinkItem() 10:LinkCommand()");
    EXPECT_EQ(names(info.events()),
              "1:LinkOpened(sTopic&,) 2:LinkClosed(sTopic&,) 3:CommandExecuted(sCommand&,) "
              "4:DataRetrieved(sData?,sItem,) 5:DataSent(sData?,sItem,)");
}

} // namespace
} // namespace vlgs
