// SPDX-License-Identifier: MIT
// Sets the run time's conversions against the operating system's own, over generated inputs, locale by
// locale, and fails where they differ without a known reason.
//
//     CompareConversions [COUNT]    COUNT inputs for each locale, 2000 by default
#include "ConversionTexts.h"
#include "KnownDifferences.h"

#include "automation/Convert.h"
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "automation/NumberFormat.h"
#include "automation/NumberText.h"
#include "base/Error.h"
#include "com/Ole.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace vlgs::com {
namespace {

constexpr const char* locales[] = {"en-US", "en-GB", "de-DE", "fr-FR", "it-IT", "es-ES", "pt-BR", "nl-NL",
                                   "sv-SE", "fi-FI", "da-DK", "pl-PL", "cs-CZ", "hu-HU", "ru-RU", "bg-BG",
                                   "tr-TR", "el-GR", "ja-JP", "zh-CN", "ko-KR", "ar-EG", "he-IL", "hi-IN"};

std::string printed(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.15g", value);
    return text;
}
// The platform takes texts that it does not change as if it might.
OLECHAR* given(const std::u16string& text) {
    return const_cast<OLECHAR*>(wide(text.c_str()));
}
std::string taken(BSTR text) {
    const std::string result = text ? toString(text).toUtf8() : "";
    SysFreeString(text);
    return result;
}
std::string printed(Date date) {
    static const DatePattern universal(u"yyyy\\-mm\\-dd hh\\:nn\\:ss");
    return formatDate(date, universal).toUtf8();
}
template <class Action>
std::string ours(Action&& action) {
    try {
        return action();
    } catch (const Error&) {
        return none;
    }
}

/// One locale on both sides.
class Comparison {
  public:
    explicit Comparison(const char* name)
        : name_(name), locale_(Locale::named(name)), reader_(locale_), texts_(locale_, 2009),
          id_(LocaleNameToLCID(wide(String::fromUtf8(name).view().data()), 0)) {}

    Difference dateFromText() {
        const auto text = texts_.date();
        DATE moment = 0;
        std::string wanted = none;
        if (VarDateFromStr(given(text), id_, LOCALE_NOUSEROVERRIDE, &moment) == S_OK)
            wanted = printed(Date{moment});
        else if (const auto number = plainNumber(text); number && std::abs(*number) < 650000)
            wanted = printed(Date{*number});
        const auto found = reader_.read(text, WantedPart::Date);
        return {"date of", name_, String(text).toUtf8(), wanted, found ? printed(*found) : none};
    }

    Difference numberFromText() {
        const auto text = texts_.number();
        double number = 0;
        const auto status = VarR8FromStr(given(text), id_, LOCALE_NOUSEROVERRIDE, &number);
        const auto found = parseNumber(text, NumberGroups::Accept, locale_);
        return {"number of", name_, String(text).toUtf8(), status == S_OK ? printed(number) : none,
                found ? printed(*found) : none};
    }

    Difference textFromNumber() {
        const double value = texts_.value();
        BSTR text = nullptr;
        VarBstrFromR8(value, id_, LOCALE_NOUSEROVERRIDE, &text);
        return {"text of", name_, printed(value), taken(text), numberToText(value, locale_).toUtf8()};
    }

    Difference textFromDate() {
        const double moment = texts_.moment();
        BSTR text = nullptr;
        VarBstrFromDate(moment, id_, LOCALE_NOUSEROVERRIDE, &text);
        static const DatePattern general(u"c");
        return {"text of moment", name_, printed(moment), taken(text),
                ours([&] { return formatDate({moment}, general, locale_).toUtf8(); })};
    }

    Difference formattedDate() {
        const double moment = texts_.moment();
        const auto pattern = texts_.datePattern();
        return {"moment by", name_, String(pattern).toUtf8() + " " + printed(moment),
                platformFormat(VT_DATE, moment, pattern),
                ours([&] { return formatDate({moment}, DatePattern(pattern), locale_).toUtf8(); })};
    }

    Difference formattedNumber() {
        const double number = texts_.valueFromOne();
        const auto mask = texts_.numberMask();
        return {"number by", name_, String(mask).toUtf8() + " " + printed(number),
                platformFormat(VT_R8, number, mask), formatNumber(number, mask, locale_).toUtf8()};
    }

    /// Whether texts of moments differ one and all, for the platform here leaves the quotation marks of a
    /// pattern in them.
    bool quotesDates() const {
        return locale_.text(LocaleItem::ShortDatePattern).find(u'\'') != std::u16string_view::npos;
    }

  private:
    /// A number without group separators.
    std::optional<double> plainNumber(const std::u16string& text) const {
        NUMPARSE parse{};
        parse.cDig = 30;
        parse.dwInFlags = NUMPRS_STD & ~static_cast<ULONG>(NUMPRS_THOUSANDS);
        BYTE digits[30];
        VARIANT value{};
        if (FAILED(VarParseNumFromStr(given(text), id_, LOCALE_NOUSEROVERRIDE, &parse, digits)) ||
            FAILED(VarNumFromParseNum(&parse, digits, VTBIT_R8, &value)))
            return std::nullopt;
        return value.dblVal;
    }
    std::string platformFormat(VARTYPE type, double number, const std::u16string& pattern) const {
        VARIANT value{};
        value.vt = type;
        value.dblVal = number; // of a date, too
        BYTE tokens[512];
        BSTR text = nullptr;
        auto* format = given(pattern);
        int actual = 0;
        if (FAILED(VarTokenizeFormatString(format, tokens, sizeof tokens, 1, 1, id_, &actual)) ||
            FAILED(VarFormatFromTokens(&value, format, tokens, 0, &text, id_)))
            return none;
        return taken(text);
    }

    const char* name_;
    Locale locale_;
    DateReader reader_;
    ConversionTexts texts_;
    LCID id_;
};

// Of ten inputs: four texts as dates, two as numbers, the rest one of each other kind.
Difference compared(Comparison& locale, int number) {
    switch (number % 10) {
    case 0:
    case 1:
        return locale.numberFromText();
    case 2:
        return locale.textFromNumber();
    case 3:
        return locale.quotesDates() && number % 1000 != 3 ? locale.textFromNumber() : locale.textFromDate();
    case 4:
        return locale.quotesDates() && number % 1000 != 4 ? locale.formattedNumber() : locale.formattedDate();
    case 5:
        return locale.formattedNumber();
    default:
        return locale.dateFromText();
    }
}

/// Reports on one locale: whether it has no unknown differences, and no more known ones than a long run may
/// show.
bool isAlike(const char* name, int count, std::map<std::string_view, int>& classes) {
    Comparison locale(name);
    int different = 0;
    int unknown = 0;
    for (int i = 0; i < count; ++i) {
        const Difference difference = compared(locale, i);
        if (difference.platform == difference.ours)
            continue;
        ++different;
        if (const auto* known = knownDifference(difference))
            ++classes[known->name];
        else if (++unknown <= 10)
            std::printf("%s \"%s\" in %s: \"%s\", the platform has \"%s\"\n",
                        std::string(difference.what).c_str(), difference.input.c_str(), name,
                        difference.ours.c_str(), difference.platform.c_str());
    }
    const double share = 100.0 * different / count;
    std::printf("%s: %d of %d differ (%.2f %%), %d for no known reason\n", name, different, count, share,
                unknown);
    return unknown == 0 && (share <= 0.5 || count < 50000); // fewer tell the share only roughly
}

} // namespace
} // namespace vlgs::com

int main(int count, char** arguments) {
    const int texts = count > 1 ? std::atoi(arguments[1]) : 2000;
    if (texts <= 0) {
        std::fputs("usage: CompareConversions [COUNT]\n", stderr);
        return 2;
    }
    std::map<std::string_view, int> classes;
    bool alike = true;
    for (const char* name : vlgs::com::locales)
        alike = vlgs::com::isAlike(name, texts, classes) && alike;
    for (const auto& [name, found] : classes)
        std::printf("%7d %s\n", found, std::string(name).c_str());
    return alike ? 0 : 1;
}
