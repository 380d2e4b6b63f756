// SPDX-License-Identifier: MIT
#include "platform/Clock.h"

#include "platform/windows/Host.h"

namespace vlgs {

DateParts localNow() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

} // namespace vlgs
