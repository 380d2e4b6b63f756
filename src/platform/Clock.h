// SPDX-License-Identifier: MIT
// The present moment in the user's time zone.
#pragma once

#include "base/Dates.h"

namespace vlgs {

/// The present local date and time. Read it once per operation and pass it on.
DateParts localNow();

} // namespace vlgs
