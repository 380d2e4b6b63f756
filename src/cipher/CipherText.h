// SPDX-License-Identifier: MIT
// Text under the cipher: between characters, the bytes of the code page, cipher blocks and hexadecimal
// digits.
#pragma once

#include "base/String.h"
#include "cipher/Skipjack.h"

#include <string_view>

namespace vlgs {

/// The key of a text of 20 hexadecimal digits in either case. Two digits make a byte; a pair that is not
/// hexadecimal is 0, as is one that is missing.
Skipjack::Key cipherKey(std::u16string_view digits) noexcept;

/// 16 hexadecimal digits in upper case for every 8 characters, each taken as its code in the system's code
/// page modulo 256 ("?" when the page does not hold it). Fewer than 8 characters at the end are filled up
/// with zero bytes.
String encipherText(std::u16string_view text, const Skipjack::Key& key);

/// The characters of every whole group of 16 hexadecimal digits, NUL characters where zero bytes had filled
/// the last group; fewer than 16 digits at the end are left out. Pairs that are not hexadecimal count as 0.
String decipherText(std::u16string_view digits, const Skipjack::Key& key);

} // namespace vlgs
