// SPDX-License-Identifier: MIT
// How the user's locale writes numbers, dates and times.
//
// Items bear the numbers of the Windows function GetLocaleInfo, and patterns are in its pattern language:
// d dd ddd dddd M MM MMM MMMM y yy yyyy g gg h hh H HH m mm s ss t tt, literal text between single quotes.
// On Windows the operating system answers; other hosts answer from a table of the CLDR's locales. Only the
// Gregorian calendar is used, and the digits of patterns and separators are the ASCII ones.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vlgs {

/// Item numbers that the library itself asks for.
enum class LocaleItem : std::int32_t {
    NativeLanguageName = 0x04,
    ListSeparator = 0x0C,
    DecimalSeparator = 0x0E,
    ThousandsSeparator = 0x0F,
    CurrencySymbol = 0x14,
    MonetaryDecimalSeparator = 0x16,
    MonetaryThousandsSeparator = 0x17,
    DateSeparator = 0x1D,
    TimeSeparator = 0x1E,
    ShortDatePattern = 0x1F,
    LongDatePattern = 0x20,
    Morning = 0x28,
    Afternoon = 0x29,
    PositiveSign = 0x50,
    NegativeSign = 0x51,
    TimePattern = 0x1003,
};

/// The order of day, month and year in a short date; the values are those of item 0x21.
enum class DateOrder { MonthDayYear = 0, DayMonthYear = 1, YearMonthDay = 2 };

/// Full names ("March"), abbreviations ("Mar"), and the full and abbreviated month names as they stand beside
/// a day ("марта" where the name by itself is "март"; equal to the others in most languages).
enum class NameForm { Full, Abbreviated, Genitive, AbbreviatedGenitive };

/// The languages in which the user wants to read, the best one first, as language tags or in the form
/// "de_DE.UTF-8@euro"; names that are no language may be among them. On Windows those of the user's
/// interface; on other hosts those of LANGUAGE, a list separated by ":" (which LC_ALL=C switches off), then
/// LC_ALL, LC_MESSAGES or LANG, then VLGS_LOCALE.
std::vector<String> messageLanguages();

/// One locale. A small value: copy it freely. The texts it hands out stay valid until the process ends.
class Locale {
  public:
    /// What the host keeps of a locale.
    struct Data;

    /// The user's locale at this moment. Where the host has no locale of its own, VLGS_LOCALE ("de-DE", or
    /// the form "de_DE.UTF-8@euro") names it, else LC_ALL, else LC_TIME and, for the items that concern
    /// numbers, LC_NUMERIC, else LANG, else it is en-US. A change of these variables takes effect with the
    /// next call.
    static Locale user();

    /// The locale of the system itself, whatever formats the user has chosen: it goes with
    /// `CodePage::system`. Where the host has none, VLGS_LOCALE names it, else LC_ALL, LC_CTYPE or LANG, else
    /// it is en-US. An LC_CTYPE without a language (C, POSIX, C.UTF-8) leaves it to LANG.
    static Locale system();

    /// The locale of a name in either form, without regard to case. An unknown region gives the language's
    /// own locale, an unknown language (and "C", "POSIX" and the empty name) en-US.
    static Locale named(std::string_view name);

    /// Whether a name leads to a locale of its language, or asks for none ("C", "POSIX", the empty name).
    static bool isKnown(std::string_view name);

    /// Every locale of this host.
    static std::vector<Locale> all();

    /// The language tag, "de-DE".
    std::u16string_view name() const;

    /// The text of an item by its platform number, nothing for a number that names no item here. An item can
    /// also be there and empty (the positive sign usually is). The flags that the platform adds to numbers
    /// (0x80000000 without the user's changes, 0x10000000 genitive month names) are understood.
    std::optional<String> item(std::int32_t number) const;

    /// The text of an item that every locale has.
    std::u16string_view text(LocaleItem item) const;

    /// `month` 1 to 12; never empty.
    std::u16string_view monthName(int month, NameForm form = NameForm::Full) const;
    /// `weekday` 1 (Sunday) to 7 (Saturday); never empty. Genitive forms are those without it.
    std::u16string_view weekdayName(int weekday, NameForm form = NameForm::Full) const;

    DateOrder dateOrder() const;
    /// 1 (Sunday) to 7 (Saturday).
    int firstDayOfWeek() const;
    /// The language's usual 8-bit code page, 1252 where nothing better is known.
    unsigned codePage() const;

  private:
    Locale(const Data& dates, const Data& numbers) noexcept : dates_(&dates), numbers_(&numbers) {}
    std::u16string_view textAt(std::int32_t item) const;

    const Data* dates_;
    const Data* numbers_;
};

} // namespace vlgs
