// SPDX-License-Identifier: MIT
#include "library/Classes.h"

#include "automation/CallError.h"
#include "automation/ClassDescription.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "frame/ClassNames.h"
#include "library/ClassList.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vlgs {

namespace {

template <class... T>
std::array<const ClassInfo*, sizeof...(T)> descriptionsOf(TypeList<T...>) {
    return {&T::description()...};
}
template <class... T>
std::array<const EnumInfo*, sizeof...(T)> enumerationsOf(TypeList<T...>) {
    return {&enumInfo(T{})...};
}
template <class... T>
std::array<const RecordInfo*, sizeof...(T)> recordsOf(TypeList<T...>) {
    return {&TypeTraits<T>::recordInfo...};
}

/// A class that can be found without making the descriptions of all others.
struct NamedClass {
    ClassHeader header;
    const ClassInfo& (*description)();
};
template <class... T>
std::span<const NamedClass> namedIn(TypeList<T...>) {
    static constexpr NamedClass rows[] = {{T::describe().header, &T::description}...};
    return rows;
}

/// Whether a name is "LIBRARY.CLASS".
bool isIdentifierOf(const ClassHeader& header, std::u16string_view name) {
    const auto dot = header.library.size();
    return name.size() > dot && name[dot] == u'.' && equalIgnoringCase(header.library, name.substr(0, dot)) &&
           equalIgnoringCase(header.name, name.substr(dot + 1));
}

/// What `Field` of the types of all members points at, each once, then `further`.
template <auto Field, class Further>
auto collect(const Further& further) {
    std::vector<typename Further::value_type> result;
    const auto add = [&](auto found) {
        if (found && std::ranges::find(result, found) == result.end())
            result.push_back(found);
    };
    const auto addMembers = [&](std::span<const MemberInfo> members) {
        for (const auto& member : members) {
            add(member.result.*Field);
            for (const auto& parameter : member.parameters)
                add(parameter.type.*Field);
        }
    };
    for (const auto* info : classes()) {
        addMembers(info->members());
        addMembers(info->events());
    }
    for (const auto* other : further)
        add(other);
    return result;
}

} // namespace

std::span<const ClassInfo* const> classes() {
    static const auto list = descriptionsOf(Classes{});
    return list;
}

std::span<const ClassInfo* const> runTimeClasses() {
    static const auto list = descriptionsOf(RunTimeClasses{});
    return list;
}

std::span<const EnumInfo* const> enumerations() {
    static const auto list = collect<&TypeInfo::enumeration>(enumerationsOf(FurtherEnumerations{}));
    return list;
}

std::span<const RecordInfo* const> records() {
    static const auto list = collect<&TypeInfo::record>(recordsOf(FurtherRecords{}));
    return list;
}

std::span<const ClassInfo* const> ownClasses() {
    return classes();
}

const ClassInfo* findClass(std::u16string_view name) {
    for (const auto& [header, description] : namedIn(Classes{}))
        if (equalIgnoringCase(header.name, name) || isIdentifierOf(header, name))
            return &description();
    for (const auto& [header, description] : namedIn(RunTimeClasses{}))
        if (isIdentifierOf(header, name))
            return &description();
    return nullptr;
}

Ref<Object> createObject(std::u16string_view name) {
    const ClassInfo* info = findClass(name);
    if (!info)
        throw cannotCreate(name);
    return info->create();
}

} // namespace vlgs
