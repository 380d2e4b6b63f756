// SPDX-License-Identifier: MIT
// Measuring arrays. Nothing here raises: what cannot be read counts as 0.
#pragma once

#include "automation/Array.h"

namespace vlgs {

/// The number of dimensions, 0 for a value that is no array. `iLowerDimensionLBound` receives the lower bound
/// of the first one. An array with all 60 dimensions gives 61.
std::int32_t g_GetArrayUpperDimension(const Variant& vVariant, std::int16_t* iLowerDimensionLBound = nullptr);

/// The number of dimensions, 0 for a value that is no array.
std::uint8_t g_GetArrayDimensions(const Variant& vArray);

/// The upper bound of a dimension, plus 1 when its lower bound is 0: its number of elements where it begins
/// at 0 or 1, and nothing of the kind elsewhere ("2 To 5" counts 5). A count of 1 becomes 0 when the element
/// is Empty, Null or an empty text.
std::int32_t g_GetArrayElemCount(const Variant& vArray, std::uint8_t lDimension = 1);

/// The index of the element at a position from 1, for a dimension that begins at 0 or 1; never negative.
std::int32_t g_GetArrayElemIndexFromPosition(const Variant& vArray, std::int32_t lPosition,
                                             std::uint8_t lDimension = 1);

/// True, whatever the value and the type codes: no caller can have a value refused.
bool g_IsSameDataType(const Variant& vValue, const Array& vDataTypes) noexcept;

} // namespace vlgs
