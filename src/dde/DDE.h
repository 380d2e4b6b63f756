// SPDX-License-Identifier: MIT
// The client of conversations with other running programs (Dynamic Data Exchange), which is disabled:
// creating one always fails. The class is described whole, members and events, so that its interface stays
// what callers were compiled against.
#pragma once

#include "frame/Component.h"

#include <optional>

namespace vlgs {

/// The signatures of the events, in the order of their numbers.
struct DDEEvents {
    void LinkOpened(String& sTopic);
    void LinkClosed(String& sTopic);
    void CommandExecuted(String& sCommand);
    void DataRetrieved(const Variant& sData, const String& sItem);
    void DataSent(const Variant& sData, const String& sItem);
};

/// What an object would do without a conversation to carry: a link is never open. Every member that needs one
/// raises 1001, source "CheckLink".
class VLGS_API DDE final : public Component {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// Raises 10000, source "VlGeneralServices.DDE.Class_Initialize". The attempt counts an instance out that
    /// was never counted in (SharedState.h), since an object ends also when its initialisation fails.
    DDE();

    /// The target of `OpenLink`, application and topic separated by "|"; "Corvane|System" until it is set.
    String Default() const;
    void SetDefault(const String& sTopic) { default_ = sTopic; }

    /// Raises 10000, source "VlGeneralServices.DDE.OpenLink".
    void OpenLink(const String& sTopic);
    void ExecuteCommand(const String& sCommand);
    String GetData(const String& sItem);
    Variant SendData(const String& sItem, const String& sData);
    void CloseLink();

    /// False.
    bool IsLinked() const noexcept { return false; }

    /// The last topic, item and command used: "", since none ever was.
    String LinkTopic() const noexcept { return {}; }
    String LinkItem() const noexcept { return {}; }
    String LinkCommand() const noexcept { return {}; }

  private:
    struct CountsOut {
        ~CountsOut();
    };

    CountsOut countsOut_;
    std::optional<String> default_;
};

constexpr auto DDE::describe() {
    return describeClass<DDE>(
               {.name = "DDE",
                .help = "Links to other running programs (disabled)",
                .number = eInterfaceID_DDE,
                .classId = guid("55be5d99-d75a-494b-8580-834c0383c9ef"),
                .interfaceId = guid("a27cf082-57d0-4def-95da-0dbf26ace9dc"),
                .creatable = true,
                .eventInterface = "__DDE",
                .eventInterfaceId = guid("ba901df6-0aaf-40e7-80cc-e41a7112cf52")},
               identity(),
               get<&DDE::Default>(1, "Default",
                                  "The default link target, application and topic around \"|\""),
               put<&DDE::SetDefault>(1, "Default",
                                     "The default link target, application and topic around \"|\"",
                                     parameter("sTopic", "application and topic around \"|\"")),
               method<&DDE::OpenLink>(2, "OpenLink", "Opens a link",
                                      optional("sTopic", "application and topic around \"|\""))
                   .raises(10000, "always: links are disabled"),
               method<&DDE::ExecuteCommand>(3, "ExecuteCommand", "Executes a command over the link",
                                            parameter("sCommand", "the command"))
                   .raises(1001, "no link is open"),
               method<&DDE::GetData>(4, "GetData", "Returns the data of an item",
                                     parameter("sItem", "the name of the item"))
                   .raises(1001, "no link is open"),
               method<&DDE::SendData>(5, "SendData", "Sends data for an item",
                                      parameter("sItem", "the name of the item"),
                                      parameter("sData", "the data"))
                   .raises(1001, "no link is open"),
               method<&DDE::CloseLink>(6, "CloseLink", "Closes the link").raises(1001, "no link is open"),
               get<&DDE::IsLinked>(7, "IsLinked", "Whether a link is open"),
               get<&DDE::LinkTopic>(8, "LinkTopic", "The topic used last"),
               get<&DDE::LinkItem>(9, "LinkItem", "The item used last"),
               get<&DDE::LinkCommand>(10, "LinkCommand", "The command used last"))
        .withEvents(method<&DDEEvents::LinkOpened>(1, "LinkOpened", "A link was opened",
                                                   parameter("sTopic", "application and topic around \"|\"")),
                    method<&DDEEvents::LinkClosed>(2, "LinkClosed", "The link was closed",
                                                   parameter("sTopic", "application and topic around \"|\"")),
                    method<&DDEEvents::CommandExecuted>(3, "CommandExecuted", "A command was executed",
                                                        parameter("sCommand", "the command")),
                    method<&DDEEvents::DataRetrieved>(4, "DataRetrieved", "Data was retrieved",
                                                      parameter("sData", "the data"),
                                                      parameter("sItem", "the name of the item")),
                    method<&DDEEvents::DataSent>(5, "DataSent", "Data was sent",
                                                 parameter("sData", "the data"),
                                                 parameter("sItem", "the name of the item")));
}

} // namespace vlgs
