// SPDX-License-Identifier: MIT
// The names of components: programmatic identifiers ("ProgIDs") and class identifiers, of those that the host
// has registered and of the component's own, which answer without being registered.
#pragma once

#include "automation/ClassInfo.h"
#include "base/Guid.h"
#include "base/String.h"

#include <optional>
#include <span>

namespace vlgs {

/// The class of a programmatic identifier in any case, nothing for an unknown one.
std::optional<GuidValue> classIdOf(std::u16string_view progId);

/// The programmatic identifier of a class, nothing for a class that is unknown or has none.
std::optional<String> progIdOf(const GuidValue& classId);

/// The component's own classes. Defined where their list is, in the room above the components.
std::span<const ClassInfo* const> ownClasses();

} // namespace vlgs
