// SPDX-License-Identifier: MIT
// When files were written.
#pragma once

#include "base/Dates.h"

#include <optional>
#include <string_view>

namespace vlgs {

/// When a file was last written, in the user's time zone and whole seconds; nothing when there is no such
/// file or the moment lies outside the years 100 to 9999. Never raises.
std::optional<DateParts> lastWritten(std::u16string_view path) noexcept;

} // namespace vlgs
