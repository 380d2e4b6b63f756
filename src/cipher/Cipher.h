// SPDX-License-Identifier: MIT
// Texts enciphered with a caller's key, in memory and in files.
#pragma once

#include "frame/Component.h"

namespace vlgs {

/// Skipjack, each block of 8 characters by itself. Keys are texts of 20 hexadecimal digits and are not
/// checked: pairs that are not hexadecimal, and missing ones, count as 0.
class VLGS_API Cipher final : public Component {
  public:
    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// 16 hexadecimal digits for every 8 characters of the text, each character taken as its code in the
    /// system's code page ("?" for one that the page does not hold). A last piece of fewer than 8 characters
    /// is filled up with zero bytes.
    String encode(const String& sData, const String& sKey);

    /// The text that `encode` was given, with up to 7 NUL characters behind it where its length is no
    /// multiple of 8. Digits beyond the last whole group of 16 are ignored.
    String decode(const String& sData, const String& sKey);

    /// A new key. It is predictable: bytes made in one tick of the system timer, usually all ten, are the
    /// same, and the time of day tells them. Use a key of better origin where secrets matter.
    String generateKey();

    /// The deciphered content of a file.
    String readEncodedFile(const String& sPath, const String& sKey);

    /// Makes the enciphered text the content of a file, whole or not at all.
    void writeEncodedFile(const String& sPath, const String& sKey, String& sData);
};

constexpr auto Cipher::describe() {
    return describeClass<Cipher>(
        {.name = "Cipher",
         .help = "Texts enciphered with a key",
         .number = _eInterfaceID_Buffer, // it has no number of its own
         .classId = guid("444e9efa-aade-4327-af35-124ab713c308"),
         .interfaceId = guid("f945957d-da33-49f3-a759-6c663f3ea997"),
         .creatable = true},
        identity(),
        method<&Cipher::encode>(1, "encode", "Enciphers a text; returns hexadecimal digits",
                                parameter("sData", "the text"), parameter("sKey", "20 hexadecimal digits")),
        method<&Cipher::decode>(2, "decode", "Deciphers hexadecimal digits; returns the text",
                                parameter("sData", "hexadecimal digits, 16 for every 8 characters"),
                                parameter("sKey", "20 hexadecimal digits")),
        method<&Cipher::generateKey>(
            3, "generateKey", "Returns a new key of 20 hexadecimal digits, made from the system timer"),
        method<&Cipher::readEncodedFile>(4, "readEncodedFile", "Returns the deciphered content of a file",
                                         parameter("sPath", "the file's path"),
                                         parameter("sKey", "20 hexadecimal digits"))
            .raises(RunTimeError::FileNotFound, "there is no such file")
            .raises(RunTimeError::PathNotFound, "there is no such folder")
            .raises(RunTimeError::PermissionDenied, "the file may not be read"),
        method<&Cipher::writeEncodedFile>(5, "writeEncodedFile", "Writes a text to a file, enciphered",
                                          parameter("sPath", "the file's path"),
                                          parameter("sKey", "20 hexadecimal digits"),
                                          parameter("sData", "the text"))
            .raises(RunTimeError::PathNotFound, "there is no such folder")
            .raises(RunTimeError::PermissionDenied, "the file may not be written"));
}

} // namespace vlgs
