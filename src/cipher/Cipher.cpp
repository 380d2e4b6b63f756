// SPDX-License-Identifier: MIT
#include "cipher/Cipher.h"

#include "cipher/CipherText.h"
#include "cipher/KeyGenerator.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

namespace vlgs {

const ClassInfo& Cipher::description() {
    return classInfoOf<Cipher>();
}

String Cipher::encode(const String& sData, const String& sKey) {
    return encipherText(sData, cipherKey(sKey));
}

String Cipher::decode(const String& sData, const String& sKey) {
    return decipherText(sData, cipherKey(sKey));
}

String Cipher::generateKey() {
    return generateCipherKey();
}

String Cipher::readEncodedFile(const String& sPath, const String& sKey) {
    return decode(CodePage::system().decode(readFile(sPath)), sKey);
}

void Cipher::writeEncodedFile(const String& sPath, const String& sKey, String& sData) {
    ReplaceOptions options;
    options.readable = Readable::ByUserOnly;
    replaceFile(sPath, CodePage::system().encode(encode(sData, sKey)), options);
}

} // namespace vlgs
