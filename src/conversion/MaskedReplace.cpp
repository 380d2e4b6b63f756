// SPDX-License-Identifier: MIT
#include "conversion/MaskedReplace.h"

#include "base/CaseFold.h"

#include <algorithm>

namespace vlgs {

namespace {

constexpr char16_t inverted(char16_t mark) {
    return mark == u'0' ? u'1' : u'0';
}

std::u16string workingMask(std::size_t length, std::u16string_view mask, bool invert) {
    std::u16string working(length, u'1');
    for (std::size_t i = 0; i < std::min(length, mask.size()); ++i)
        working[i] = invert ? inverted(mask[i]) : mask[i];
    return working;
}

// The marks that came in, as they were: what the working mask inverted is inverted back.
std::u16string joined(std::u16string produced, std::u16string_view incoming) {
    for (std::size_t i = 0; i < std::min(produced.size(), incoming.size()); ++i)
        if (incoming[i] == u'1')
            produced[i] = u'1';
    return produced;
}

} // namespace

String MaskedReplace_(const String& sSource, MaskedReplacement& replacement, std::u16string& sMask) {
    const auto find = replacement.find;
    if (sSource.empty() || find.empty())
        return sSource;
    const auto mask = workingMask(sSource.length(), sMask, replacement.invertMask);
    const auto text = sSource.view();
    std::u16string out;
    std::u16string produced;
    std::size_t copied = 0;
    const auto next = [&](std::size_t from) {
        return replacement.caseSensitive ? text.find(find, from) : findIgnoringCase(text, find, from);
    };
    for (auto at = next(0); at != text.npos;) {
        ++replacement.found;
        if (mask[at] == u'0') {
            at = next(at + 1);
            continue;
        }
        ++replacement.replaced;
        out.append(text, copied, at - copied).append(replacement.replacement);
        produced.append(at - copied, u'0').append(replacement.replacement.size(), u'1');
        copied = at + find.size();
        at = next(copied);
    }
    out.append(text, copied);
    produced.append(text.size() - copied, u'0');
    replacement.replacedCharacters =
        replacement.replaced * static_cast<std::int32_t>(replacement.replacement.size());
    const bool keep = replacement.keepMask && out.size() == text.size();
    sMask = keep ? joined(std::move(produced), sMask) : std::move(produced);
    return out;
}

} // namespace vlgs
