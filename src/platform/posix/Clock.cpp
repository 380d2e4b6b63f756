// SPDX-License-Identifier: MIT
#include "platform/Clock.h"

#include "base/Error.h"

#include <ctime>

namespace vlgs {

DateParts localNow() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    if (!localtime_r(&now, &parts))
        raise(RunTimeError::InvalidProcedureCall);
    // A leap second has no place in a day of 86400 seconds.
    const int second = parts.tm_sec > 59 ? 59 : parts.tm_sec;
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, second};
}

} // namespace vlgs
