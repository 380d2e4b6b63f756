// SPDX-License-Identifier: MIT
#include "automation/CallError.h"

#include "base/NearestName.h"
#include "base/Text.h"

namespace vlgs {

namespace {

String describe(RunTimeError number, std::u16string_view about) {
    return concat(Error::descriptionOf(static_cast<std::int32_t>(number)), u": ", about);
}

/// "INIFile.Section"
String nameOf(const ClassHeader& type, std::string_view member) {
    return concat(String::fromUtf8(type.name), u".", String::fromUtf8(member));
}

/// "sName of INIFile.Section"
String nameOf(const ClassHeader& type, const MemberInfo& member, std::size_t parameter) {
    return concat(String::fromUtf8(member.parameters[parameter].name), u" of ", nameOf(type, member.name));
}

String suggestion(const NearestName& nearest) {
    return nearest.found().empty() ? String()
                                   : concat(u"; did you mean ", String::fromUtf8(nearest.found()), u"?");
}

/// An error that says no more than its number gets told what it is about.
Error about(const Error& error, const String& subject) {
    if (!error.source().empty() || error.description() != Error::descriptionOf(error.number()))
        return error;
    return {error.number(), String(), concat(error.description(), u": ", subject)};
}

} // namespace

CallError::CallError(RunTimeError number, std::u16string_view about)
    : Error(static_cast<std::int32_t>(number), String(), describe(number, about)) {}

CallError::CallError(const Error& error, const Arguments& call, std::optional<std::size_t> argument)
    : Error(error), call_(&call), argument_(argument) {}

CallError CallError::in(const Arguments& call, std::optional<std::size_t> argument) && {
    return {*this, call, argument};
}

MisfitError::MisfitError(const Error& error, const ClassHeader& type, const MemberInfo& member,
                         std::size_t parameter)
    : Error(about(error, nameOf(type, member, parameter))), parameter_(parameter) {}

void raiseMisfit(const ClassHeader& type, const MemberInfo& member, std::size_t parameter) {
    try {
        throw;
    } catch (const Error& error) {
        throw MisfitError(error, type, member, parameter);
    }
}

CallError cannotCreate(std::u16string_view name) {
    return {RunTimeError::CannotCreateObject, name};
}

CallError noSuchMember(const ClassInfo& type, std::u16string_view name) {
    NearestName nearest(name);
    for (const auto& member : type.members())
        if (!member.hidden)
            nearest.offer(member.name);
    return {RunTimeError::NoSuchMember,
            concat(String::fromUtf8(type.name()), u".", name, suggestion(nearest))};
}

CallError noSuchMember(const ClassInfo& type, DispatchId id, InvokeKind kind) {
    for (const auto& member : type.members())
        if (member.id == id)
            return {RunTimeError::NoSuchMember,
                    concat(nameOf(type.header(), member.name),
                           !writes(kind)                            ? u" cannot be called that way"
                           : member.kind == InvokeKind::PropertyGet ? u" is read-only"
                           : member.kind == InvokeKind::Method      ? u" is a method"
                                                                    : u" is written in another way")};
    return {RunTimeError::NoSuchMember,
            concat(String::fromUtf8(type.name()), u" has no member ", decimal(id))};
}

CallError noSuchParameter(const ClassHeader& type, const MemberInfo& member, std::u16string_view name) {
    if (name.empty())
        return {RunTimeError::NamedArgumentNotFound, nameOf(type, member.name)};
    NearestName nearest(name);
    for (const auto& parameter : member.parameters)
        nearest.offer(parameter.name);
    return {RunTimeError::NamedArgumentNotFound,
            concat(name, u" of ", nameOf(type, member.name), suggestion(nearest))};
}

CallError argumentLeftOut(const ClassHeader& type, const MemberInfo& member, std::size_t parameter) {
    return {RunTimeError::ArgumentNotOptional, nameOf(type, member, parameter)};
}

CallError tooManyArguments(const ClassHeader& type, const MemberInfo& member, std::size_t given) {
    return {RunTimeError::WrongNumberOfArguments,
            concat(nameOf(type, member.name), u" takes ",
                   decimal(static_cast<std::int64_t>(member.parameters.size())), u", not ",
                   decimal(static_cast<std::int64_t>(given)))};
}

CallError argumentGivenTwice(const ClassHeader& type, const MemberInfo& member, std::size_t parameter) {
    return {RunTimeError::WrongNumberOfArguments,
            concat(nameOf(type, member, parameter), u" is given twice")};
}

CallError endlessDefaultMembers(const ClassHeader& type, const MemberInfo& member) {
    return {RunTimeError::WrongNumberOfArguments,
            concat(u"the default members behind ", nameOf(type, member.name), u" lead to one another")};
}

} // namespace vlgs
