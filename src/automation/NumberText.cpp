// SPDX-License-Identifier: MIT
#include "automation/NumberText.h"

#include "automation/Convert.h"
#include "base/Ascii.h"
#include "base/Error.h"
#include "base/Text.h"
#include "base/WideNumber.h"
#include "platform/Locale.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace vlgs {

namespace {

constexpr bool isWhite(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\u00A0';
}

// What a numeric text says, its digits without separators: digits[0..whole) "." digits[whole..) E exponent.
struct Numeral {
    bool negative = false;
    std::string digits;
    std::size_t whole = 0;
    std::int64_t exponent = 0;
    std::optional<std::uint64_t> bits; // of a hexadecimal or octal text
};

class NumeralParser {
  public:
    NumeralParser(std::u16string_view text, NumberGroups groups, const Locale& locale)
        : locale_(locale), groups_(groups), rest_(text) {}

    std::optional<Numeral> parse() {
        skipWhite();
        if (radixPrefix())
            return radixDigits() && finished() ? std::optional(result_) : std::nullopt;
        // Signs, currency sign and parenthesis in any order, each once.
        while (sign() || currency() || openParenthesis())
            skipWhite();
        if (!mantissa())
            return std::nullopt;
        exponent();
        skipWhite();
        while (sign() || currency() || closeParenthesis())
            skipWhite();
        if (!rest_.empty() || open_ != closed_)
            return std::nullopt;
        return std::move(result_);
    }

  private:
    bool take(std::u16string_view token) {
        if (token.empty() || !rest_.starts_with(token))
            return false;
        rest_.remove_prefix(token.size());
        return true;
    }
    void skipWhite() {
        while (!rest_.empty() && isWhite(rest_.front()))
            rest_.remove_prefix(1);
    }
    bool finished() {
        skipWhite();
        return rest_.empty();
    }

    bool sign() {
        if (signed_ || open_)
            return false;
        const bool minus = take(u"-") || take(locale_.text(LocaleItem::NegativeSign));
        if (!minus && !take(u"+") && !take(locale_.text(LocaleItem::PositiveSign)))
            return false;
        result_.negative = minus;
        return signed_ = true;
    }
    bool currency() {
        if (currency_ || !take(locale_.text(LocaleItem::CurrencySymbol)))
            return false;
        return currency_ = true;
    }
    bool openParenthesis() {
        if (open_ || signed_ || !take(u"("))
            return false;
        return open_ = result_.negative = true;
    }
    bool closeParenthesis() {
        if (closed_ || !open_ || !take(u")"))
            return false;
        return closed_ = true;
    }

    bool isDecimal() {
        return take(locale_.text(LocaleItem::DecimalSeparator)) ||
               (currency_ && take(locale_.text(LocaleItem::MonetaryDecimalSeparator)));
    }
    bool isGroup() {
        if (groups_ == NumberGroups::Refuse)
            return false;
        const auto separator = locale_.text(LocaleItem::ThousandsSeparator);
        if (take(separator) || (currency_ && take(locale_.text(LocaleItem::MonetaryThousandsSeparator))))
            return true;
        // Locales that group with a blank are read with either kind of blank.
        return separator.size() == 1 && isWhite(separator.front()) && rest_.size() > 1 &&
               isWhite(rest_.front()) && ascii::isDigit(rest_[1]) && take(rest_.substr(0, 1));
    }
    bool mantissa() {
        bool point = false;
        for (;;) {
            if (!rest_.empty() && ascii::isDigit(rest_.front())) {
                result_.digits.push_back(static_cast<char>(rest_.front()));
                rest_.remove_prefix(1);
            } else if (!point && isDecimal()) {
                point = true;
                result_.whole = result_.digits.size();
            } else if (point || result_.digits.empty() || !isGroup()) {
                break;
            }
        }
        if (!point)
            result_.whole = result_.digits.size();
        return !result_.digits.empty();
    }
    void exponent() {
        const auto start = rest_;
        if (!take(u"E") && !take(u"e") && !take(u"D") && !take(u"d"))
            return;
        const bool minus = take(u"-");
        if (!minus)
            take(u"+");
        if (rest_.empty() || !ascii::isDigit(rest_.front())) {
            rest_ = start;
            return;
        }
        for (; !rest_.empty() && ascii::isDigit(rest_.front()); rest_.remove_prefix(1))
            result_.exponent =
                std::min<std::int64_t>(result_.exponent * 10 + (rest_.front() - u'0'), 1 << 30);
        if (minus)
            result_.exponent = -result_.exponent;
    }

    bool radixPrefix() {
        if (take(u"&H") || take(u"&h"))
            shift_ = 4;
        else if (take(u"&O") || take(u"&o"))
            shift_ = 3;
        return shift_ != 0;
    }
    bool radixDigits() {
        std::uint64_t bits = 0;
        bool any = false;
        for (; !rest_.empty(); rest_.remove_prefix(1), any = true) {
            const char16_t c = rest_.front();
            const int digit = ascii::hexValue(c);
            if (digit < 0 || digit >= 1 << shift_)
                break;
            if (bits >> (64 - shift_))
                return false;
            bits = bits << shift_ | static_cast<unsigned>(digit);
        }
        result_.bits = bits;
        return any;
    }

    const Locale& locale_;
    NumberGroups groups_;
    std::u16string_view rest_;
    Numeral result_;
    unsigned shift_ = 0;
    bool signed_ = false;
    bool currency_ = false;
    bool open_ = false;
    bool closed_ = false;
};

std::optional<Numeral> parse(std::u16string_view text, const Locale& locale,
                             NumberGroups groups = NumberGroups::Accept) {
    return NumeralParser(text, groups, locale).parse();
}

// The numeral as a Double; nothing when it is too large.
std::optional<double> doubleOf(Numeral numeral) {
    if (numeral.bits)
        return static_cast<double>(*numeral.bits);
    const auto fraction = static_cast<std::int64_t>(numeral.digits.size() - numeral.whole);
    numeral.digits += "E" + std::to_string(numeral.exponent - fraction);
    double value = 0;
    const char* end = numeral.digits.data() + numeral.digits.size();
    if (std::from_chars(numeral.digits.data(), end, value).ec == std::errc::result_out_of_range) {
        const auto first = numeral.digits.find_first_not_of('0');
        const auto magnitude = static_cast<std::int64_t>(numeral.whole) - static_cast<std::int64_t>(first);
        if (magnitude + numeral.exponent > 0)
            return std::nullopt;
        value = 0; // too small to tell from 0
    }
    return numeral.negative ? -value : value;
}

String withSeparator(const std::string& digits, const Locale& locale) {
    const auto point = digits.find('.');
    if (point == digits.npos)
        return String::fromUtf8(digits);
    return concat(String::fromUtf8(digits.substr(0, point)), locale.text(LocaleItem::DecimalSeparator),
                  String::fromUtf8(digits.substr(point + 1)));
}

// C's "%.*G": the exponent has a sign and at least two digits, as the run time writes it.
String floatingText(double value, int digits, const Locale& locale) {
    if (value == 0)
        return u"0"; // also for a negative zero
    char buffer[40];
    auto [end, status] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    std::replace(buffer, end, 'e', 'E');
    return withSeparator({buffer, end}, locale);
}

// The number without zeros at the end of its decimal places.
String fixedText(bool negative, WideNumber magnitude, std::size_t scale, const Locale& locale) {
    std::string digits = decimalText(magnitude, scale);
    if (scale > 0) {
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.')
            digits.pop_back();
    }
    return withSeparator((negative && digits != "0" ? "-" : "") + digits, locale);
}

// The first `count` of the digits as a number, rounded by the digit behind them; nothing past 96 bits.
std::optional<WideNumber> wholeOf(std::string_view digits, std::int64_t count) {
    if (count < 0)
        return WideNumber();
    WideNumber value;
    for (const char digit : digits.substr(0, static_cast<std::size_t>(count)))
        if (!value.multiplyAndAdd(10, static_cast<std::uint32_t>(digit - '0')))
            return std::nullopt;
    if (count < static_cast<std::int64_t>(digits.size()) && digits[static_cast<std::size_t>(count)] >= '5')
        if (!value.multiplyAndAdd(1, 1))
            return std::nullopt;
    return value;
}

} // namespace

String numberToText(const Variant& number, const Locale& locale) {
    switch (number.type()) {
    case VarType::Single:
        return floatingText(static_cast<double>(number.single()), 7, locale);
    case VarType::Currency: {
        const auto units = number.currency().units;
        const auto magnitude =
            units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
        return fixedText(units < 0, WideNumber(0, magnitude), 4, locale);
    }
    case VarType::Decimal: {
        const auto value = number.decimal();
        return fixedText(value.sign != 0, WideNumber(value.high, value.low), value.scale, locale);
    }
    default:
        return floatingText(toDouble(number), 15, locale);
    }
}

std::optional<double> parseNumber(std::u16string_view text, NumberGroups groups, const Locale& locale) {
    auto numeral = parse(text, locale, groups);
    return numeral ? doubleOf(std::move(*numeral)) : std::nullopt;
}

double textToNumber(std::u16string_view text, const Locale& locale) {
    auto numeral = parse(text, locale);
    if (!numeral)
        raise(RunTimeError::TypeMismatch);
    const auto value = doubleOf(std::move(*numeral));
    if (!value)
        raise(RunTimeError::Overflow);
    return *value;
}

Decimal textToDecimal(std::u16string_view text, const Locale& locale) {
    auto numeral = parse(text, locale);
    if (!numeral)
        raise(RunTimeError::TypeMismatch);
    if (numeral->bits)
        return {0, 0, 0, *numeral->bits};
    std::string digits = numeral->digits;
    std::int64_t scale = static_cast<std::int64_t>(digits.size() - numeral->whole) - numeral->exponent;
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty())
        return {};
    if (scale < 0) {
        if (scale < -29)
            raise(RunTimeError::Overflow);
        digits.append(static_cast<std::size_t>(-scale), '0');
        scale = 0;
    }
    const auto size = static_cast<std::int64_t>(digits.size());
    for (auto drop = std::max({scale - 28, size - 29, std::int64_t{0}}); drop <= scale; ++drop)
        if (const auto value = wholeOf(digits, size - drop))
            return {static_cast<std::uint8_t>(scale - drop),
                    static_cast<std::uint8_t>(numeral->negative ? 0x80 : 0), value->high(), value->low()};
    raise(RunTimeError::Overflow);
}

std::optional<std::int32_t> bitsOfText(std::u16string_view text) noexcept {
    if (text.find(u'&') == text.npos)
        return std::nullopt;
    const auto numeral = parse(text, Locale::user());
    if (!numeral || !numeral->bits || *numeral->bits > 0xFFFFFFFF)
        return std::nullopt;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(*numeral->bits));
}

bool isNumericText(std::u16string_view text, const Locale& locale) {
    return parseNumber(text, NumberGroups::Accept, locale).has_value();
}

} // namespace vlgs
