// SPDX-License-Identifier: MIT
// The process's environment.
#pragma once

#include "base/String.h"

#include <optional>

namespace vlgs {

/// The value of an environment variable as it is at this moment, nothing when it is not set. The name is
/// compared as the host does.
std::optional<String> environmentVariable(std::u16string_view name);

/// What the environment asks of the library and the library does not know, a line for each variable; "" when
/// there is nothing of the kind. A face tells it to its user.
String unknownSettings();

} // namespace vlgs
