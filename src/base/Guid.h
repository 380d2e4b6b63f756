// SPDX-License-Identifier: MIT
// Identifiers of 16 bytes, as the class descriptions fix them at compile time and as texts name them.
#pragma once

#include "base/Ascii.h"
#include "base/Export.h"
#include "base/String.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vlgs {

/// A globally unique identifier in the order in which its text is written, first digit pair first.
struct GuidValue {
    std::array<std::uint8_t, 16> bytes{};
    friend bool operator==(const GuidValue&, const GuidValue&) = default;
};

/// Reads "8-4-4-4-12" hexadecimal digits without braces; a text of another form does not compile.
consteval GuidValue guid(std::string_view text) {
    GuidValue result;
    std::size_t digits = 0;
    if (text.size() != 36)
        throw "a GUID has 36 characters";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (c != '-')
                throw "hyphens stand at fixed places in a GUID";
            continue;
        }
        const int value = ascii::hexValue(static_cast<unsigned char>(c));
        if (value < 0)
            throw "not a hexadecimal digit";
        auto& byte = result.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
    }
    return result;
}

/// The text form "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", 38 characters, digits in upper case.
VLGS_API String guidText(const GuidValue& guid);

/// Reads the text form, digits of either case; nothing for any other text, however close.
VLGS_API std::optional<GuidValue> parseGuid(std::u16string_view text) noexcept;

} // namespace vlgs
