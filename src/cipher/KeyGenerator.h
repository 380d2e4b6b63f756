// SPDX-License-Identifier: MIT
// New cipher keys from the run time's random numbers.
#pragma once

#include "base/String.h"

namespace vlgs {

/// A key of 20 hexadecimal digits. NOT SECRET ENOUGH for more than obfuscation: every byte is the first
/// number of a generator that the system timer seeds anew, so bytes made in one tick of the timer (usually
/// all ten) repeat, and who knows the time of day knows the key.
String generateCipherKey();

/// The byte of a key that is made at a time of day, in seconds.
unsigned char keyByteAt(float secondsSinceMidnight) noexcept;

} // namespace vlgs
