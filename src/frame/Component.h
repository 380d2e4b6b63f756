// SPDX-License-Identifier: MIT
// What every class of the component shares: the six identity properties and the counting of live instances.
//
// What a member of a class raises when stands in its row of `describe()`, from which all faces tell it;
// comments at the functions tell what a row has no room for.
#pragma once

#include "automation/ClassDescription.h"
#include "frame/InterfaceIdentifiers.h"
#include "frame/Messages.h"

namespace vlgs {

class VLGS_API Component : public Object {
  public:
    /// "VlGeneralServices." and the name of the class.
    String ClassName() const;
    /// The library's major, minor and revision numbers, joined by ".": "9.1002.23".
    String ClassVersion() const;
    /// The same as `ClassName`, but for the class `General`, which takes it from the message catalogue.
    virtual String ClassDescription() const;
    /// The number of the class's interface (enumInterfaceIdentifiers).
    std::int32_t ClassID() const;
    /// The library's file name, "VlGeneralServices.DLL".
    String ClassFilename() const;
    /// The folder that holds the library's file, with a backslash at its end.
    String ClassPath() const;
};

/// A class whose live objects keep the thread's message catalogue alive.
class VLGS_API CountedComponent : public Component {
  protected:
    CountedComponent();
    ~CountedComponent() override;
};

/// The rows of the identity properties; `className` is 0 where `ClassName` is the class's default member.
constexpr auto identity(DispatchId className = defaultMember) {
    return std::tuple(
        get<&Component::ClassName>(className, "ClassName", "The name of the class, with that of the library"),
        get<&Component::ClassVersion>(102, "ClassVersion", "The version of the library"),
        get<&Component::ClassDescription>(103, "ClassDescription", "What the class is"),
        get<&Component::ClassID>(104, "ClassID", "The number of the class's interface"),
        get<&Component::ClassFilename>(105, "ClassFilename", "The file name of the library"),
        get<&Component::ClassPath>(106, "ClassPath",
                                   "The folder of the library's file, with a final backslash"));
}
/// For classes with a default member of their own: `identity(ordinaryClassName)`.
inline constexpr DispatchId ordinaryClassName = 101;

} // namespace vlgs
