// SPDX-License-Identifier: MIT
// Making GUIDs.
#pragma once

#include "base/Guid.h"

namespace vlgs {

/// A new GUID that no other call gives, in whatever process: not after a fork either.
GuidValue createGuid();

} // namespace vlgs
