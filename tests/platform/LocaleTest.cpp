#include "platform/Locale.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "platform/Environment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <set>

namespace vlgs {
namespace {

std::string utf8(std::u16string_view text) {
    return String(text).toUtf8();
}

std::string item(const Locale& locale, std::int32_t number) {
    const auto text = locale.item(number);
    return text ? text->toUtf8() : "(no such item)";
}

struct Format {
    const char* name;
    const char* shortDate;
    const char* longDate;
    const char* time;
    const char* separators; // decimal sign, thousands separator, list separator, of dates, of times
};

// As Windows gives them, blanks made ordinary.
constexpr Format formats[] = {
    {"en-US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt", ".|,|,|/|:"},
    {"en-GB", "dd/MM/yyyy", "dd MMMM yyyy", "HH:mm:ss", ".|,|,|/|:"},
    {"de-DE", "dd.MM.yyyy", "dddd, d. MMMM yyyy", "HH:mm:ss", ",|.|;|.|:"},
    {"fr-FR", "dd/MM/yyyy", "dddd d MMMM yyyy", "HH:mm:ss", ",| |;|/|:"},
    {"es-ES", "dd/MM/yyyy", "dddd, d 'de' MMMM 'de' yyyy", "H:mm:ss", ",|.|;|/|:"},
    {"it-IT", "dd/MM/yyyy", "dddd d MMMM yyyy", "HH:mm:ss", ",|.|;|/|:"},
    {"pt-BR", "dd/MM/yyyy", "dddd, d 'de' MMMM 'de' yyyy", "HH:mm:ss", ",|.|;|/|:"},
    {"ru-RU", "dd.MM.yyyy", "d MMMM yyyy 'г.'", "H:mm:ss", ",| |;|.|:"},
    {"uk-UA", "dd.MM.yyyy", "d MMMM yyyy' р.'", "H:mm:ss", ",| |;|.|:"},
    {"pl-PL", "dd.MM.yyyy", "dddd, d MMMM yyyy", "HH:mm:ss", ",| |;|.|:"},
    {"cs-CZ", "dd.MM.yyyy", "dddd d. MMMM yyyy", "H:mm:ss", ",| |;|.|:"},
    {"hu-HU", "yyyy. MM. dd.", "yyyy. MMMM d., dddd", "H:mm:ss", ",| |;|. |:"},
    {"tr-TR", "d.MM.yyyy", "d MMMM yyyy dddd", "HH:mm:ss", ",|.|;|.|:"},
    {"nl-NL", "d-M-yyyy", "dddd d MMMM yyyy", "HH:mm:ss", ",|.|;|-|:"},
    {"sv-SE", "yyyy-MM-dd", "'den 'd MMMM yyyy", "HH:mm:ss", ",| |;|-|:"},
    {"fi-FI", "d.M.yyyy", "dddd d. MMMM yyyy", "H.mm.ss", ",| |;|.|."},
    {"id-ID", "dd/MM/yyyy", "dddd, dd MMMM yyyy", "HH.mm.ss", ",|.|;|/|."},
    {"vi-VN", "dd/MM/yyyy", "dd MMMM yyyy", "h:mm:ss tt", ",|.|;|/|:"},
    {"th-TH", "d/M/yyyy", "d MMMM yyyy", "H:mm:ss", ".|,|,|/|:"},
    {"hi-IN", "dd-MM-yyyy", "dd MMMM yyyy", "HH:mm:ss", ".|,|,|-|:"},
    {"ar-SA", "dd/MM/yyyy", "dddd, d MMMM yyyy", "hh:mm:ss tt", ".|,|;|/|:"},
    {"ar-EG", "dd/MM/yyyy", "dd MMMM, yyyy", "hh:mm:ss tt", ".|,|;|/|:"},
    {"ja-JP", "yyyy/MM/dd", "yyyy'年'M'月'd'日'", "H:mm:ss", ".|,|,|/|:"},
    {"zh-CN", "yyyy/M/d", "yyyy'年'M'月'd'日'", "H:mm:ss", ".|,|,|/|:"},
    {"zh-TW", "yyyy/M/d", "yyyy'年'M'月'd'日'", "tt hh:mm:ss", ".|,|,|/|:"},
    {"ko-KR", "yyyy-MM-dd", "yyyy'년' M'월' d'일' dddd", "tt h:mm:ss", ".|,|,|-|:"},
    // Straight from the CLDR:
    {"bg-BG", "d.MM.yyyy 'г.'", "dddd, d MMMM yyyy 'г.'", "H:mm:ss", ",| |;|.|:"},
    {"sk-SK", "d. M. yyyy", "dddd d. MMMM yyyy", "H:mm:ss", ",| |;|. |:"},
    {"lt-LT", "yyyy-MM-dd", "yyyy 'm.' MMMM d 'd.,' dddd", "HH:mm:ss", ",| |;|-|:"},
};

TEST(Locale, WidelyUsedLocalesHaveThePlatformsFormats) {
    for (const auto& expected : formats) {
        const auto locale = Locale::named(expected.name);
        EXPECT_EQ(utf8(locale.name()), expected.name);
        EXPECT_EQ(utf8(locale.text(LocaleItem::ShortDatePattern)), expected.shortDate) << expected.name;
        EXPECT_EQ(utf8(locale.text(LocaleItem::LongDatePattern)), expected.longDate) << expected.name;
        EXPECT_EQ(utf8(locale.text(LocaleItem::TimePattern)), expected.time) << expected.name;
        EXPECT_EQ(item(locale, 14) + "|" + item(locale, 15) + "|" + item(locale, 12) + "|" +
                      item(locale, 29) + "|" + item(locale, 30),
                  expected.separators)
            << expected.name;
    }
}

TEST(Locale, NamesOfEveryFormLeadToTheirLocale) {
    constexpr std::pair<const char*, const char*> names[] = {
        {"de_DE.UTF-8@euro", "de-DE"},
        {"DE-de", "de-DE"},
        {"de", "de-DE"},
        {"de-XX", "de-DE"},
        {"en_GB.ISO-8859-1", "en-GB"},
        {"C", "en-US"},
        {"C.UTF-8", "en-US"},
        {"POSIX", "en-US"},
        {"", "en-US"},
        {"xx-YY", "en-US"},
        {"-", "en-US"},
        {"zh_CN.GB18030", "zh-CN"},
        {"zh-Hant", "zh-TW"},
        {"zh-Hans-SG", "zh-SG"},
        {"zh-Hant-HK", "zh-HK"},
        {"sr_RS@latin", "sr-Latn-RS"},
        {"sr_RS", "sr-Cyrl-RS"},
        {"sr-Latn", "sr-Latn-RS"},
        {"uz_UZ@cyrillic", "uz-Cyrl-UZ"},
        {"no_NO", "nb-NO"},
        {"nb", "nb-NO"},
        {"iw_IL", "he-IL"},
        {"ar", "ar-SA"},
        {"es-419", "es-419"},
        {"ca_ES@valencia", "ca-ES-valencia"},
        {"de-DE_phoneb", "de-DE"},
        {"de-Latn-AT", "de-AT"},
        {"en-u-ca-buddhist", "en-US"},
        {"pt", "pt-BR"},
    };
    for (const auto& [name, expected] : names)
        EXPECT_EQ(utf8(Locale::named(name).name()), expected) << name;
}

/// Sets the variables that name the locale for one test, and clears them afterwards.
class UserLocale : public testing::Test {
  protected:
    UserLocale() { clear(); }
    ~UserLocale() override { clear(); }
    static void clear() {
        for (const char* name : {"VLGS_LOCALE", "VLGS_CODEPAGE", "LC_ALL", "LC_CTYPE", "LC_TIME",
                                 "LC_NUMERIC", "LC_MESSAGES", "LANG", "LANGUAGE"})
            unsetenv(name);
    }
    static void set(std::initializer_list<std::pair<const char*, const char*>> variables) {
        clear();
        for (const auto& [name, value] : variables)
            setenv(name, value, 1);
    }
    static std::string user() { return utf8(Locale::user().name()); }
};

TEST_F(UserLocale, IsNamedByTheFirstVariableThatIsSet) {
    EXPECT_EQ(user(), "en-US");
    constexpr std::pair<const char*, const char*> steps[] = {{"LC_NUMERIC", "it_IT"},
                                                             {"LANG", "fr_FR.UTF-8"},
                                                             {"LC_TIME", "pl_PL.UTF-8"},
                                                             {"LC_ALL", "sv_SE.UTF-8"},
                                                             {"VLGS_LOCALE", "ja-JP"}};
    for (const auto& [variable, value] : steps) {
        setenv(variable, value, 1);
        EXPECT_EQ(user(), utf8(Locale::named(value).name())) << variable;
    }
    setenv("VLGS_LOCALE", "", 1);
    EXPECT_EQ(user(), "sv-SE");
}

TEST_F(UserLocale, TakesNumbersFromLcNumericAndDatesFromLcTime) {
    setenv("LANG", "en_US.UTF-8", 1);
    setenv("LC_TIME", "en_GB.UTF-8", 1);
    setenv("LC_NUMERIC", "de_DE.UTF-8", 1);
    const auto locale = Locale::user();
    EXPECT_EQ(item(locale, 14) + item(locale, 15) + item(locale, 12), ",.;");
    EXPECT_EQ(item(locale, 31), "dd/MM/yyyy");
    EXPECT_EQ(utf8(locale.name()), "en-GB");
}

TEST_F(UserLocale, HasItsUsualCodePage) {
    constexpr std::pair<const char*, unsigned> pages[] = {
        {"de-DE", 1252}, {"pl-PL", 1250}, {"ru-RU", 1251}, {"sr-Latn-RS", 1250}, {"sr-Cyrl-RS", 1251},
        {"el-GR", 1253}, {"tr-TR", 1254}, {"he-IL", 1255}, {"ar-SA", 1256},      {"lt-LT", 1257},
        {"vi-VN", 1258}, {"th-TH", 874},  {"ja-JP", 932},  {"zh-CN", 936},       {"ko-KR", 949},
        {"zh-TW", 950},  {"hi-IN", 1252}, {"en-US", 1252}};
    for (const auto& [name, page] : pages) {
        setenv("VLGS_LOCALE", name, 1);
        EXPECT_EQ(CodePage::system().number(), page) << name;
    }
    for (const auto& [value, page, isKnown] : {std::tuple("65001", 65001u, true),
                                               {"1251", 1251u, true},
                                               {"CP850", 850u, true},
                                               {"windows-1250", 1250u, true},
                                               {"ISO 8859-1", 28591u, true},
                                               {"iso-8859-15", 28605u, true},
                                               {"KOI8-R", 20866u, true},
                                               {"utf8", 65001u, true},
                                               {"4711", 1252u, false},
                                               {"1250x", 1252u, false},
                                               {"cp", 1252u, false},
                                               {"", 1252u, true}}) {
        setenv("VLGS_CODEPAGE", value, 1);
        EXPECT_EQ(CodePage::system().number(), page) << value;
        EXPECT_EQ(unknownSettings().empty(), isKnown) << value;
    }
}

TEST_F(UserLocale, LeavesTheCodePageToTheLanguageOfTheSystem) {
    set({{"LANG", "ru_RU.UTF-8"}, {"LC_TIME", "en_GB.UTF-8"}, {"LC_NUMERIC", "en_GB.UTF-8"}});
    EXPECT_EQ(CodePage::system().number(), 1251u);
    EXPECT_EQ(utf8(Locale::system().name()) + user(), "ru-RUen-GB");
    set({{"LC_TIME", "ru_RU"}, {"LC_MESSAGES", "ru_RU"}});
    EXPECT_EQ(CodePage::system().number(), 1252u);
    set({{"LANG", "ru_RU"}, {"LC_CTYPE", "C.UTF-8"}});
    EXPECT_EQ(CodePage::system().number(), 1251u);
    set({{"LANG", "ru_RU"}, {"LC_CTYPE", "pl_PL"}});
    EXPECT_EQ(CodePage::system().number(), 1250u);
    set({{"LC_ALL", "C"}, {"LC_CTYPE", "pl_PL"}, {"LANG", "ru_RU"}});
    EXPECT_EQ(CodePage::system().number(), 1252u);
}

TEST_F(UserLocale, ToldTogetherWithTheLanguagesOfTexts) {
    using Names = std::vector<String>;
    set({{"LANG", "en_US.UTF-8"}, {"LC_TIME", "de_DE.UTF-8"}, {"VLGS_LOCALE", "fr-FR"}});
    EXPECT_EQ(messageLanguages(), (Names{u"en_US.UTF-8", u"fr-FR"}));
    set({{"LANG", "en_US"}, {"LC_MESSAGES", "fr_FR"}, {"LANGUAGE", "pt:de_AT::"}});
    EXPECT_EQ(messageLanguages(), (Names{u"pt", u"de_AT", u"fr_FR"}));
    set({{"LC_ALL", "C"}, {"LC_MESSAGES", "fr_FR"}, {"LANGUAGE", "de"}});
    EXPECT_EQ(messageLanguages(), (Names{u"C"}));
    clear();
    EXPECT_EQ(messageLanguages(), Names());
}

TEST_F(UserLocale, IsToldWhereItsNameIsNotKnown) {
    for (const auto& [name, isKnown] : {std::pair("xx-YY", false),
                                        {"klingon", false},
                                        {"de-XX", true},
                                        {"C.UTF-8", true},
                                        {"POSIX", true},
                                        {"sr_RS@latin", true},
                                        {"", true}}) {
        setenv("VLGS_LOCALE", name, 1);
        EXPECT_EQ(unknownSettings().empty(), isKnown) << name;
    }
    set({{"VLGS_LOCALE", "xx"}, {"VLGS_CODEPAGE", "y"}});
    EXPECT_EQ(unknownSettings().toUtf8(), "VLGS_LOCALE=xx is not known here; en-US is used\n"
                                          "VLGS_CODEPAGE=y is not known here; code page 1252 is used");
}

TEST(Locale, ItemsAnswerByNumber) {
    const auto german = Locale::named("de-DE");
    EXPECT_EQ(item(german, 0x04), "Deutsch");
    EXPECT_EQ(item(german, 0x1001), "German");
    EXPECT_EQ(item(german, 0x14), "€");
    EXPECT_EQ(item(german, 0x2A), "Montag");
    EXPECT_EQ(item(german, 0x30), "Sonntag");
    EXPECT_EQ(item(german, 0x37), "So");
    EXPECT_EQ(item(german, 0x38), "Januar");
    EXPECT_EQ(item(german, 0x46), "Mär");
    EXPECT_EQ(item(german, 0x50), "");
    EXPECT_EQ(item(german, 0x51), "-");
    EXPECT_EQ(item(german, 0x100C), "0");
    EXPECT_EQ(item(german, static_cast<std::int32_t>(0x80000020)), "dddd, d. MMMM yyyy");
    for (std::int32_t unknown : {0, 1, -1, 0x67, 0x2000, 0x7FFFFFFF, 0x10000020, 0x20000020})
        EXPECT_FALSE(german.item(unknown)) << unknown;
    const auto russian = Locale::named("ru-RU");
    EXPECT_EQ(item(russian, 0x3A), "март");
    EXPECT_EQ(item(russian, 0x1000003A), "марта");
    EXPECT_EQ(utf8(russian.monthName(3, NameForm::Genitive)), "марта");
    EXPECT_EQ(utf8(german.weekdayName(1)), "Sonntag");
    EXPECT_EQ(utf8(german.weekdayName(7, NameForm::Abbreviated)), "Sa");
    EXPECT_EQ(german.dateOrder(), DateOrder::DayMonthYear);
    EXPECT_EQ(Locale::named("ja").dateOrder(), DateOrder::YearMonthDay);
    EXPECT_EQ(german.firstDayOfWeek(), 2);
    EXPECT_EQ(Locale::named("en-US").firstDayOfWeek(), 1);
    EXPECT_EQ(item(Locale::named("hi-IN"), 0x10), "3;2;0");
}

/// Whether a pattern holds only tokens of the given letters, each at most as long as its row says, and closed
/// literals.
bool isPattern(std::u16string_view pattern, std::u16string_view letters, std::size_t longest) {
    for (std::size_t at = 0; at < pattern.size();) {
        const char16_t character = pattern[at];
        if (character == u'\'') {
            const auto end = pattern.find(u'\'', at + 1);
            if (end == pattern.npos)
                return false;
            at = end + 1;
            continue;
        }
        const auto end = std::min(pattern.find_first_not_of(character, at), pattern.size());
        const bool letter =
            (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z');
        if (letter && (letters.find(character) == letters.npos || end - at > longest))
            return false;
        at = end;
    }
    return true;
}

bool has(std::u16string_view text, std::u16string_view part) {
    return text.find(part) != text.npos;
}

TEST(Locale, EveryLocaleIsWholeAndItsPatternsUseTheKnownTokens) {
    const auto locales = Locale::all();
    EXPECT_GT(locales.size(), 400u);
    std::set<std::string> names;
    for (const auto& locale : locales) {
        const auto name = utf8(locale.name());
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_EQ(utf8(Locale::named(name).name()), name);
        for (std::int32_t number : {0x04, 0x0C, 0x0E, 0x0F, 0x14, 0x1D, 0x1E, 0x28, 0x29, 0x51, 0x1001})
            EXPECT_NE(item(locale, number), "") << name << ' ' << number;
        const auto shortDate = locale.text(LocaleItem::ShortDatePattern);
        const auto longDate = locale.text(LocaleItem::LongDatePattern);
        const auto time = locale.text(LocaleItem::TimePattern);
        EXPECT_TRUE(isPattern(shortDate, u"dMy", 4) && has(shortDate, u"yyyy") && has(shortDate, u"M") &&
                    has(shortDate, u"d"))
            << name << ' ' << utf8(shortDate);
        EXPECT_TRUE(isPattern(longDate, u"dMy", 4) && has(longDate, u"yyyy") && has(longDate, u"M"))
            << name << ' ' << utf8(longDate);
        EXPECT_TRUE(isPattern(time, u"hHmst", 2) && has(time, u"m") && has(time, u"s") &&
                    has(time, u"h") == has(time, u"tt") && has(time, u"h") != has(time, u"H"))
            << name << ' ' << utf8(time);
        EXPECT_NE(item(locale, 0x28), item(locale, 0x29)) << name;
        for (auto form :
             {NameForm::Full, NameForm::Abbreviated, NameForm::Genitive, NameForm::AbbreviatedGenitive}) {
            std::set<std::string> months;
            std::set<std::string> weekdays;
            for (int month = 1; month <= 12; ++month)
                months.insert(utf8(locale.monthName(month, form)));
            for (int weekday = 1; weekday <= 7; ++weekday)
                weekdays.insert(utf8(locale.weekdayName(weekday, form)));
            EXPECT_EQ(months.size(), 12u) << name;
            EXPECT_EQ(weekdays.size(), 7u) << name;
            EXPECT_FALSE(months.contains("") || weekdays.contains("")) << name;
        }
        const bool comma = item(locale, 0x0E) == ",";
        EXPECT_EQ(item(locale, 0x0C), comma || name.starts_with("ar-") ? ";" : ",") << name;
        EXPECT_TRUE(CodePage::find(locale.codePage())) << name;
        for (std::int32_t number = 0; number < 0x1020; ++number) {
            const auto text = locale.item(number).value_or(String()).toUtf8();
            for (const char* forbidden : {"\u00A0", "\u202F", "\u200E", "\u200F", "\u061C"})
                EXPECT_EQ(text.find(forbidden), text.npos) << name << ' ' << number;
        }
    }
}

TEST(Clock, TellsTheLocalTime) {
    const std::time_t before = std::time(nullptr);
    const auto now = localNow();
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    parts.tm_isdst = -1;
    EXPECT_LE(std::abs(std::difftime(std::mktime(&parts), before)), 2.0);
}

} // namespace
} // namespace vlgs
