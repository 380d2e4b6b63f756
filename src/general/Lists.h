// SPDX-License-Identifier: MIT
// Delimited lists of texts and numbers.
#pragma once

#include "automation/OrderedCollection.h"
#include "automation/Variant.h"

namespace vlgs {

/// The texts of an array's members joined by ","; members whose text is empty are left out. Of an array with
/// two dimensions the members (0, i) are listed. "0" for nothing to list, for Empty, and for any failure; any
/// other value that is no array gives its own text.
///
/// The list runs from index `lStart` to `lEnd`, or to the array's own bounds where an index does not stand:
/// `lStart` stands only above 0 and below the upper bound, `lEnd` only above `lStart` and below the upper
/// bound. So a range of one member, and one that begins at the upper bound, are not what they seem.
String g_VariantToCSV(const Variant& vKeys, std::int32_t lStart = 0, std::int32_t lEnd = 0);

/// The same for the items of a collection, any object with `Count` and `Item`, positions counted from 1.
String g_CollectionToCSV(const Ref<Object>& colKeys, std::int32_t lStart = 0, std::int32_t lEnd = 0);

/// The whole numbers of a delimited text as an array of 32-bit numbers, from the last to the first. An empty
/// field is 0. The first character of `sDelimiter` separates fields. A character that is no digit ends a
/// field towards its start and makes it 0 (blanks and signs too). Empty for an empty text or delimiter.
///
/// Raises 9 when a field that holds no digit at its end comes `lChunkSize` or more fields behind the room
/// made so far, which grows by that many fields when a digit needs it; 6 for a number beyond 32 bits.
Variant g_CSVToVariant(const String& sKeys, const String& sDelimiter, std::int32_t lChunkSize);

/// The items of a delimited text in upper case and without outer blanks; nothing between two delimiters gives
/// no item, blanks give an empty one. `sData` loses its outer blanks. A delimiter of several characters
/// separates nothing. No object for an empty text or delimiter.
Ref<OrderedCollection> g_ParseDelimitedString(String& sData, const String& sDelimiter);

} // namespace vlgs
