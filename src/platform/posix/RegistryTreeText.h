// SPDX-License-Identifier: MIT
// A hive's keys and values from and to their text form.
#pragma once

#include "platform/RegistryText.h"
#include "platform/posix/RegistryTree.h"

namespace vlgs::posix {

/// Makes the changes of a text in the tree of a hive. Lines that make no sense, what exceeds the platform's
/// limits and keys of other hives are passed over.
RegistryTextPlaces readRegistryTree(std::u16string_view text, bool isOldForm, RegistryHive hive,
                                    RegistryKeyNode& root);

/// A whole text without additions.
std::u16string registryTextOf(RegistryHive hive, const RegistryKeyNode& root);

} // namespace vlgs::posix
