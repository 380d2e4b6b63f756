// SPDX-License-Identifier: MIT
// The forms in which streams are handed out.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

#define VLGS_STREAM_TYPES(value)                                                                             \
    value(_eStream_ByteArray, 1) value(eStream_StringArray, 2) value(eStream_String, 3)
VLGS_ENUMERATION(enumStreamTypes, "85F02D7C-9A28-444F-AF27-9DB5091A66EB", "Forms of a stream",
                 VLGS_STREAM_TYPES)

} // namespace vlgs
