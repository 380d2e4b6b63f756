// SPDX-License-Identifier: MIT
// The absolute form of a path, by text alone.
#pragma once

#include "base/String.h"

#include <optional>
#include <string>
#include <string_view>

namespace vlgs::posix {

/// The root of files that lie on no volume of the table.
inline constexpr std::u16string_view unmappedRoot = u"\\\\?\\unix";

/// An absolute library path: its root ("C:" or "\\server\share") and then "\" and a name, any number of
/// times. A final "\" stands after a drive's root alone, and where the path was given with one.
struct FullName {
    std::u16string text;
    /// Number of characters of the root.
    std::size_t root;
};

/// Nothing for an empty or blank path and for one with a NUL character.
std::optional<FullName> fullName(std::u16string_view path);
/// Against a folder that is a full name itself.
std::optional<FullName> fullName(std::u16string_view path, const FullName& folder);

/// The process's current folder; 76 when it was deleted.
FullName currentFolderName();

} // namespace vlgs::posix
