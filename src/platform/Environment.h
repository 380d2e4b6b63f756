// The process's environment.
#pragma once

#include "base/String.h"

#include <optional>

namespace vlgs {

/// The value of an environment variable as it is at this moment, nothing when it is not set. The name is
/// compared as the host does.
std::optional<String> environmentVariable(std::u16string_view name);

} // namespace vlgs
