// SPDX-License-Identifier: MIT
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

// What the table holds is looked at as it is made: scripts/generate_locale_data.py.
TEST(Locale, EveryOneIsFoundByItsNameAndHasACodePage) {
    const auto locales = Locale::all();
    EXPECT_GT(locales.size(), 400u);
    std::set<String> names;
    for (const auto& locale : locales) {
        EXPECT_TRUE(names.insert(locale.name()).second) << utf8(locale.name());
        EXPECT_EQ(Locale::named(utf8(locale.name())).name(), locale.name());
        EXPECT_TRUE(CodePage::find(locale.codePage())) << utf8(locale.name());
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
