// SPDX-License-Identifier: MIT
#include "registry/RegValue.h"

namespace vlgs {

const ClassInfo& RegValue::description() {
    return classInfoOf<RegValue>();
}

} // namespace vlgs
