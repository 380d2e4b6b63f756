// SPDX-License-Identifier: MIT
// Between the registry's data and values of automation.
#pragma once

#include "automation/Variant.h"
#include "platform/Registry.h"

namespace vlgs {

enum class BinaryForm { Bytes, ReversedHexadecimal };

/// The value of stored data: texts, Longs, and for all other types an array of bytes. Binary data (type 3)
/// may be asked for as text instead, two hexadecimal digits for a byte, from the last one to the first.
Variant registryValueOf(const RegistryData& data, BinaryForm form);

/// A value as data of a type. Raises 13 for a value that the type cannot hold.
RegistryData registryDataOf(const Variant& value, std::uint32_t type);

/// How much data is: characters of a text, its final NUL included, or bytes.
std::size_t registryLength(const RegistryData& data) noexcept;
/// Whether data is a text that ends in a NUL.
bool endsInNul(const RegistryData& data) noexcept;

} // namespace vlgs
