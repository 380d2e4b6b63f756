// SPDX-License-Identifier: MIT
#include "platform/FileTime.h"

#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

std::optional<DateParts> lastWritten(std::u16string_view path) noexcept {
    try {
        WIN32_FILE_ATTRIBUTE_DATA data;
        SYSTEMTIME universal, local;
        if (!GetFileAttributesExW(WideText(path).get(), GetFileExInfoStandard, &data) ||
            !FileTimeToSystemTime(&data.ftLastWriteTime, &universal) ||
            !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local) ||
            !isDay(local.wYear, local.wMonth, local.wDay))
            return std::nullopt;
        return DateParts{local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace vlgs
