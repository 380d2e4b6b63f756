// SPDX-License-Identifier: MIT
// Documents from any text between any delimiters, and out again in every form.
// Covers: ini/Buffer.cpp ini/LineParser.cpp ini/Fresh*
#include "Input.h"
#include "automation/Array.h"
#include "automation/Variant.h"
#include "ini/INIFile.h"

#include <cstdlib>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto keepsMessages = make<INIFile>();
    fuzz::Input input(data, size);
    const auto form = enumStreamTypes(input.below(8));
    const bool clears = input.below(2) != 0;
    const String delimiter = input.text();
    const String text = String::fromUtf8(input.rest());
    const auto document = make<INIFile>();
    fuzz::succeeds([&] { document->PutStream2(text, form, delimiter, clears); });
    fuzz::succeeds([&] {
        document->PutStream2(Array::ofStrings({text, delimiter, text}), form, delimiter, clears);
    });
    fuzz::succeeds(
        [&] { document->PutStream2(document->GetStream2(form, delimiter), form, delimiter, true); });
    return 0;
}
