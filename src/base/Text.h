// SPDX-License-Identifier: MIT
// Routines over text that every class shares: trimming, splitting, replacing. All are linear in the text.
// Comparison without regard to case stands in CaseFold.h.
#pragma once

#include "base/String.h"

#include <vector>

namespace vlgs {

/// Without leading and trailing blanks (character 32 alone; tabs and other white space stay).
std::u16string_view trim(std::u16string_view text) noexcept;
std::u16string_view trimLeft(std::u16string_view text) noexcept;
std::u16string_view trimRight(std::u16string_view text) noexcept;

/// The text before its first NUL character.
std::u16string_view cutAtNul(std::u16string_view text) noexcept;

/// Every exact occurrence of `find` replaced, found from left to right; an empty `find` changes nothing.
String replaceAll(std::u16string_view text, std::u16string_view find, std::u16string_view replacement);

/// The pieces between the exact occurrences of `delimiter`; an empty delimiter gives one piece, the whole
/// text. The pieces point into `text`.
std::vector<std::u16string_view> split(std::u16string_view text, std::u16string_view delimiter);

/// The pieces of `text` between the occurrences of `delimiter`, found from left to right without regard to
/// case; an empty delimiter gives one piece, the whole text. The pieces point into `text`. Linear in both
/// texts.
std::vector<std::u16string_view> splitIgnoringCase(std::u16string_view text, std::u16string_view delimiter);

/// Decimal text of a whole number, independent of the locale.
String decimal(std::int64_t value);

} // namespace vlgs
