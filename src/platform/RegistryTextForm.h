// SPDX-License-Identifier: MIT
// What reader and writer of the registry's text form share.
#pragma once

#include <string_view>

namespace vlgs {

inline constexpr std::u16string_view registryHeading = u"Windows Registry Editor Version 5.00";
inline constexpr std::u16string_view oldRegistryHeading = u"REGEDIT4";

inline constexpr std::u16string_view registryAdditionMark = u";+\r\n";
inline constexpr std::u16string_view registryAdditionEnd = u"\r\n\r\n";

/// A line end in a key's name, which the form cannot hold, stands as this character of the private use area
/// and "n" or "r", the character itself as two of it.
inline constexpr char16_t keyNameEscape = u'\xF05C';

} // namespace vlgs
