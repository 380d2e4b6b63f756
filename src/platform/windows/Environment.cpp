// SPDX-License-Identifier: MIT
#include "platform/Environment.h"

#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

std::optional<String> environmentVariable(std::u16string_view name) {
    const WideText text(name);
    SetLastError(ERROR_SUCCESS);
    String value =
        textOf([&](wchar_t* to, DWORD size) { return GetEnvironmentVariableW(text.get(), to, size); });
    if (value.empty() && GetLastError() == ERROR_ENVVAR_NOT_FOUND)
        return std::nullopt;
    return value;
}

// The operating system's own settings answer for everything.
String unknownSettings() {
    return {};
}

} // namespace vlgs
