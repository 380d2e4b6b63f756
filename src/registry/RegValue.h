// SPDX-License-Identifier: MIT
// The record of one registry value.
#pragma once

#include "frame/Component.h"
#include "registry/RegistryEnumerations.h"

namespace vlgs {

/// Holds whatever is put into it; `RegUtil::AddOrUpdateValue` tells what can be stored. A new one has the
/// type 0, no name and the value Empty.
class VLGS_API RegValue final : public CountedComponent {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    enumRegDataType DataType() const noexcept { return type_; }
    void SetDataType(enumRegDataType eNewType) noexcept { type_ = eNewType; }
    String ValueName() const { return name_; }
    void SetValueName(const String& sNewName) { name_ = sNewName; }
    Variant Value() const { return value_; }
    void SetValue(const Variant& vNewValue) { value_ = vNewValue; }

  private:
    enumRegDataType type_{};
    String name_;
    Variant value_;
};

constexpr auto RegValue::describe() {
    return describeClass<RegValue>(
        {.name = "RegValue",
         .help = "A value of the registry: its name, type and data",
         .number = eInterfaceID_RegValue,
         .classId = guid("6A34E137-CC62-46B1-9878-B9CB11889A8C"),
         .interfaceId = guid("031A19DF-3D33-4253-8731-7152A8D019B4"),
         .creatable = true},
        identity(), get<&RegValue::DataType>(1, "DataType", "The type of the data"),
        put<&RegValue::SetDataType>(1, "DataType", "The type of the data", parameter("eNewType", "the type")),
        get<&RegValue::ValueName>(2, "ValueName", "The name of the value"),
        put<&RegValue::SetValueName>(
            2, "ValueName", "The name of the value",
            parameter("sNewName", "the name; an empty one is the key's default value")),
        get<&RegValue::Value>(3, "Value", "The data"),
        put<&RegValue::SetValue>(3, "Value", "The data", parameter("vNewValue", "the data")));
}

} // namespace vlgs
