// SPDX-License-Identifier: MIT
// Looking at memory that may not be there.
#pragma once

#include <cstddef>
#include <span>

namespace vlgs {

/// Copies the bytes at an address; false, with nothing told about `to`, when not all of them are readable. No
/// address disturbs the process.
bool readMemory(const void* address, std::span<std::byte> to) noexcept;

} // namespace vlgs
