// SPDX-License-Identifier: MIT
// Any text as a date in any locale, and any pattern to write it in.
// Covers: automation/Date*
#include "Input.h"
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "platform/Locale.h"

#include <map>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto locales = Locale::all();
    static std::map<std::size_t, DateReader> readers;
    fuzz::Input input(data, size);
    const auto place = (input.below(256) * 256 + input.below(256)) % locales.size();
    const auto& reader = readers.try_emplace(place, locales[place]).first->second;
    const auto wanted = WantedPart(input.below(3));
    const String text = input.text();
    reader.readLongDate(text);
    const auto date = reader.read(text, wanted);
    if (!date)
        return 0;
    const String pattern = input.text();
    fuzz::succeeds([&] { formatDate(*date, DatePattern(pattern), locales[place]); });
    return 0;
}
