// SPDX-License-Identifier: MIT
// What is the same on every host: UTF-8, and the names of code pages.
#include "platform/CodePage.h"

#include "base/Ascii.h"
#include "base/Utf8.h"

#include <charconv>
#include <utility>

namespace vlgs {

namespace {

constexpr unsigned utf8Page = 65001;

constexpr std::pair<std::string_view, unsigned> namesWithoutNumber[] = {
    {"utf8", utf8Page},  {"koi8r", 20866},    {"iso88591", 28591},
    {"iso88592", 28592}, {"iso88595", 28595}, {"iso885915", 28605}};

/// A name in small letters and without what people put between its parts.
std::string plain(std::string_view name) {
    std::string text;
    for (const char c : name)
        if (c != '-' && c != '_' && c != ' ')
            text += static_cast<char>(ascii::toLower(c));
    return text;
}

bool hasLoneSurrogate(std::u16string_view text) noexcept {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((text[i] & 0xF800) != 0xD800)
            continue;
        const bool pair = text[i] < 0xDC00 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
        if (!pair)
            return true;
        ++i;
    }
    return false;
}

} // namespace

std::string CodePage::encode(std::u16string_view text) const {
    std::string bytes;
    append(bytes, text);
    return bytes;
}

std::optional<std::string> CodePage::encodeExactly(std::u16string_view text) const {
    std::string bytes;
    if (!append(bytes, text))
        return std::nullopt;
    return bytes;
}

bool CodePage::append(std::string& bytes, std::u16string_view text) const {
    if (number() != utf8Page)
        return appendInPage(bytes, text);
    bytes += String(text).toUtf8();
    return !hasLoneSurrogate(text);
}

String CodePage::decode(std::string_view bytes) const {
    return number() == utf8Page ? String::fromUtf8(bytes) : decodeInPage(bytes);
}

std::optional<CodePage> CodePage::named(std::string_view name) {
    const auto text = plain(name);
    for (const auto& [known, number] : namesWithoutNumber)
        if (text == known)
            return find(number);
    std::string_view digits = text;
    for (const std::string_view prefix : {"windows", "cp"})
        if (digits.starts_with(prefix)) {
            digits.remove_prefix(prefix.size());
            break;
        }
    unsigned number = 0;
    const auto* end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, number);
    return failure == std::errc() && stop == end ? find(number) : std::nullopt;
}

bool CodePage::isText(std::string_view bytes) const noexcept {
    return number() == utf8Page ? isUtf8(bytes) : isTextInPage(bytes);
}

} // namespace vlgs
