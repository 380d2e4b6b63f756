// SPDX-License-Identifier: MIT
// Any text as a number in any locale, and as the value of an attribute of any type; what a number is written
// as reads back as it.
// Covers: automation/Number* conversion/AttributeValues.cpp
#include "Input.h"
#include "automation/NumberFormat.h"
#include "automation/NumberText.h"
#include "automation/Variant.h"
#include "conversion/AttributeValues.h"
#include "conversion/Conversion.h"
#include "platform/Locale.h"

#include <cstdlib>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto keepsMessages =
        make<Conversion>(); // else each refusal would read the message texts anew
    static const auto locales = Locale::all();
    fuzz::Input input(data, size);
    const auto& locale = locales[input.below(256) * input.below(256) % locales.size()];
    const auto type = enumAttrValueDataTypes(input.below(24));
    const auto form = enumAttrValueConvTypes(input.below(8));
    const String text = input.text();
    const String mask = input.text();
    double number = 0;
    isNumericText(text, locale);
    // Fifteen digits are written, so a text of a number stands for itself from then on.
    if (fuzz::succeeds([&] { number = textToNumber(text, locale); })) {
        const auto written = numberToText(Variant(number), locale);
        if (fuzz::succeeds([&] { number = textToNumber(written, locale); }) &&
            numberToText(Variant(number), locale) != written)
            std::abort();
    }
    fuzz::succeeds([&] { textToDecimal(text, locale); });
    fuzz::succeeds([&] { formatNumber(number, mask, locale); });
    fuzz::succeeds([&] { g_FormatAttrValueData(Variant(text), type, form); });
    return 0;
}
