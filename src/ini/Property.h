// SPDX-License-Identifier: MIT
// A named node of a document: a key with its text, or a section with the collection of its keys.
#pragma once

#include "frame/Component.h"

namespace vlgs {

class VLGS_API Property final : public CountedComponent {
  public:
    static constexpr auto describe() {
        return describeClass<Property>(
            {.name = "Property",
             .help = "A named value or object",
             .number = eInterfaceID_Property,
             .classId = guid("880BD9C2-A164-4B6F-B7F6-67EF4B6C9D09"),
             .interfaceId = guid("29619DAA-1E5A-42EA-8077-E3F24C3BF7E5")},
            get<&Property::Name>(1, "Name", "The name of the property"),
            get<&Property::Value>(defaultMember, "Value",
                                  "The value of the property, or the object that it holds"),
            identity(ordinaryClassName));
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    Property() = default;
    Property(String name, String text) noexcept : name_(std::move(name)), value_(std::move(text)) {}

    /// The name in the case in which it was given.
    String Name() const { return name_; }
    /// An object as a reference to it, anything else as a copy.
    Variant Value() const { return value_; }

    void SetName(String sName) noexcept { name_ = std::move(sName); }
    /// Stores a plain value; an object is ignored.
    void LetValue(Variant vValue) noexcept;
    /// Stores a reference to an object; a plain value is ignored.
    void SetValue(Variant vValue) noexcept;

    /// The same as `Name` and `Value`, without a copy.
    const String& name() const noexcept { return name_; }
    const Variant& value() const noexcept { return value_; }

  private:
    String name_;
    Variant value_;
};

} // namespace vlgs
