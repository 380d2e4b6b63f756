// SPDX-License-Identifier: MIT
// One typed value of a view property string.
#pragma once

#include "frame/Component.h"

namespace vlgs {

class VLGS_API ViewProperty final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// No type letter, and Empty as its value.
    ViewProperty() = default;
    ViewProperty(String type, Variant value) : type_(std::move(type)), value_(std::move(value)) {}
    /// Clears itself, as `Clear` does.
    ~ViewProperty() override { Clear(); }

    /// Lets the key side and the type letter go; the value becomes no object where it is an object, and ""
    /// where it is anything else.
    void Clear() noexcept;

    /// The type letter, "b", "i", "s", "y", "p", "c" or "d" (PropertyString.h), or whatever was set.
    const String& DataType() const noexcept { return type_; }
    void SetDataType(const String& DataType) { type_ = DataType; }

    /// The value; an object is held and handed out by reference. Setting it as an object and as a value are
    /// the same.
    const Variant& Value() const noexcept { return value_; }
    void SetValue(const Variant& vValue) { value_ = vValue; }

    /// The key, on the value side of a dictionary's pairs; else no object.
    const Ref<ViewProperty>& KeySideViewProperty() const noexcept { return keySide_; }
    void SetKeySideViewProperty(const Ref<ViewProperty>& KeySideViewProperty) {
        keySide_ = KeySideViewProperty;
    }

  private:
    String type_;
    Variant value_;
    Ref<ViewProperty> keySide_;
};

constexpr auto ViewProperty::describe() {
    constexpr std::string_view type = "The type letter of the value";
    constexpr std::string_view value = "The value, plain or an object";
    constexpr std::string_view keySide = "The key of a dictionary's pair, on its value side";
    return describeClass<ViewProperty>(
        {.name = "ViewProperty",
         .help = "A typed value of a view",
         .number = eInterfaceID_ViewProperty,
         .classId = guid("e7b92669-368e-493e-a3bd-aaf02b356276"),
         .interfaceId = guid("7ca152e6-533c-465c-9144-39d838d665f5"),
         .creatable = true},
        identity(ordinaryClassName),
        method<&ViewProperty::Clear>(1, "Clear", "Lets value, type and key side go"),
        get<&ViewProperty::DataType>(2, "DataType", type),
        put<&ViewProperty::SetDataType>(2, "DataType", type, parameter("DataType", "b, i, s, y, p, c or d")),
        get<&ViewProperty::Value>(defaultMember, "Value", value),
        putRef<&ViewProperty::SetValue>(defaultMember, "Value", value,
                                        parameter("vValue", "a plain value or an object")),
        put<&ViewProperty::SetValue>(defaultMember, "Value", value,
                                     parameter("vValue", "a plain value or an object")),
        get<&ViewProperty::KeySideViewProperty>(3, "KeySideViewProperty", keySide),
        putRef<&ViewProperty::SetKeySideViewProperty>(
            3, "KeySideViewProperty", keySide,
            parameter("KeySideViewProperty", "the property that is the pair's key")));
}

} // namespace vlgs
