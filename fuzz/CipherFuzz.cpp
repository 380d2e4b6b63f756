// SPDX-License-Identifier: MIT
// Cipher text and keys of any kind: whole blocks come out, and go back in to the same digits where the bytes
// stay what they are.
// Covers: cipher/Cipher.cpp cipher/CipherText.cpp cipher/Skipjack.cpp
#include "cipher/CipherText.h"

#include <algorithm>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vlgs;
    const std::u16string text(data, data + size);
    const auto keyLength = std::min<std::size_t>(size, 20);
    const auto key = cipherKey(std::u16string_view(text).substr(0, keyLength));
    const auto rest = std::u16string_view(text).substr(keyLength);
    if (decipherText(rest, key).length() != rest.size() / 16 * 8)
        std::abort();

    std::u16string ascii(rest);
    for (auto& character : ascii)
        character &= 0x7F;
    std::u16string filled = ascii;
    filled.resize((ascii.size() + 7) / 8 * 8);
    if (decipherText(encipherText(ascii, key), key) != std::u16string_view(filled))
        std::abort();
    return 0;
}
