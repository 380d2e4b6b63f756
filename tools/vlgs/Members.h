// SPDX-License-Identifier: MIT
// Classes and members by their names, as the shell tells them.
#pragma once

#include "automation/ClassInfo.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// Raise Misuse, with the nearest one there is, for a class, or a member of the class, that is not there.
const ClassInfo& classNamed(std::string_view name);
void requireMember(const ClassInfo& type, std::string_view name);

/// All rows of one member, the way of reading it first.
struct Member {
    std::vector<const MemberInfo*> rows;

    const MemberInfo& main() const { return *rows.front(); }
    bool isMethod() const { return main().kind == InvokeKind::Method; }
    bool reads() const;
    bool writes() const;
    /// "read-only property"
    std::string access() const;
    /// The parameters without the value that a property takes, and the type of the result or of that value.
    std::span<const ParameterInfo> parameters() const;
    TypeInfo type() const;
    /// "RetrieveINIFile(sPath As String) As INIFile"
    std::string signature() const;
};

/// Those that are not hidden.
std::vector<Member> membersOf(std::span<const MemberInfo> infos);

/// Every parameter of a member's rows once, the way of reading it first.
std::vector<const ParameterInfo*> parametersOf(const Member& member);

/// The name of a code of the message catalogue, "" for a number of the run time.
std::string_view messageName(std::int32_t code);

} // namespace vlgs::cli
