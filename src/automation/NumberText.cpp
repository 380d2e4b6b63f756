#include "automation/NumberText.h"

#include "automation/Convert.h"
#include "automation/Error.h"
#include "automation/Text.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace vlgs {

namespace {

std::optional<double> parse(std::u16string_view text) {
    text = trim(text);
    std::string digits;
    for (char16_t c : text)
        digits.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    const char* first = digits.data();
    const char* last = first + digits.size();
    if (first != last && *first == '+')
        ++first;
    double value = 0;
    const auto [end, status] = std::from_chars(first, last, value);
    if (first == last || end != last || status == std::errc::invalid_argument || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

String numberToText(const Variant& number) {
    char buffer[64];
    const double value = toDouble(number);
    const auto [end, status] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
    return String::fromUtf8({buffer, end});
}

double textToNumber(std::u16string_view text) {
    const auto value = parse(text);
    if (!value)
        raise(RunTimeError::TypeMismatch);
    return *value;
}

Decimal textToDecimal(std::u16string_view text) {
    const double value = textToNumber(text);
    if (std::abs(value) >= 0x1p96)
        raise(RunTimeError::Overflow);
    const double magnitude = std::abs(value);
    const double high = std::floor(magnitude / 0x1p64);
    return {0, static_cast<std::uint8_t>(value < 0 ? 0x80 : 0), static_cast<std::uint32_t>(high),
            static_cast<std::uint64_t>(magnitude - high * 0x1p64)};
}

bool isNumericText(std::u16string_view text) noexcept {
    return parse(text).has_value();
}

} // namespace vlgs
