// SPDX-License-Identifier: MIT
#include "CallArguments.h"

#include "Chain.h"
#include "HostText.h"
#include "Misuse.h"
#include "Words.h"
#include "automation/Convert.h"
#include "base/CaseFold.h"
#include "base/NearestName.h"
#include "library/Classes.h"

#include <string>

namespace vlgs::cli {

namespace {

// Shorter words are too easily near to one another.
constexpr std::size_t shortestSlip = 3;

std::string_view nearestParameter(const MemberRows& rows, std::string_view name) {
    const String text = String::fromUtf8(name);
    NearestName near(text);
    for (const auto* row : rows)
        for (const auto& parameter : row->parameters)
            if (equalIgnoringCase(parameter.name.substr(0, 1), name.substr(0, 1)))
                near.offer(parameter.name);
    return near.found();
}

const EnumMember* memberOf(const EnumInfo& enumeration, std::string_view name) {
    for (const auto& member : enumeration.members)
        if (equalIgnoringCase(member.name, name))
            return &member;
    return nullptr;
}

std::optional<Variant> enumerationValue(const ParameterInfo& parameter, std::string_view word) {
    if (const auto* own = parameter.type.enumeration) {
        if (const auto* member = memberOf(*own, word))
            return Variant(member->value);
        std::vector<std::string_view> names;
        for (const auto& member : own->members)
            names.push_back(member.name);
        if (const auto near = nearest(word, names); !near.empty())
            throw Misuse("\"" + std::string(word) + "\" is no member of " + std::string(own->name) + near);
        return std::nullopt;
    }
    if (parameter.type.type == VarType::String)
        return std::nullopt;
    for (const auto* enumeration : enumerations())
        if (const auto* member = memberOf(*enumeration, word); member && member->name == word)
            return Variant(member->value);
    return std::nullopt;
}

struct TypeWord {
    std::string_view name;
    VarType type;
    bool takesText = true;
};

constexpr TypeWord typeWords[] = {
    {"byte", VarType::Byte},
    {"integer", VarType::Integer},
    {"long", VarType::Long},
    {"single", VarType::Single},
    {"double", VarType::Double},
    {"currency", VarType::Currency},
    {"decimal", VarType::Decimal},
    {"date", VarType::Date},
    {"boolean", VarType::Boolean},
    {"text", VarType::String},
    {"empty", VarType::Empty, false},
    {"null", VarType::Null, false},
    {"missing", VarType::Error, false},
    {"nothing", VarType::Object, false},
};

const TypeWord* typeWordOf(std::string_view word) {
    const auto colon = word.find(':');
    if (colon == word.npos)
        return nullptr;
    for (const auto& each : typeWords)
        if (each.name == word.substr(0, colon) && (each.takesText || colon + 1 == word.size()))
            return &each;
    return nullptr;
}

std::optional<Variant> valueOfType(std::string_view word) {
    const auto* type = typeWordOf(word);
    if (!type)
        return std::nullopt;
    switch (type->type) {
    case VarType::Empty:
        return Variant();
    case VarType::Null:
        return Variant(null);
    case VarType::Error:
        return Variant(missing);
    case VarType::Object:
        return Variant(nullptr);
    default:
        return changeType(Variant(valueOf(word.substr(type->name.size() + 1))), type->type);
    }
}

} // namespace

MemberRows rowsOf(const ClassInfo& info, std::string_view name) {
    MemberRows rows;
    for (const auto& row : info.members())
        if (equalIgnoringCase(row.name, name))
            rows.push_back(&row);
    return rows;
}

const ParameterInfo* parameterAt(const MemberRows& rows, std::size_t place) {
    for (const auto* row : rows)
        if (place < row->parameters.size())
            return &row->parameters[place];
    return nullptr;
}

const ParameterInfo* parameterNamed(const MemberRows& rows, std::string_view name) {
    for (const auto* row : rows)
        for (const auto& parameter : row->parameters)
            if (equalIgnoringCase(parameter.name, name))
                return &parameter;
    return nullptr;
}

std::optional<std::string_view> parameterName(const MemberRows& rows, std::string_view word) {
    const auto equals = word.find('=');
    const auto name = word.substr(0, equals);
    if (equals == word.npos || !isIdentifier(name))
        return std::nullopt;
    if (parameterNamed(rows, name))
        return name;
    if (name.size() >= shortestSlip)
        if (const auto near = nearestParameter(rows, name); !near.empty())
            throw Misuse(std::string(rows.front()->name) + " has no parameter " + std::string(name) +
                         "; did you mean " + std::string(near) +
                         "? (a text that looks like NAME=VALUE stands behind --)");
    return std::nullopt;
}

bool isTypedValue(std::string_view word) {
    return typeWordOf(word) != nullptr;
}

Variant typedValue(const ParameterInfo* parameter, std::string_view word) {
    if (parameter && isIdentifier(word))
        if (auto value = enumerationValue(*parameter, word))
            return *value;
    if (!parameter || parameter->type.type == VarType::Variant)
        if (auto value = valueOfType(word))
            return *value;
    return Variant(valueOf(word));
}

} // namespace vlgs::cli
