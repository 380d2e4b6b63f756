// SPDX-License-Identifier: MIT
// Values across the boundary: Variant and VARIANT, Array and SAFEARRAY.
//
// Type codes outside the library's (unsigned and 64-bit numbers, plain interface pointers) come in as the
// nearest type that holds them: Long, Decimal, object.
#pragma once

#include "com/Ole.h"

#include "automation/Array.h"
#include "automation/Variant.h"

namespace vlgs::com {

/// The value of a VARIANT, references followed. Raises 13 for a type that the library cannot hold.
Variant fromVariant(const VARIANT& value);
/// Stores a value in `to`, which holds nothing yet; the receiver clears it.
void toVariant(const Variant& value, VARIANT& to);
/// Gives a by-reference argument its new value: through the reference, converted to the type it refers to,
/// when `to` is one, else by replacing `to`. Raise 13 and 6 as the conversion does.
void assign(VARIANT& to, const Variant& value);

/// The array's content; the null array for a null pointer. Raises 13 for elements the library cannot hold.
Array fromSafeArray(SAFEARRAY* array);
/// A new array that the receiver destroys; null for an array without dimensions.
SAFEARRAY* toSafeArray(const Array& array);
/// Puts the value in the place of an array that a caller's variable holds. An array of fixed size takes over
/// the elements of one with the same bounds and element type, and stays as it is otherwise.
void assign(SAFEARRAY*& to, const Array& value);

} // namespace vlgs::com
