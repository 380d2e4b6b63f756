// SPDX-License-Identifier: MIT
// Property strings: whatever is read is written, and what is written of text without quotes and tokens reads
// as the same.
// Covers: viewprops/PropertyReader.cpp viewprops/PropertyWriter.cpp viewprops/QuotedText.cpp
#include "base/Error.h"
#include "viewprops/PropertyString.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vlgs;
    // Half of the inputs begin like an entry, since random ones hardly ever do.
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    static constexpr std::u16string_view fronts[] = {u"", u"", u"", u"A=/s", u"A=/c(/", u"A=/d(/s"};
    const String text = concat(fronts[size % std::size(fronts)], String::fromUtf8(bytes));
    try {
        const String written = g_BuildPropertyString(g_BuildPropertyObject(text));
        const bool plain = text.view().find_first_of(u"\"~") == std::u16string_view::npos;
        if (plain && g_BuildPropertyString(g_BuildPropertyObject(written)) != written)
            std::abort();
    } catch (const Error& error) {
        if (error.number() != objectErrorBase + 11519 && error.number() != objectErrorBase + 11520)
            std::abort();
    }
    return 0;
}
