// SPDX-License-Identifier: MIT
// Replacement that spares what earlier replacements produced.
#pragma once

#include "base/String.h"

#include <string>

namespace vlgs {

/// One replacement and what it counts. The mask is a text of "1" and "0", one for each character of the
/// source; empty at first, it is handed from one replacement to the next.
struct MaskedReplacement {
    std::u16string_view find;
    std::u16string_view replacement;
    /// The mask marks with "1" what is not to be replaced, instead of what may be.
    bool invertMask = false;
    /// The marks of earlier replacements stay beside those of this one (as long as the length did not
    /// change).
    bool keepMask = false;
    bool caseSensitive = false;
    std::int32_t found = 0;
    std::int32_t replaced = 0;
    std::int32_t replacedCharacters = 0;
};

/// The text with every `find` replaced where the mask allows it. `mask` then marks with "1" the characters
/// that this replacement produced, together with the marks it had where `keepMask` keeps them. An empty
/// `find` changes nothing.
String MaskedReplace_(const String& sSource, MaskedReplacement& replacement, std::u16string& sMask);

} // namespace vlgs
