// SPDX-License-Identifier: MIT
// Characters that mean something in a property string, kept apart inside its quoted parts.
//
// Each of , = ; / ( ) - has a token such as "[~CM~]" that stands for it while a string is taken apart. No
// token holds such a character and none begins inside another, so one pass serves where the characters are
// replaced one after the other.
#pragma once

#include "base/String.h"

namespace vlgs {

enum class Quote : char16_t { Single = u'\'', Double = u'"' };

/// The text with every special character inside a quoted part replaced by its token. Quotes stay; a doubled
/// quote inside a quoted part does not end it. Raises 11520 when a part has no end, 11521 for any other
/// failure, both from "VlGeneralServices.modViewProperties.TokenizeQuotedSubStrings_".
String TokenizeQuotedSubStrings_(const String& sData, Quote eQuote);

/// The text with every token replaced by its character, inside quotes and outside.
String DecodeText_(std::u16string_view sData);

} // namespace vlgs
