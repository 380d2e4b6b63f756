// SPDX-License-Identifier: MIT
// Numbers as texts by a mask: the run time's formatting function for numbers.
#pragma once

#include "base/String.h"
#include "platform/Locale.h"

namespace vlgs {

/// The number by a mask of "0" (a digit always shown), "#" (a digit shown where there is one), "." (the
/// locale's decimal separator) and "," (between digits: the locale's group separators; behind the last whole
/// digit: divides by 1000). A backslash takes the next character, double quotes the text between them as they
/// stand, and so does every other character. The number is rounded, halves away from zero, from its 15
/// significant digits. `formatNumber(7, u"0000")` is "0007".
String formatNumber(double value, std::u16string_view mask, const Locale& locale = Locale::user());

} // namespace vlgs
