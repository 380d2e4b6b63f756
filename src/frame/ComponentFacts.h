// SPDX-License-Identifier: MIT
// What the library knows of itself, and the texts that classes make of message numbers.
#pragma once

#include "automation/Variant.h"
#include "base/String.h"

#include <string_view>

namespace vlgs {

/// Major, minor and revision numbers, joined by ".": "9.1002.23".
String ComponentVersion();
/// The folder of the library's file as the host reports it, with a final backslash.
String ComponentFolder();
/// The file of the message texts, "VlComRes.dll" in that folder.
String messageResourceFile();
/// The library's file name, "VlGeneralServices.DLL".
String ComponentFilename();
/// The file name of a library of that base name: a "DLL" or else "EXE" in any case inside the name makes that
/// the extension and goes from the name where it stands in capitals; any other name gets "DLL".
String ComponentFilename(std::u16string_view baseName);

/// The catalogue's text for a number (a numeric text is one, too), `StripTrailingFullStop` of the text of
/// anything else.
String DescribeText(const Variant& vValue);
/// The text without its last character when that is ".", and the empty text, not the text, when it is not.
String StripTrailingFullStop(std::u16string_view sText);

} // namespace vlgs
