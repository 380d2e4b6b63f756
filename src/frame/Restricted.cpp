// SPDX-License-Identifier: MIT
#include "frame/Restricted.h"

namespace vlgs {

const ClassInfo& Restricted::description() {
    return classInfoOf<Restricted>();
}

} // namespace vlgs
