// SPDX-License-Identifier: MIT
// The run time's dictionary as compiled callers know it: the platform's own interface, whose table takes keys
// and items by pointer. It serves where the platform has no dictionary to hand out.
#pragma once

#include "com/Face.h"

namespace vlgs::com {

inline constexpr ::GUID dictionaryInterface{
    0x42C642C1, 0x97E1, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};

extern const void* const dictionaryTable[dispatchEntries + 15];

} // namespace vlgs::com
