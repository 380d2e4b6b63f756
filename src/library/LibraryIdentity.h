// SPDX-License-Identifier: MIT
// What identifies the component's type library. Fixed for ever.
#pragma once

#include "base/Guid.h"

namespace vlgs {

inline constexpr GuidValue libraryId = guid("5E0A8C52-3F1D-4C8B-9A6E-7B2D41C09F16");
inline constexpr std::uint16_t libraryMajor = 9;
inline constexpr std::uint16_t libraryMinor = 0;

} // namespace vlgs
