// SPDX-License-Identifier: MIT
// Lists in texts: numbers between delimiters, and items between one character. What a list of numbers is
// written as reads back as the same text.
// Covers: general/Lists.cpp
#include "Input.h"
#include "automation/Variant.h"
#include "general/General.h"

#include <cstdlib>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto general = make<General>();
    fuzz::Input input(data, size);
    const auto chunk = static_cast<std::int32_t>(input.below(256)) - 4;
    String delimiter = input.text();
    String text = input.text();
    Variant numbers;
    if (fuzz::succeeds([&] { numbers = general->CSVToVariant(text, delimiter, 0, 0, chunk); })) {
        // The array has the fields from the last to the first.
        const String written = general->VariantToCSV(numbers);
        const auto reversed = [&](const String& list) {
            return general->VariantToCSV(general->CSVToVariant(list));
        };
        if (reversed(reversed(written)) != written)
            std::abort();
    }
    fuzz::succeeds([&] { general->ParseDelimitedString(text, delimiter); });
    return 0;
}
