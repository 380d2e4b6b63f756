// Identifiers of 16 bytes, as the class descriptions fix them at compile time.
#pragma once

#include "base/Export.h"

#include <array>
#include <cstdint>
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
        const int value = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                                 : throw "not a hexadecimal digit";
        auto& byte = result.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
    }
    return result;
}

} // namespace vlgs
