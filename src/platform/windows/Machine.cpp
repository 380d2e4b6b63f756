// SPDX-License-Identifier: MIT
#include "platform/Machine.h"

#include "platform/windows/Host.h"

namespace vlgs {

String machineName() {
    return windows::textOf([](wchar_t* to, DWORD size) {
        DWORD length = size;
        if (GetComputerNameExW(ComputerNameDnsHostname, to, &length))
            return length;
        return GetLastError() == ERROR_MORE_DATA ? length : DWORD{0};
    });
}

} // namespace vlgs
