// Numbers as texts in the user's locale.
#pragma once

#include "automation/Variant.h"

namespace vlgs {

/// The text of a number of any type: up to 15 significant digits (7 for a Single) without group separators,
/// with an exponent outside the run time's ordinary range.
String numberToText(const Variant& number);

/// The number that a text stands for. Raises 13 for a text that is none, 6 for one that is too large.
double textToNumber(std::u16string_view text);
Decimal textToDecimal(std::u16string_view text);

/// Whether `textToNumber` would accept the text.
bool isNumericText(std::u16string_view text) noexcept;

} // namespace vlgs
