// SPDX-License-Identifier: MIT
// `vlgs call`: creates an object, calls one member with texts as arguments, prints the result.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::cli {

/// Raises Misuse for a command line that names no member, and what the call raises.
void call(std::span<const std::string_view> words);

} // namespace vlgs::cli
