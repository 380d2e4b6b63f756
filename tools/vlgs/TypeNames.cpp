// SPDX-License-Identifier: MIT
#include "TypeNames.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vlgs::cli {

namespace {

std::string_view plainName(VarType type) {
    static constexpr std::pair<VarType, std::string_view> names[] = {
        {VarType::Empty, "Empty"},     {VarType::Null, "Null"},         {VarType::Byte, "Byte"},
        {VarType::Integer, "Integer"}, {VarType::Long, "Long"},         {VarType::Single, "Single"},
        {VarType::Double, "Double"},   {VarType::Currency, "Currency"}, {VarType::Date, "Date"},
        {VarType::String, "String"},   {VarType::Object, "Object"},     {VarType::Error, "Error"},
        {VarType::Boolean, "Boolean"}, {VarType::Variant, "Variant"},   {VarType::Decimal, "Decimal"},
        {VarType::Record, "Record"},
    };
    const auto found = std::ranges::find(names, type, &std::pair<VarType, std::string_view>::first);
    return found != std::end(names) ? found->second : "Variant";
}

std::string asArray(bool isArray, std::string_view element) {
    return std::string(element) + (isArray ? "()" : "");
}

bool isArray(VarType type) {
    return (code(type) & code(VarType::Array)) != 0;
}

} // namespace

std::string typeName(VarType type) {
    return asArray(isArray(type), plainName(static_cast<VarType>(code(type) & 0xFFF)));
}

std::string typeName(const TypeInfo& type) {
    const auto name = type.classInfo     ? type.classInfo().name()
                      : type.enumeration ? type.enumeration->name
                      : type.record      ? type.record->name
                                         : std::string_view();
    return name.empty() ? typeName(type.type) : asArray(isArray(type.type), name);
}

} // namespace vlgs::cli
