// SPDX-License-Identifier: MIT
#include "platform/Registry.h"

namespace vlgs {

String registryText(std::string_view bytes) {
    return String::build(bytes.size() / 2, [&](char16_t* to) {
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            *to++ = static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          static_cast<unsigned char>(bytes[i + 1]) << 8);
    });
}

std::string registryBytes(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2 + 2);
    for (char16_t character : text) {
        bytes += static_cast<char>(character & 0xFF);
        bytes += static_cast<char>(character >> 8);
    }
    return bytes;
}

} // namespace vlgs
