// SPDX-License-Identifier: MIT
// Documents for tests, and how they read.
#pragma once

#include "ini/INIFile.h"
#include "ini/INIText.h"

#include <string>

namespace vlgs::test {

/// A new document that is bound to a path.
inline Ref<INIFile> documentAt(const String& path) {
    auto document = make<INIFile>();
    document->SetFullPath(path);
    return document;
}

/// The document that stands in a file.
inline Ref<INIFile> documentFrom(const String& path) {
    auto document = documentAt(path);
    readFileInto(*document, path);
    return document;
}

/// Its lines, joined by "|".
inline std::string stream(const INIFile& document) {
    return document.GetStream2(eStream_String, u"|").text().toUtf8();
}

} // namespace vlgs::test
