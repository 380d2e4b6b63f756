// SPDX-License-Identifier: MIT
// What is well-formed UTF-8.
#pragma once

#include <cstddef>
#include <string_view>

namespace vlgs {

/// The length of the well-formed UTF-8 sequence at the front of a text that is not empty, 0 when there is
/// none.
std::size_t utf8SequenceLength(std::string_view text) noexcept;

/// Whether a text is well-formed UTF-8 from end to end. Linear.
bool isUtf8(std::string_view text) noexcept;

} // namespace vlgs
