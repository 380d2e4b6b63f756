// SPDX-License-Identifier: MIT
#include "conversion/RevisionNumbers.h"

#include "automation/Convert.h"
#include "automation/NumberText.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "conversion/LocaleSettings.h"
#include "frame/Errors.h"
#include "platform/CodePage.h"
#include "platform/Locale.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace vlgs {

namespace {

constexpr std::int32_t largestMinor = 9999;
constexpr std::size_t lastPosition = std::numeric_limits<std::int16_t>::max();

struct Revision {
    std::int32_t major = 0;
    std::int32_t minor = 0;
};

String textOf(const Revision& revision) {
    const String minor = decimal(revision.minor);
    return concat(decimal(revision.major), u".", std::u16string_view(u"0000").substr(minor.length()), minor);
}

// The number of a part of digits, nothing for one beyond any Double, which is no number at all.
std::optional<std::int32_t> partOf(std::u16string_view digits) {
    if (digits.size() > 300 && !isNumericText(digits))
        return std::nullopt;
    std::int64_t value = 0;
    for (const char16_t digit : digits) {
        value = value * 10 + (digit - u'0');
        if (value > std::numeric_limits<std::int32_t>::max())
            raise(RunTimeError::Overflow);
    }
    return static_cast<std::int32_t>(value);
}

std::optional<Revision> split(std::u16string_view text) {
    return underInnermostSource(
        u"VlGeneralServices.modConversion.SplitRevNumber_", [&]() -> std::optional<Revision> {
            text = trim(cutAtNul(text));
            // One character at most: a longer separator is no character of a revision number.
            const auto decimal = Locale::user().text(LocaleItem::DecimalSeparator);
            std::size_t separator = text.npos;
            for (std::size_t i = 0; i < text.size(); ++i) {
                if (i >= lastPosition)
                    raise(RunTimeError::Overflow);
                if (text[i] == u'.' || equalIgnoringCase(text.substr(i, 1), decimal)) {
                    if (separator != text.npos)
                        return std::nullopt;
                    separator = i;
                } else if (!ascii::isDigit(text[i])) {
                    return std::nullopt;
                }
            }
            if (separator == text.npos || separator == 0 || separator + 1 == text.size())
                return std::nullopt;
            const auto major = partOf(text.substr(0, separator));
            const auto minor = major ? partOf(text.substr(separator + 1)) : std::nullopt;
            if (!minor || *minor > largestMinor || *major <= 0)
                return std::nullopt;
            return Revision{*major, *minor};
        });
}

int compare(const Revision& a, const Revision& b) {
    const auto order = [](std::int32_t x, std::int32_t y) { return x < y ? -1 : x > y ? 1 : 0; };
    return a.major != b.major ? order(a.major, b.major) : order(a.minor, b.minor);
}

} // namespace

bool g_ValidateNewRevisionNumber(const String& sOldRevNumber, String& sNewRevNumber) {
    const auto revised = split(sNewRevNumber);
    const auto old = split(sOldRevNumber);
    const bool valid = revised && old && compare(*old, *revised) <= 0;
    sNewRevNumber = valid ? textOf(*revised) : String();
    return valid;
}

bool g_IsValidRevisionNumber(String& sRevNumber) {
    const auto revision = split(sRevNumber);
    if (revision)
        sRevNumber = textOf(*revision);
    return revision.has_value();
}

Variant g_CompareRevisionNumber(String& sRevNum1, String& sRevNum2) {
    const auto first = trim(sRevNum1);
    const auto second = trim(sRevNum2);
    if (first.empty() || second.empty())
        return String();
    if (equalIgnoringCase(first, second)) {
        const bool valid = g_IsValidRevisionNumber(sRevNum1) && g_IsValidRevisionNumber(sRevNum2);
        return valid ? Variant(0) : Variant(String());
    }
    const auto revision1 = split(first);
    const auto revision2 = revision1 ? split(second) : std::nullopt;
    return revision2 ? Variant(compare(*revision1, *revision2)) : Variant(String());
}

String g_IncrementRevisionNumber(const String& sRevisionNumber) {
    if (sRevisionNumber.empty())
        return textOf({1, 0});
    return underInnermostSource(u"VlGeneralServices.modConversion.g_IncrementRevisionNumber",
                                [&]() -> String {
                                    auto revision = split(sRevisionNumber);
                                    if (!revision)
                                        return {};
                                    if (revision->minor < largestMinor)
                                        return textOf({revision->major, revision->minor + 1});
                                    if (revision->major == std::numeric_limits<std::int32_t>::max())
                                        raise(RunTimeError::Overflow);
                                    return textOf({revision->major + 1, 0});
                                });
}

String g_PostFixCharacter() {
    return underSource(u"VlGeneralServices.modConversion.g_PostFixCharacter", []() -> String {
        const auto code = toLong(GetMessageCatalogue()->ResourceString(eMsg_PostFixChar));
        const CodePage page = CodePage::system();
        const bool doubleByte =
            code > 255 && code <= 0xFFFF && page.isLeadByte(static_cast<unsigned char>(code >> 8));
        if (code < 0 || (code > 255 && !doubleByte))
            raise(RunTimeError::InvalidProcedureCall);
        return String(1, page.characterOf(static_cast<std::int16_t>(code)));
    });
}

} // namespace vlgs
