// SPDX-License-Identifier: MIT
#include "HostText.h"

namespace vlgs::cli {

namespace {

constexpr char16_t firstRawByte = 0xDC80;
constexpr char16_t lastRawByte = 0xDCFF;

// Length in bytes of the one character that stands at the beginning of `bytes`, 0 when none stands there.
std::size_t characterLength(std::string_view bytes) {
    for (std::size_t length = 1; length <= 4 && length <= bytes.size(); ++length) {
        const auto piece = bytes.substr(0, length);
        if (String::fromUtf8(piece).toUtf8() == piece)
            return length;
    }
    return 0;
}

} // namespace

String fromHost(std::string_view bytes) {
    String text = String::fromUtf8(bytes);
    if (text.toUtf8() == bytes)
        return text;
    std::u16string result;
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0)
            result += static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(bytes.front()));
        else
            result += String::fromUtf8(bytes.substr(0, length)).view();
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

std::string toHost(std::u16string_view text) {
    std::string result;
    std::size_t done = 0;
    const auto flush = [&](std::size_t end) {
        result += String(text.substr(done, end - done)).toUtf8();
        done = end;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= 0xD800 && text[i] <= 0xDBFF && i + 1 < text.size()) {
            ++i; // the second half of a pair is no raw byte
        } else if (text[i] >= firstRawByte && text[i] <= lastRawByte) {
            flush(i);
            result += static_cast<char>(text[i] - 0xDC00);
            done = i + 1;
        }
    }
    flush(text.size());
    return result;
}

} // namespace vlgs::cli
