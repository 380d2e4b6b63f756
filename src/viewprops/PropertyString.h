// SPDX-License-Identifier: MIT
// View property strings, the one line of text in which views keep their settings:
//
//     ColumnWidths=/c(/i120,/i80);ShowGrid=/b1;Title=/s"Open, by owner";Map=/d(/sA-/i1,/sB-/i2);
//
// Entries end in ";" (the last one may do without). An entry is a key, "=/", a type letter in either case and
// a value; what follows a second "=/" is ignored. The values by letter:
//
//     b  a Boolean, "True", "False", "1" or "0", or any other text that converts to one
//     i  a whole number of 32 bits
//     s  text; tokens in it stand for special characters (QuotedText.h)
//     y, p  text as it stands, tokens included
//     c  a collection of items, "(" item "," item … ")"
//     d  a dictionary of pairs, "(" item "-" item "," … ")": key side, value side
//
// with an item one character that is ignored ("/" when written), a letter of the first five and a value; the
// parentheses may be missing. Special characters inside double quotes are ordinary ones. Blanks count.
// Reading and writing are linear in the text.
#pragma once

#include "automation/Dictionary.h"

namespace vlgs {

/// Reads a property string into a new dictionary of ViewProperty objects by key. Letters come out in lower
/// case, quotes stay in the values. A collection is the run time's ordered collection of ViewProperty
/// objects. In a dictionary the value side stands under the value of the key side, which keeps its type, and
/// has the key side as its `KeySideViewProperty`.
///
/// Skipped are entries that are empty, have an empty key, or nothing or another letter behind "=/", and items
/// and pairs with another letter. Raises 11520, see TokenizeQuotedSubStrings_, and for every other failure
/// 11519, source "VlGeneralServices.modViewProperties.g_BuildPropertyObject", with that failure's description
/// as the extra text: an entry without "=/", a pair without "-", a value that does not convert, a key that is
/// there already.
Ref<Dictionary> g_BuildPropertyObject(const String& sPropertyString);

/// Writes a dictionary as a property string, "" for none, in the order of its keys. Values are written as
/// their text, Booleans as 1 and 0, and nothing is put into quotes or tokens. A type letter of another kind
/// is written without a value, and so is "c" or "d" inside a collection or dictionary. Objects of other
/// origin serve too: whatever has the members of a ViewProperty, of a dictionary or an enumerator.
///
/// Raises 11519, source "VlGeneralServices.modViewProperties.g_BuildPropertyString", with the failure's
/// description as the extra text.
String g_BuildPropertyString(const Ref<Dictionary>& oDictionary);

} // namespace vlgs
