// SPDX-License-Identifier: MIT
// The descriptions of the classes for people: `vlgs classes`, `vlgs describe`, the reference pages.
#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

namespace vlgs {
class ClassInfo;
}

namespace vlgs::cli {

struct Member;

/// One class a line: its name, whether programs can create it, what it is.
void listClasses(std::ostream& out);
void listClassesAsJson(std::ostream& out);

/// `describe [--json] CLASS[.MEMBER]`, or `describe --markdown [CLASS]`; without a class the page of all
/// classes, enumerations and records. Raises Misuse for names that are not there.
void describe(std::ostream& out, std::span<const std::string_view> words);

void describeAsJson(std::ostream& out, const ClassInfo& info);
void describeAsJson(std::ostream& out, const Member& member);
void writeMarkdownClass(std::ostream& out, const ClassInfo& info);
void writeMarkdownIndex(std::ostream& out);

} // namespace vlgs::cli
