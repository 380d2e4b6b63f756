// SPDX-License-Identifier: MIT
// The machine that the process runs on.
#pragma once

#include "base/String.h"

namespace vlgs {

/// The host's name as it calls itself, without its domain as a rule; "" when it has none.
String machineName();

} // namespace vlgs
