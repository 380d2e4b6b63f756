// SPDX-License-Identifier: MIT
// Component registration: the programmatic identifiers ("ProgIDs") and class identifiers of the components
// that the host knows. Names are found in any case.
#pragma once

#include "base/Guid.h"
#include "base/String.h"

#include <optional>

namespace vlgs {

/// The class registered under a programmatic identifier, nothing for an unknown one.
std::optional<GuidValue> registeredClassId(std::u16string_view progId);

/// The programmatic identifier of a registered class, nothing for a class that is unknown or has none.
std::optional<String> registeredProgId(const GuidValue& classId);

} // namespace vlgs
