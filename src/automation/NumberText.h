// SPDX-License-Identifier: MIT
// Numbers as texts in a locale, the user's unless another is given: what the run time's text and number
// conversions give and accept.
#pragma once

#include "automation/Variant.h"
#include "platform/Locale.h"

#include <optional>

namespace vlgs {

/// The text of a number of any type, with the locale's decimal separator and without group separators. A
/// Double has up to 15 significant digits and a Single up to 7, and an exponent ("1E-05", "1.5E+15") when its
/// first digit stands behind the fourth decimal place or before the 15th digit; Currency and Decimal are
/// exact. Raises what `toDouble` raises.
String numberToText(const Variant& number, const Locale& locale = Locale::user());

/// The number that a text stands for. Accepted are blanks at the ends, a sign ("-", "+" or
/// the locale's) in front or behind or parentheses for a negative number, the locale's currency sign in front
/// or behind, group separators before the decimal separator, an exponent behind "E" or "D", and "&H" or "&O"
/// before hexadecimal or octal digits. Raises 13 for any other text, 6 for a number that is too large.
double textToNumber(std::u16string_view text, const Locale& locale = Locale::user());

/// The same with up to 28 decimal places kept; digits that do not fit are rounded, a whole part of more than
/// 96 bits raises 6.
Decimal textToDecimal(std::u16string_view text, const Locale& locale = Locale::user());

/// The 32 bits of a text of the "&H" or "&O" form, nothing for a text of another form or of more bits:
/// "&HFFFFFFFF" is -1 as a whole number.
std::optional<std::int32_t> bitsOfText(std::u16string_view text) noexcept;

/// Whether `textToNumber` accepts the text.
bool isNumericText(std::u16string_view text, const Locale& locale = Locale::user());

/// Whether a number may have group separators.
enum class NumberGroups { Accept, Refuse };

/// The number that a text stands for, nothing for any other text and for a number that is too large.
std::optional<double> parseNumber(std::u16string_view text, NumberGroups groups, const Locale& locale);

} // namespace vlgs
