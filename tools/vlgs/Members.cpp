// SPDX-License-Identifier: MIT
#include "Members.h"

#include "HostText.h"
#include "Misuse.h"
#include "TypeNames.h"
#include "Words.h"
#include "frame/Messages.h"
#include "library/Classes.h"

#include <algorithm>
#include <utility>

namespace vlgs::cli {

namespace {

std::string parameterText(const ParameterInfo& parameter) {
    std::string text = parameter.type.byReference ? "ByRef " : "";
    text += std::string(parameter.name) + " As " + typeName(parameter.type);
    if (parameter.defaultValue.kind == DefaultValue::Kind::Number)
        text += " = " + std::to_string(parameter.defaultValue.number);
    else if (parameter.defaultValue.kind == DefaultValue::Kind::Text)
        text += " = \"" + String(parameter.defaultValue.text).toUtf8() + "\"";
    return parameter.optional ? "[" + text + "]" : text;
}

} // namespace

const ClassInfo& classNamed(std::string_view name) {
    if (const auto* info = findClass(fromHost(name)))
        return *info;
    std::vector<std::string_view> names;
    for (const auto* info : classes())
        names.push_back(info->name());
    throw Misuse("there is no class \"" + std::string(name) + "\"" + nearest(name, names) +
                 "\nvlgs classes lists the classes");
}

void requireMember(const ClassInfo& type, std::string_view name) {
    if (type.idOf(fromHost(name)) != unknownMember)
        return;
    std::vector<std::string_view> names;
    for (const auto& member : type.members())
        if (!member.hidden)
            names.push_back(member.name);
    throw Misuse(std::string(type.name()) + " has no member \"" + std::string(name) + "\"" +
                 nearest(name, names) + "\nvlgs describe " + std::string(type.name()) + " lists its members");
}

bool Member::reads() const {
    return std::ranges::any_of(rows, [](auto row) { return row->kind == InvokeKind::PropertyGet; });
}

bool Member::writes() const {
    return std::ranges::any_of(rows, [](auto row) { return row->kind >= InvokeKind::PropertyPut; });
}

std::string Member::access() const {
    if (isMethod())
        return "method";
    return reads() && writes() ? "read/write property"
           : reads()           ? "read-only property"
                               : "write-only property";
}

std::span<const ParameterInfo> Member::parameters() const {
    const auto all = main().parameters;
    return main().kind >= InvokeKind::PropertyPut ? all.first(all.size() - 1) : all;
}

TypeInfo Member::type() const {
    return main().kind >= InvokeKind::PropertyPut ? main().parameters.back().type : main().result;
}

std::string Member::signature() const {
    std::string text(main().name);
    if (isMethod() || !parameters().empty()) {
        const char* separator = "(";
        for (const auto& parameter : parameters())
            text += std::exchange(separator, ", ") + parameterText(parameter);
        text += parameters().empty() ? "()" : ")";
    }
    return type().type == VarType::Empty ? text : text + " As " + typeName(type());
}

std::vector<Member> membersOf(std::span<const MemberInfo> infos) {
    std::vector<Member> members;
    for (const auto& info : infos) {
        if (info.hidden)
            continue;
        const auto known =
            std::ranges::find(members, info.name, [](const Member& m) { return m.main().name; });
        if (known == members.end())
            members.push_back({{&info}});
        else if (info.kind == InvokeKind::PropertyGet)
            known->rows.insert(known->rows.begin(), &info);
        else
            known->rows.push_back(&info);
    }
    return members;
}

std::vector<const ParameterInfo*> parametersOf(const Member& member) {
    std::vector<const ParameterInfo*> parameters;
    for (const auto* row : member.rows)
        for (const auto& parameter : row->parameters)
            if (std::ranges::find(parameters, parameter.name, &ParameterInfo::name) == parameters.end())
                parameters.push_back(&parameter);
    return parameters;
}

std::string_view messageName(std::int32_t code) {
    const auto& messages = enumInfo(enumMessages{});
    const auto found = std::ranges::find(messages.members, code, &EnumMember::value);
    return found == messages.members.end() ? std::string_view() : found->name;
}

} // namespace vlgs::cli
