// Locks of documents, a small hash of texts, and the way to view properties.
#pragma once

#include "frame/Component.h"
#include "viewprops/ViewProperties.h"

namespace vlgs {

class VLGS_API CorvaTools final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// Whether somebody holds a lock on a document: whether a lock file for its GUID, in any case, is left
    /// in the folder that `sPath` lies in once all stale lock files there have been deleted. Lock files have
    /// the extension "~sd" and, in front of the GUID, two characters for the kind of lock; one is stale when
    /// no living process has it open, one of this library or any other.
    ///
    /// Only plain files are lock files; links and folders of such a name are passed over and stay. False
    /// when there is no such folder. A file that cannot be deleted raises nothing; a folder that cannot be
    /// read does (70).
    bool IsDocLocked(const String& sPath, const String& sGUID) const;

    /// A number from 0 to 16383 that depends on the codes of the characters in the system's 8-bit code page.
    /// Stored by callers, so it never changes: "" is 0, "A" is 65, "AB" is 4091. `sValue` stays as it is.
    /// Never raises, and allocates nothing.
    std::int32_t Hash(String& sValue) const noexcept;

    /// The objects that a view property string describes. Raises 11519 or 11520 as the reader does
    /// (PropertyString.h).
    Ref<ViewProperties> RetrieveViewProperties(const Variant& sProperties) const;
};

constexpr auto CorvaTools::describe() {
    return describeClass<CorvaTools>(
        {.name = "CorvaTools",
         .help = "Document locks, a hash of texts, and view properties",
         .number = eInterfaceID_CorvaTools,
         .classId = guid("9b95101f-541b-4a91-807c-0a54d7b82df8"),
         .interfaceId = guid("89e6ec84-05c0-4a56-80d0-8f0947a834cc"),
         .creatable = true},
        identity(),
        method<&CorvaTools::IsDocLocked>(
            1, "IsDocLocked", "Whether a document of a project is locked",
            parameter("sPath", "a path inside the project's folder, normally the project file"),
            parameter("sGUID", "the document's identifier, in any case"))
            .raises(RunTimeError::PermissionDenied, "the folder cannot be read"),
        method<&CorvaTools::Hash>(2, "Hash", "A hash of a text, 0 to 16383",
                                  parameter("sValue", "the text, which stays as it is"))
            .example("CorvaTools.Hash AB", "4091"),
        method<&CorvaTools::RetrieveViewProperties>(3, "RetrieveViewProperties",
                                                    "The objects of a view property string",
                                                    parameter("sProperties", "a view property string"))
            .raises(eMsg_ErrorReadingViewPropertiesStringX, "the text is no view property string")
            .raises(eMsg_QuotesNotEvenX, "a quote is not closed"));
}

} // namespace vlgs
