// SPDX-License-Identifier: MIT
// Globally unique identifiers for callers: new ones, comparison, and the registered names of classes.
#pragma once

#include "frame/Component.h"

namespace vlgs {

/// Failures carry fixed English descriptions; their numbers are 0x80040000 plus 4000 to 4005.
class VLGS_API GUID final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// A new identifier in its text form: 38 characters with braces, digits in upper case.
    String GenerateGUID();

    /// Whether two texts are the same identifier; digits count in either case. `sGUID1` is read first.
    bool IsEqualGUID(const String& sGUID1, const String& sGUID2) const;

    /// The identifier of a registered class.
    String GUIDFromProgID(const String& sProgID) const;

    /// The name under which a class is registered.
    String ProgIDFromGUID(const String& sGUID) const;
};

constexpr auto GUID::describe() {
    return describeClass<GUID>(
        {.name = "GUID",
         .help = "Globally unique identifiers",
         .number = eInterfaceID_GUID,
         .classId = guid("dbe71493-299d-4358-9ca4-bed5e2f33e4c"),
         .interfaceId = guid("5077f256-94f7-4b2f-83ef-c853f6ecd369"),
         .creatable = true},
        identity(), method<&GUID::GenerateGUID>(1, "GenerateGUID", "Returns a new GUID as text"),
        get<&GUID::IsEqualGUID>(
            2, "IsEqualGUID", "Whether two texts are the same GUID",
            parameter("sGUID1", "an identifier, with or without braces as GenerateGUID writes it"),
            parameter("sGUID2", "the other one"))
            .raises(4000, "a text is no identifier"),
        get<&GUID::GUIDFromProgID>(
            3, "GUIDFromProgID", "The GUID of the class registered under a ProgID",
            parameter("sProgID", "a programmatic identifier, as \"VlGeneralServices.Files\""))
            .raises(4001, "no class is registered under the name")
            .example("GUID.GUIDFromProgID VlGeneralServices.Files", "{4A603093-7650-4169-B9E0-C2BFB2946409}"),
        get<&GUID::ProgIDFromGUID>(4, "ProgIDFromGUID", "The ProgID of the class registered under a GUID",
                                   parameter("sGUID", "the identifier of a class"))
            .raises(4000, "the text is no identifier")
            .raises(4003, "the class is unknown or has no name")
            .example("GUID.ProgIDFromGUID {4A603093-7650-4169-B9E0-C2BFB2946409}",
                     "VlGeneralServices.Files"));
}

} // namespace vlgs
