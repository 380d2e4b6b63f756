// SPDX-License-Identifier: MIT
// The kinds of locks that users take.
#pragma once

#include "automation/Enumeration.h"

namespace vlgs {

/// The last member is a flag beside one of the others.
#define VLGS_USER_LOCK_TYPES(value)                                                                          \
    value(eUserLock_ReadWrite, 0) value(eUserLock_ReadOnly, 1) value(eUserLock_Exclusive, 2)                 \
        value(eUserLock_FallbackToReadOnly, 4)
VLGS_ENUMERATION(enumUserLockTypes, "c96799fe-6f81-4eb1-b67f-f9c5461ee86b", "Kinds of locks, and a flag",
                 VLGS_USER_LOCK_TYPES)

} // namespace vlgs
