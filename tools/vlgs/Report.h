// SPDX-License-Identifier: MIT
// Failures on standard error.
#pragma once

#include <string>
#include <string_view>

namespace vlgs::cli {

/// A text of several lines in one, as the host spells it.
std::string oneLine(std::u16string_view text);

/// Inside a catch block: tells what went wrong and returns the exit status for it, 1 for an error of the
/// library and 2 for a Misuse. `place` ("FILE:LINE: ") stands before it.
int reportFailure(const std::string& place = {});

} // namespace vlgs::cli
