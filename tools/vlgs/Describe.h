// SPDX-License-Identifier: MIT
// The descriptions of the classes for people: `vlgs classes`, `vlgs describe`, the reference pages.
#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

namespace vlgs::cli {

/// One class a line: its name, whether programs can create it, what it is.
void listClasses(std::ostream& out);

/// `describe CLASS[.MEMBER]`, or `describe --markdown [CLASS]`; without a class the page of all classes,
/// enumerations and records. Raises Misuse for names that are not there.
void describe(std::ostream& out, std::span<const std::string_view> words);

} // namespace vlgs::cli
