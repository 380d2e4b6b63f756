// SPDX-License-Identifier: MIT
// The run time's conversions between types: what a late-bound call, an assignment to a typed variable or a
// conversion function of the run time does. Locale-dependent ones follow the user's locale.
//
// All of them raise 13 (type mismatch) for a value that has no such form, 94 for Null, 6 (overflow) for a
// number that does not fit, and 91 for no object; an object stands for the value of its default member. Empty
// is 0, "", False. Whole numbers are rounded half to even. True is -1.
#pragma once

#include "automation/Variant.h"

namespace vlgs {

VLGS_API String toText(const Variant& value);
VLGS_API std::int32_t toLong(const Variant& value);
VLGS_API std::int16_t toInteger(const Variant& value);
VLGS_API std::uint8_t toByte(const Variant& value);
VLGS_API float toSingle(const Variant& value);
VLGS_API double toDouble(const Variant& value);
VLGS_API bool toBoolean(const Variant& value);
VLGS_API Date toDate(const Variant& value);
VLGS_API Currency toCurrency(const Variant& value);
VLGS_API Decimal toDecimal(const Variant& value);
/// An object reference, or none; raises 13 for anything that is no object.
VLGS_API Ref<Object> toObject(const Variant& value);

/// The value as that type, element types of arrays included: `changeType(value, VarType::Long)`.
VLGS_API Variant changeType(const Variant& value, VarType type);

/// The run time's numeric test: numbers, Booleans, Empty, and texts that convert to a number. A Date is not
/// numeric. Never raises.
VLGS_API bool isNumeric(const Variant& value);

/// A number rounded to a whole one, halves to the even neighbour.
VLGS_API double roundHalfToEven(double value) noexcept;

} // namespace vlgs
