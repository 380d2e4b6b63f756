// SPDX-License-Identifier: MIT
#include "automation/NumberFormat.h"

#include "base/Error.h"
#include "platform/Locale.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace vlgs {

namespace {

// A mask cut into digit places and literal texts; the decimal point and the group sign have left their marks.
struct Mask {
    struct Place {
        char16_t kind; // '0', '#', '.', or NUL for literal text
        std::u16string_view literal;
    };
    std::vector<Place> places;
    int whole = 0;      // places before the point
    int fraction = 0;   // places behind it
    int wholeZeros = 0; // digits shown in any case, counted from the point
    int fractionZeros = 0;
    int thousands = 0; // how often to divide by 1000
    bool grouped = false;
};

Mask parse(std::u16string_view text) {
    Mask mask;
    bool point = false;
    int commas = 0; // since the last digit place
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'0' || c == u'#') {
            mask.grouped |= commas > 0;
            commas = 0;
            if (point) {
                ++mask.fraction;
                if (c == u'0')
                    mask.fractionZeros = mask.fraction;
            } else {
                ++mask.whole;
                if (c == u'0' || mask.wholeZeros > 0)
                    ++mask.wholeZeros;
            }
            mask.places.push_back({c, {}});
        } else if (c == u'.' && !point) {
            point = true;
            mask.thousands += std::exchange(commas, 0);
            mask.places.push_back({c, {}});
        } else if (c == u',' && !point && mask.whole > 0) {
            ++commas;
        } else if (c == u'\\' && i + 1 < text.size()) {
            mask.places.push_back({u'\0', text.substr(++i, 1)});
        } else if (c == u'"') {
            const auto end = std::min(text.find(u'"', i + 1), text.size());
            mask.places.push_back({u'\0', text.substr(i + 1, end - i - 1)});
            i = end;
        } else {
            mask.places.push_back({u'\0', text.substr(i, 1)});
        }
    }
    mask.thousands += commas;
    return mask;
}

// The significant digits of a number (15 at most) and the place of its decimal point among them.
struct Digits {
    std::string digits;
    int point = 0;

    explicit Digits(double value) {
        char buffer[32];
        const auto end =
            std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, 14).ptr;
        const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
        const auto exponent = text.find('e');
        std::from_chars(buffer + exponent + (text[exponent + 1] == '+' ? 2 : 1), end, point);
        ++point;
        digits = text.substr(0, 1);
        digits += text.substr(2, exponent - 2);
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.empty())
            point = 0;
    }

    void round(int fraction) {
        const int keep = point + fraction;
        if (keep >= static_cast<int>(digits.size()))
            return;
        const bool up = keep >= 0 && digits[static_cast<std::size_t>(keep)] >= '5';
        digits.resize(static_cast<std::size_t>(std::max(keep, 0)));
        if (!up) {
            digits.erase(digits.find_last_not_of('0') + 1);
            if (digits.empty())
                point = 0;
            return;
        }
        std::size_t at = digits.size();
        while (at > 0 && digits[at - 1] == '9')
            --at;
        digits.resize(at);
        if (at > 0) {
            ++digits[at - 1];
        } else {
            digits = "1";
            ++point;
        }
    }

    // Digit `place` counted from the point: 0 is the first behind it, -1 the last before it.
    char16_t at(int place) const {
        const int index = point + place;
        const bool there = index >= 0 && index < static_cast<int>(digits.size());
        return there ? static_cast<char16_t>(digits[static_cast<std::size_t>(index)]) : u'0';
    }
    int fractionDigits() const { return std::max(0, static_cast<int>(digits.size()) - point); }
};

class MaskFormatter {
  public:
    MaskFormatter(double value, const Mask& mask, const Locale& locale)
        : locale_(locale), mask_(mask), digits_(scaled(value, mask.thousands)) {
        digits_.round(mask.fraction);
        negative_ = value < 0 && !digits_.digits.empty();
    }

    String format() {
        if (negative_)
            out_ += u'-';
        int place = -mask_.whole;
        for (const auto& [kind, literal] : mask_.places) {
            if (kind == u'\0')
                out_ += literal;
            else if (kind == u'.')
                point();
            else
                digit(place++);
        }
        return out_;
    }

  private:
    static double scaled(double value, int thousands) {
        return std::abs(value) / std::pow(1000.0, thousands);
    }
    void point() {
        if (mask_.whole == 0)
            wholeDigits(digits_.point, 0);
        out_ += locale_.text(LocaleItem::DecimalSeparator);
    }
    void digit(int place) {
        if (place >= 0) {
            if (place < mask_.fractionZeros || place < digits_.fractionDigits())
                out_ += digits_.at(place);
            return;
        }
        const bool first = place == -mask_.whole;
        if (first && digits_.point > mask_.whole)
            wholeDigits(digits_.point, mask_.whole);
        if (-place <= std::max(digits_.point, mask_.wholeZeros))
            wholeDigit(place);
    }
    // The digits that stand before the first place of the mask.
    void wholeDigits(int from, int to) {
        for (int i = from; i > to; --i)
            wholeDigit(-i);
    }
    void wholeDigit(int place) {
        out_ += digits_.at(place);
        if (mask_.grouped && place != -1 && (-place - 1) % 3 == 0)
            out_ += locale_.text(LocaleItem::ThousandsSeparator);
    }

    const Locale& locale_;
    const Mask& mask_;
    Digits digits_;
    bool negative_;
    std::u16string out_;
};

} // namespace

String formatNumber(double value, std::u16string_view mask, const Locale& locale) {
    if (!std::isfinite(value))
        raise(RunTimeError::Overflow);
    const Mask parsed = parse(mask);
    return MaskFormatter(value, parsed, locale).format();
}

} // namespace vlgs
