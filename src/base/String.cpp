// SPDX-License-Identifier: MIT
#include "base/String.h"

#include <algorithm>
#include <limits>
#include <new>

namespace vlgs {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Decodes one scalar value at `at` and moves `at` behind it; a malformed sequence gives U+FFFD and moves
// over its longest valid beginning, as the Unicode standard recommends.
char32_t decodeUtf8(std::string_view text, std::size_t& at, LoneSurrogates lone) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80)
        return lead;
    int more = 0;
    char32_t value = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        more = 1;
        value = lead & 0x1Fu;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        more = 2;
        value = lead & 0x0Fu;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED && lone == LoneSurrogates::Replaced ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        more = 3;
        value = lead & 0x07u;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return replacement;
    }
    for (; more > 0; --more, ++at) {
        if (at >= text.size())
            return replacement;
        const auto next = static_cast<unsigned char>(text[at]);
        if (!isContinuation(next) || next < low || next > high)
            return replacement;
        low = 0x80;
        high = 0xBF;
        value = value << 6 | (next & 0x3Fu);
    }
    return value;
}

} // namespace

char16_t* String::allocate(std::size_t length) {
    if (length > std::numeric_limits<std::int32_t>::max() / sizeof(char16_t))
        throw std::bad_alloc();
    void* block = ::operator new(sizeof(Header) + (length + 1) * sizeof(char16_t));
    auto* header = new (block) Header{{1}, static_cast<std::uint32_t>(length)};
    auto* text = reinterpret_cast<char16_t*>(header + 1);
    text[length] = u'\0';
    return text;
}

void String::deallocate(char16_t* text) noexcept {
    ::operator delete(reinterpret_cast<Header*>(text) - 1);
}

String::String(std::u16string_view text) {
    if (text.empty())
        return;
    text_ = allocate(text.size());
    text.copy(text_, text.size());
}

String::String(std::size_t count, char16_t character) {
    if (count == 0)
        return;
    text_ = allocate(count);
    std::fill_n(text_, count, character);
}

String& String::operator+=(std::u16string_view tail) {
    if (!tail.empty())
        *this = concat(view(), tail);
    return *this;
}

String String::fromUtf8(std::string_view text, LoneSurrogates lone) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size();)
        length += decodeUtf8(text, at, lone) > 0xFFFF ? 2 : 1;
    return build(length, [&](char16_t* to) {
        for (std::size_t at = 0; at < text.size();) {
            char32_t value = decodeUtf8(text, at, lone);
            if (value > 0xFFFF) {
                value -= 0x10000;
                *to++ = static_cast<char16_t>(0xD800 + (value >> 10));
                value = 0xDC00 + (value & 0x3FF);
            }
            *to++ = static_cast<char16_t>(value);
        }
    });
}

std::string String::toUtf8(LoneSurrogates lone) const {
    std::string out;
    out.reserve(length());
    const auto text = view();
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t value = text[i];
        if (value >= 0xD800 && value <= 0xDFFF) {
            const bool pair =
                value < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
            if (pair)
                value = 0x10000 + ((value - 0xD800) << 10) + (text[++i] - 0xDC00u);
            else if (lone == LoneSurrogates::Replaced)
                value = replacement;
        }
        const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
        if (value < 0x80) {
            put(value);
        } else if (value < 0x800) {
            put(0xC0 | value >> 6);
            put(0x80 | (value & 0x3F));
        } else if (value < 0x10000) {
            put(0xE0 | value >> 12);
            put(0x80 | (value >> 6 & 0x3F));
            put(0x80 | (value & 0x3F));
        } else {
            put(0xF0 | value >> 18);
            put(0x80 | (value >> 12 & 0x3F));
            put(0x80 | (value >> 6 & 0x3F));
            put(0x80 | (value & 0x3F));
        }
    }
    return out;
}

} // namespace vlgs
