// SPDX-License-Identifier: MIT
// From HTML to plain text.
#pragma once

#include "automation/Variant.h"

namespace vlgs {

/// The plain text of an HTML text: head, scripts and styles are dropped, block tags become line breaks,
/// cells " | ", list items bullets, images and links "[source]", the common entities their characters; runs
/// of blanks, tabs and carriage returns become one blank outside preformatted text. Unknown tags and
/// entities, numeric ones too, give nothing.
///
/// Two results that callers rely on: behind the start or end of preformatted text and behind a dropped
/// element the piece of output before it comes once more ("ab<pre>x</pre>" gives "abbxx"), and an entity
/// without its ";" takes the character behind it along ("AT&T rocks" gives "ATrocks").
///
/// With `bRemoveScriptOnly` other than False only the script elements are removed. Never raises a failure of
/// the conversion: it then gives what it has made so far.
String g_HTMLtoText(std::u16string_view sSourceHTMLText, const Variant& bRemoveScriptOnly);

} // namespace vlgs
