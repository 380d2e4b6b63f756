// SPDX-License-Identifier: MIT
#include "platform/Machine.h"

#include "platform/posix/HostPath.h"

#include <unistd.h>

namespace vlgs {

String machineName() {
    char name[256] = {};
    if (::gethostname(name, sizeof name - 1) != 0)
        return {};
    return posix::libraryName(name);
}

} // namespace vlgs
