// Names of code pages, which are the same on every host.
#include "platform/CodePage.h"

#include <charconv>
#include <utility>

namespace vlgs {

namespace {

constexpr std::pair<std::string_view, unsigned> namesWithoutNumber[] = {
    {"utf8", 65001},     {"koi8r", 20866},    {"iso88591", 28591},
    {"iso88592", 28592}, {"iso88595", 28595}, {"iso885915", 28605}};

/// A name in small letters and without what people put between its parts.
std::string plain(std::string_view name) {
    std::string text;
    for (const char c : name)
        if (c != '-' && c != '_' && c != ' ')
            text += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

} // namespace

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

} // namespace vlgs
