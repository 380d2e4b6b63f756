// SPDX-License-Identifier: MIT
#include "platform/Guid.h"

#include "base/Error.h"
#include "platform/windows/Host.h"

#include <cstring>
#include <objbase.h>

namespace vlgs {

GuidValue createGuid() {
    ::GUID made;
    if (FAILED(CoCreateGuid(&made)))
        raise(RunTimeError::InvalidProcedureCall);
    GuidValue result;
    for (std::size_t i = 0; i < 4; ++i)
        result.bytes[i] = static_cast<std::uint8_t>(made.Data1 >> (24 - 8 * i));
    for (std::size_t i = 0; i < 2; ++i) {
        result.bytes[4 + i] = static_cast<std::uint8_t>(made.Data2 >> (8 - 8 * i));
        result.bytes[6 + i] = static_cast<std::uint8_t>(made.Data3 >> (8 - 8 * i));
    }
    std::memcpy(&result.bytes[8], made.Data4, sizeof made.Data4);
    return result;
}

} // namespace vlgs
