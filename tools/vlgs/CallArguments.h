// SPDX-License-Identifier: MIT
// What the words behind a member mean to it.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Variant.h"

#include <optional>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// The rows of a member, one for each way of using it.
using MemberRows = std::vector<const MemberInfo*>;
MemberRows rowsOf(const ClassInfo& info, std::string_view name);

/// "NAME=VALUE" whose NAME is a parameter's. Raises Misuse for one that is nearly a parameter's.
std::optional<std::string_view> parameterName(const MemberRows& rows, std::string_view word);

/// The value of a word for a parameter: a member of an enumeration by its name, a type before a colon
/// ("long:5", "null:") where the parameter takes any value, else a text. `parameter` may be null. Raises
/// Misuse for a name that is nearly one of the enumeration's.
Variant typedValue(const ParameterInfo* parameter, std::string_view word);

/// Whether a word has a type before a colon.
bool isTypedValue(std::string_view word);

/// The parameter at a place, or of a name; null when there is none.
const ParameterInfo* parameterAt(const MemberRows& rows, std::size_t place);
const ParameterInfo* parameterNamed(const MemberRows& rows, std::string_view name);

} // namespace vlgs::cli
