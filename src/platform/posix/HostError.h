// SPDX-License-Identifier: MIT
// The host's error numbers as run-time errors.
#pragma once

#include <string>

namespace vlgs::posix {

/// Raises the run-time error for a value of errno. `path` is the host path that was used: what is not found
/// is 53 when its folder is there, else 76.
[[noreturn]] void raiseHostError(int error, const std::string& path);

} // namespace vlgs::posix
