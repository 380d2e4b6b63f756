// SPDX-License-Identifier: MIT
// Attribute values of requirements between their native form, which is stored, and the user's locale form.
#pragma once

#include "automation/Variant.h"
#include "conversion/AttributeTypes.h"

namespace vlgs {

/// The value in the form that is asked for.
///
/// | data type | native form | locale form |
/// |---|---|---|
/// | Integer | 32-bit whole number | the same |
/// | Real | text with "." and "-", without group separators | Double |
/// | Date | days since 1 January 1901 | Date |
/// | Time | seconds since midnight, whole minutes | Date |
/// | Boolean | 1 or 0 | the same |
/// | Text, Currency, Percent, URL | text | the same |
/// | VersionNumber | normalised revision number, "" for one that is none | the same |
///
/// An array, Empty, Null, an object or a record gives Empty, as does any other data type, and for Integer,
/// Real, Date and Time any other form. Raises 11551 (not numeric) and 11553 (fraction) for integers, 11554
/// and 11555 for dates and times, 13 and 6 for values that cannot be converted; errors without a source of a
/// converter's own bear the source "VlGeneralServices.modConversion.g_FormatAttrValueData".
Variant g_FormatAttrValueData(const Variant& vData, enumAttrValueDataTypes eDataType,
                              enumAttrValueConvTypes eConvType);

} // namespace vlgs
