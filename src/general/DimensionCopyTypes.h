// SPDX-License-Identifier: MIT
// Which dimensions of an array a copy concerns.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

#define VLGS_DIMENSION_COPY_TYPES(value)                                                                     \
    value(eDimCopyType_Empty, 0) value(eDimCopyType_First, 1) value(eDimCopyType_Last, 2)                    \
        value(eDimCopyType_Number, 3)
VLGS_ENUMERATION(enumDimensionCopyTypes, "2c984271-b616-41b5-aa8a-75f810153c2c",
                 "Dimensions of an array that a copy concerns", VLGS_DIMENSION_COPY_TYPES)

} // namespace vlgs
