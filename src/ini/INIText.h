// SPDX-License-Identifier: MIT
// The text form of INI documents: saved to files, handed out as streams, and read back.
//
// Written are, for each section, an empty line, "[name]" and a line "name=value" for each key; at the end one
// more empty line. Reading accepts more, see LineParser.h.
#pragma once

#include "ini/FileBytes.h"
#include "ini/INIFile.h"

#include <span>
#include <string_view>

namespace vlgs {

/// Writes the document to `sSaveAs`, to which it is then bound, or else to its own path: in the system's code
/// page, every line ended by CR LF. The file has its old content whole or the new one at every moment. A file
/// that was hidden is hidden afterwards and has no other attribute; even when it was read-only it is written.
/// Raises 11512 with the description of what went wrong, also for a character that the code page does not
/// hold and over the file of the document's `lossyOrigin`, and then has touched nothing.
void g_SaveINIFile(INIFile& document, const String& sSaveAs);

/// The text that saving writes. Raises 5 for a character that the code page does not hold.
FileBytes encodedText(const INIFile& document);

/// The document's lines in a form of `Buffer`, each followed by the delimiter; Empty for an unknown form.
/// Raises 11517 with the description of what went wrong.
Variant g_GetStreamFromINI(const INIFile& document, enumStreamTypes eStreamType, const String& sDelimiter);

/// Reads lines into a document, beside what it holds. Raises 11513 as g_RetrieveINIFile; what was read until
/// then stays.
void readLines(INIFile& document, std::span<const std::u16string_view> lines);

/// Reads a file into a document in the same way. The file is text in the system's code page, or in UTF-16 or
/// UTF-8 if its first bytes say so; a line ends at CR LF or at LF alone. Bytes that are no text give the code
/// page's substitutes; the first line with such bytes makes the file the document's `lossyOrigin`.
void readFileInto(INIFile& document, const String& path);

} // namespace vlgs
