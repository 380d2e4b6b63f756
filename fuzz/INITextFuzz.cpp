// SPDX-License-Identifier: MIT
// Any text read into a document: it is parsed by the grammar or refused, and what was read is written and
// read back as the same text.
// Covers: ini/LineParser.cpp ini/Fresh* ini/TextArena.cpp
#include "automation/Variant.h"
#include "base/Error.h"
#include "ini/INIFile.h"
#include "platform/CodePage.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const String text = CodePage::system().decode({reinterpret_cast<const char*>(data), size});
    static const auto keepsMessages = make<INIFile>(); // else each refusal would read the message texts anew
    const auto document = make<INIFile>();
    try {
        document->PutStream(text);
    } catch (const Error&) {
        return 0; // a line without a name
    }
    const Variant written = document->GetStream(true);
    const auto again = make<INIFile>();
    try {
        again->PutStream(written);
    } catch (const Error&) {
        std::abort();
    }
    // A section's name may hold what ends a header, and lines may end in what ends a line: those change once.
    const Variant twice = again->GetStream(true);
    const auto settled = make<INIFile>();
    settled->PutStream(twice);
    if (settled->TotalKeyCount() != again->TotalKeyCount())
        std::abort();
    return 0;
}
