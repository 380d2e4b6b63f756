// SPDX-License-Identifier: MIT
// Results on standard output.
#pragma once

#include "Json.h"
#include "automation/Object.h"
#include "automation/Variant.h"

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// A text as it is, an array or a collection an item a line, a record a field a line, an INI document as its
/// text, any other object as the value of its default member; nothing for no value.
void print(std::ostream& out, const Variant& value);

/// What an object is shown as: a document's text, a collection's members, the value of its default member.
Variant shownAs(const Ref<Object>& object);

/// "2025-11-30T09:15:00"
std::string isoText(Date date);

/// An argument by reference after the call.
struct WrittenArgument {
    std::string_view name;
    const Variant* value;
};

/// One line: {"type": "String", "value": "text"}. Arrays carry their lower bounds, objects the name of their
/// class, a call with arguments by reference their values under "arguments".
void printJson(std::ostream& out, const Variant& value, const std::vector<WrittenArgument>& arguments);

} // namespace vlgs::cli
