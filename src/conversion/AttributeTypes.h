// SPDX-License-Identifier: MIT
// The data types of attributes and of their values, and the forms into which values are converted.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

#define VLGS_ATTRIBUTE_VALUE_DATA_TYPES(value)                                                               \
    value(eAttrValDataType_Empty, 0) value(eAttrValDataType_Text, 1) value(eAttrValDataType_Integer, 2)      \
        value(eAttrValDataType_Real, 3) value(eAttrValDataType_Date, 4) value(eAttrValDataType_Time, 5)      \
            value(eAttrValDataType_Boolean, 6) value(eAttrValDataType_Currency, 7)                           \
                value(eAttrValDataType_Percent, 8) value(eAttrValDataType_URL, 9)                            \
                    value(eAttrValDataType_VersionNumber, 20)
VLGS_ENUMERATION(enumAttrValueDataTypes, "2F1E7B60-9C1E-4D28-8B0D-6C1E5B7A9F11",
                 "Data types of attribute values", VLGS_ATTRIBUTE_VALUE_DATA_TYPES)

#define VLGS_ATTRIBUTE_VALUE_CONVERSION_TYPES(value)                                                         \
    value(eAttrValConvType_Empty, 0) value(eAttrValConvType_Native, 1) value(eAttrValConvType_Locale, 2)
VLGS_ENUMERATION(enumAttrValueConvTypes, "7A0C4E55-3D2B-4B0F-9C77-0B6A4B8E2D12",
                 "The form into which an attribute value is converted", VLGS_ATTRIBUTE_VALUE_CONVERSION_TYPES)

#define VLGS_ATTRIBUTE_DATA_TYPES(value)                                                                     \
    value(eAttrDataTypes_List, 0) value(eAttrDataTypes_Text, 1) value(eAttrDataTypes_Integer, 2)             \
        value(eAttrDataTypes_Real, 3) value(eAttrDataTypes_Date, 4) value(eAttrDataTypes_Time, 5)            \
            value(eAttrDataTypes_MultiSelect, 10)
VLGS_ENUMERATION(enumAttrDataTypes, "C1D9E3A4-58F6-4E0B-A6B3-9D2C7F4E1A13", "Data types of attributes",
                 VLGS_ATTRIBUTE_DATA_TYPES)

} // namespace vlgs
