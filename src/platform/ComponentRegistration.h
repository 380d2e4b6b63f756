// Component registration: the programmatic identifiers ("ProgIDs") and class identifiers of components.
//
// The component's own classes always answer. Names are found in any case.
#pragma once

#include "automation/ClassInfo.h"
#include "base/Guid.h"
#include "base/String.h"

#include <optional>
#include <span>

namespace vlgs {

/// The class registered under a programmatic identifier, nothing for an unknown one.
std::optional<GuidValue> registeredClassId(std::u16string_view progId);

/// The programmatic identifier of a class, nothing for a class that is unknown or has none.
std::optional<String> registeredProgId(const GuidValue& classId);

/// The component's own classes. Defined where their list is, in the library's room.
std::span<const ClassInfo* const> ownClasses();

} // namespace vlgs
