// SPDX-License-Identifier: MIT
#include "general/Arrays.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace vlgs {

namespace {

/// A dimension counted from 1; null when there is none or the value is no array.
const Dimension* findDimension(const Variant& value, std::int32_t number) {
    if (!value.isArray() || number < 1 || number > value.array().rank())
        return nullptr;
    return &value.array().dimensions()[static_cast<std::size_t>(number - 1)];
}

/// Whether the element at the lower bounds of the first `dimensions` dimensions is there and holds nothing.
bool firstElementIsBlank(const Array& array, std::int32_t dimensions) {
    constexpr std::int32_t looked = 5;
    if (dimensions > looked || dimensions != array.rank() || array.size() == 0)
        return false;
    const Variant element = array.at(0);
    return element.isEmpty() || element.isNull() || (element.isString() && element.text().empty());
}

} // namespace

std::int32_t g_GetArrayUpperDimension(const Variant& vVariant, std::int16_t* iLowerDimensionLBound) {
    const Dimension* first = findDimension(vVariant, 1);
    if (!first)
        return 0;
    using Bound = std::numeric_limits<std::int16_t>;
    if (iLowerDimensionLBound && first->lower >= Bound::min() && first->lower <= Bound::max())
        *iLowerDimensionLBound = static_cast<std::int16_t>(first->lower);
    constexpr std::int32_t most = Array::maximumDimensions;
    const auto rank = vVariant.array().rank();
    return rank == most ? most + 1 : rank;
}

std::uint8_t g_GetArrayDimensions(const Variant& vArray) {
    return vArray.isArray() ? static_cast<std::uint8_t>(vArray.array().rank()) : std::uint8_t{0};
}

std::int32_t g_GetArrayElemCount(const Variant& vArray, std::uint8_t lDimension) {
    const Dimension* dimension = findDimension(vArray, lDimension);
    if (!dimension)
        return 0;
    const auto count = std::int64_t{dimension->upper()} + (dimension->lower == 0 ? 1 : 0);
    if (count > std::numeric_limits<std::int32_t>::max())
        return 0;
    return count == 1 && firstElementIsBlank(vArray.array(), lDimension) ? 0
                                                                         : static_cast<std::int32_t>(count);
}

std::int32_t g_GetArrayElemIndexFromPosition(const Variant& vArray, std::int32_t lPosition,
                                             std::uint8_t lDimension) {
    const Dimension* dimension = findDimension(vArray, lDimension);
    if (!dimension || lPosition <= 0)
        return 0;
    return dimension->lower == 0 ? lPosition - 1 : lPosition;
}

bool g_IsSameDataType(const Variant&, const Array&) noexcept {
    return true;
}

} // namespace vlgs
