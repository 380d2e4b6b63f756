// SPDX-License-Identifier: MIT
#include "platform/FileTime.h"

#include "platform/posix/HostPath.h"

#include <algorithm>
#include <ctime>
#include <sys/stat.h>

namespace vlgs {

std::optional<DateParts> lastWritten(std::u16string_view path) noexcept {
    try {
        struct stat status;
        std::tm parts{};
        if (::stat(posix::hostPath(path).c_str(), &status) != 0 || !localtime_r(&status.st_mtime, &parts) ||
            !isDay(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday))
            return std::nullopt;
        // A leap second has no place in a day of 86400 seconds.
        return DateParts{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                         parts.tm_hour,        parts.tm_min,     std::min(parts.tm_sec, 59)};
    } catch (...) {
        return std::nullopt;
    }
}

} // namespace vlgs
