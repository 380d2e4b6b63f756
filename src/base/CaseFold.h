// SPDX-License-Identifier: MIT
// The one comparison without regard to case: Unicode simple case folding, character by character, the same
// on every host. "Ä" equals "ä", "ß" does not equal "ss" (that would need full folding).
#pragma once

#include "base/String.h"

#include <cstdint>

namespace vlgs {

/// Simple case folding of one UTF-16 unit; surrogates fold to themselves (pairs are folded by the texts
/// below).
char16_t foldCase(char16_t character) noexcept;

/// Folds every character of a text, surrogate pairs included; the length never changes.
String foldCase(std::u16string_view text);

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;
/// The same for texts of bytes. REQUIRES: every byte is below 128.
bool equalIgnoringCase(std::string_view ascii, std::u16string_view text) noexcept;
bool equalIgnoringCase(std::string_view ascii, std::string_view other) noexcept;

/// Negative, 0 or positive as `a` sorts before, with or after `b` by the UTF-16 units of their folded forms.
int compareIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;

/// Equal for texts that are equal without regard to case. Keyed by a secret of the process, so that nobody
/// can choose texts that collide: never to be stored or sent to another process.
std::uint64_t hashIgnoringCase(std::u16string_view text) noexcept;
/// The same number for a text of bytes. REQUIRES: every byte is below 128.
std::uint64_t hashIgnoringCase(std::string_view ascii) noexcept;

/// Position of the first occurrence of `find` at or after `from`, `npos` when there is none. An empty `find`
/// occurs everywhere, at the end of the text too. Linear in both texts however they repeat themselves.
std::size_t findIgnoringCase(std::u16string_view text, std::u16string_view find, std::size_t from = 0);

/// Every occurrence of `find` replaced without regard to case, from left to right; an empty `find` changes
/// nothing. Linear like findIgnoringCase.
String replaceAllIgnoringCase(std::u16string_view text, std::u16string_view find,
                              std::u16string_view replacement);

/// Lower-case and upper-case forms by Unicode's simple mappings, surrogate pairs included; the length never
/// changes.
String toLower(std::u16string_view text);
String toUpper(std::u16string_view text);

} // namespace vlgs
