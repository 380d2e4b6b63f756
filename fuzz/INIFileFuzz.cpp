// SPDX-License-Identifier: MIT
// Files of any bytes read as documents, marked as Unicode or not: what is saved of one is read again, and
// soon settles.
// Covers: ini/INIText.cpp ini/INIWriter.cpp ini/LineParser.cpp platform/posix/FileReader.cpp
#include "Input.h"
#include "Scratch.h"
#include "automation/Variant.h"
#include "files/ProjectFiles.h"
#include "ini/INIFile.h"
#include "platform/Volumes.h"

#include <fstream>
#include <iterator>

using namespace vlgs;

namespace {

std::string bytesOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool isMarked(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
           bytes.starts_with("\xEF\xBB\xBF");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto keepsMessages = make<INIFile>(); // else each refusal would read the message texts anew
    static const fuzz::Scratch scratch;
    static const String path = fullPath(String::fromUtf8(scratch.file("document.ini")));
    static const String saved = fullPath(String::fromUtf8(scratch.file("saved.ini")));
    const auto read = [](const String& from) { return g_RetrieveINIFile(from, eINI_INI); };
    scratch.write("document.ini", {reinterpret_cast<const char*>(data), size});
    Ref<INIFile> document;
    if (!fuzz::succeeds([&] { document = read(path); }))
        return 0; // a line without a name
    if (!fuzz::succeeds([&] { document->Save(saved); }))
        return 0; // a character that the code page lacks
    if (isMarked(bytesOf(scratch.file("saved.ini"))))
        return 0; // the text of a name, now taken for a mark
    // A section's name may hold what ends a header, and lines may end in what ends a line: those change once.
    const auto again = read(saved);
    again->Save(saved);
    const auto settled = read(saved);
    if (settled->TotalKeyCount() != again->TotalKeyCount())
        std::abort();
    return 0;
}
