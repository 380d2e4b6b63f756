// SPDX-License-Identifier: MIT
// Revision numbers: a major number above 0 and a minor number up to 9999, shown as "1.0000".
//
// The minor part counts, it is no fraction: "1.1" is revision 1.0001. The parts stand on either side of one
// "." or of the user's decimal separator and hold digits alone. A part beyond 32 bits raises 6 under the
// source of the routine that met it, and so does a text that goes on past 32767 characters of digits.
#pragma once

#include "automation/Variant.h"

namespace vlgs {

/// Whether a text, cut at its first NUL and trimmed, is a revision number; it then becomes its normalised
/// form. A text that is none is left as given.
bool g_IsValidRevisionNumber(String& sRevNumber);

/// Whether both numbers are valid and the new one is not lower than the old. The new number then becomes its
/// normalised form, else "".
bool g_ValidateNewRevisionNumber(const String& sOldRevNumber, String& sNewRevNumber);

/// -1, 0 or 1 as the first number is lower than, equal to or higher than the second; "" when either is no
/// revision number. Two texts that are equal without regard to case are normalised in place.
Variant g_CompareRevisionNumber(String& sRevNum1, String& sRevNum2);

/// The next revision: "1.0000" after "", "2.0000" after "1.9999"; "" for a text that is no revision number.
/// Raises 6 when the major part would pass 32 bits.
String g_IncrementRevisionNumber(const String& sRevisionNumber);

/// The character whose code the message catalogue keeps under `eMsg_PostFixChar`. Raises what the catalogue
/// raises, 13 for a text that is no number, 5 for a number that is no character code.
String g_PostFixCharacter();

} // namespace vlgs
