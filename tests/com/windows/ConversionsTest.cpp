// The run time's conversions against the operating system's own, over generated inputs, with the number and
// date signs of three locales.
#include "automation/Convert.h"
#include "base/Error.h"
#include "com/Ole.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>

namespace vlgs::com {
namespace {

/// The user's settings for the length of a scope.
class Settings {
  public:
    struct Values {
        const char* name;
        const wchar_t* decimal;
        const wchar_t* thousands;
        const wchar_t* date;
        const wchar_t* shortDate;
    };
    explicit Settings(const Values& values) {
        set(LOCALE_SDECIMAL, values.decimal);
        set(LOCALE_STHOUSAND, values.thousands);
        set(LOCALE_SMONDECIMALSEP, values.decimal); // read in numbers, too
        set(LOCALE_SMONTHOUSANDSEP, values.thousands);
        set(LOCALE_SDATE, values.date);
        set(LOCALE_SSHORTDATE, values.shortDate);
        forget();
    }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;
    ~Settings() {
        for (const auto& [item, before] : before_)
            SetLocaleInfoW(LOCALE_USER_DEFAULT, item, before.c_str());
        forget();
    }

  private:
    /// The platform remembers the signs of the locale that it read a number for last.
    static void forget() {
        LONG ignored;
        VarI4FromStr(const_cast<wchar_t*>(L"1"), MAKELCID(MAKELANGID(LANG_FINNISH, SUBLANG_DEFAULT), 0), 0,
                     &ignored);
    }
    void set(LCTYPE item, const wchar_t* value) {
        wchar_t before[80] = {};
        GetLocaleInfoW(LOCALE_USER_DEFAULT, item, before, 80);
        before_.emplace_back(item, before);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, item, value);
    }
    std::vector<std::pair<LCTYPE, std::wstring>> before_;
};

constexpr Settings::Values locales[] = {
    {"en-US", L".", L",", L"/", L"M/d/yyyy"},
    {"de-DE", L",", L".", L".", L"dd.MM.yyyy"},
    {"fr-FR", L",", L" ", L"/", L"dd/MM/yyyy"},
};

template <class Action>
auto valueOf(Action&& action) -> std::optional<decltype(action())> {
    try {
        return action();
    } catch (const Error&) {
        return std::nullopt;
    }
}

TEST(Conversions, WholeNumbersFromTextAreThePlatforms) {
    std::mt19937 random(1);
    for (const auto& locale : locales) {
        const Settings settings(locale);
        for (int i = 0; i < 3000; ++i) {
            // Digits with at most one sign in front and one decimal sign inside.
            std::wstring text = random() % 3 == 0 ? L"-" : L"";
            text += std::to_wstring(random() % 3000000000u);
            if (random() % 2)
                text += locale.decimal + std::to_wstring(random() % 1000);
            LONG wanted = 0;
            const HRESULT status = VarI4FromStr(text.data(), LOCALE_USER_DEFAULT, 0, &wanted);
            const auto found = valueOf([&] { return toLong(String(narrow(text.c_str()))); });
            ASSERT_EQ(found.has_value(), SUCCEEDED(status))
                << locale.name << " " << String(narrow(text.c_str())).toUtf8();
            if (found) {
                ASSERT_EQ(*found, wanted) << locale.name << " " << String(narrow(text.c_str())).toUtf8();
            }
        }
    }
}

TEST(Conversions, TextsOfNumbersAreThePlatforms) {
    std::mt19937_64 random(2);
    for (const auto& locale : locales) {
        const Settings settings(locale);
        for (int i = 0; i < 3000; ++i) {
            // Up to 14 digits: with 15 the platform here rounds some last digits another way.
            const double value = static_cast<double>(static_cast<std::int64_t>(random() % 20000000000000ull) -
                                                     10000000000000ll) /
                                 std::pow(10.0, static_cast<double>(random() % 8));
            BSTR wanted = nullptr;
            ASSERT_EQ(VarBstrFromR8(value, LOCALE_USER_DEFAULT, 0, &wanted), S_OK);
            EXPECT_EQ(toText(value).toUtf8(), toString(wanted).toUtf8()) << locale.name;
            SysFreeString(wanted);
        }
    }
}

TEST(Conversions, DatesFromTextAreThePlatforms) {
    std::mt19937 random(3);
    for (const auto& locale : locales) {
        const Settings settings(locale);
        for (int i = 0; i < 2000; ++i) {
            wchar_t text[40];
            const int year = 1930 + static_cast<int>(random() % 170);
            const int month = 1 + static_cast<int>(random() % 12);
            const int day = 1 + static_cast<int>(random() % 28);
            const bool monthFirst = locale.shortDate[0] == L'M';
            std::swprintf(text, 40, L"%d%ls%d%ls%d %d:%02d", monthFirst ? month : day, locale.date,
                          monthFirst ? day : month, locale.date, year, static_cast<int>(random() % 24),
                          static_cast<int>(random() % 60));
            DATE wanted = 0;
            const HRESULT status = VarDateFromStr(text, LOCALE_USER_DEFAULT, 0, &wanted);
            const auto found = valueOf([&] { return toDate(String(narrow(text))); });
            ASSERT_EQ(found.has_value(), SUCCEEDED(status))
                << locale.name << " " << String(narrow(text)).toUtf8();
            if (found) {
                ASSERT_NEAR(found->days, wanted, 1e-9) << locale.name << " " << String(narrow(text)).toUtf8();
            }
        }
    }
}

} // namespace
} // namespace vlgs::com
