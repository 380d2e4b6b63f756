// SPDX-License-Identifier: MIT
// Locales of the operating system, asked anew for every item, so that a change of the user's settings takes
// effect at once. The texts that were handed out are kept.
#include "platform/Locale.h"

#include "platform/windows/Host.h"

#include <array>
#include <mutex>
#include <set>
#include <string>

namespace vlgs {

using namespace windows;

struct Locale::Data {
    std::u16string name; // "" for the user's locale with the user's changes
    friend bool operator<(const Data& a, const Data& b) { return a.name < b.name; }
    const wchar_t* host() const noexcept {
        return name.empty() ? LOCALE_NAME_USER_DEFAULT : wide(name.c_str());
    }
};

namespace {

constexpr LCTYPE asNumber = LOCALE_RETURN_NUMBER;
constexpr LCTYPE firstWeekdayName = LOCALE_SDAYNAME1; // Monday
constexpr LCTYPE firstWeekdayAbbreviation = LOCALE_SABBREVDAYNAME1;

/// Keeps one copy of each value for as long as the process lives.
template <class T>
const T* kept(T value) {
    static std::mutex guard;
    static std::set<T> values;
    const std::lock_guard lock(guard);
    return &*values.insert(std::move(value)).first;
}

std::optional<std::u16string> itemOf(const wchar_t* locale, LCTYPE item) {
    if (item & asNumber)
        return std::nullopt; // the answer would be no text
    const int size = GetLocaleInfoEx(locale, item, nullptr, 0);
    if (size <= 0)
        return std::nullopt;
    std::u16string text(static_cast<std::size_t>(size), u'\0');
    const int written = GetLocaleInfoEx(locale, item, reinterpret_cast<wchar_t*>(text.data()), size);
    text.resize(static_cast<std::size_t>(written > 0 ? written - 1 : 0));
    return text;
}

std::u16string_view textOfItem(const wchar_t* locale, LCTYPE item) {
    return *kept(itemOf(locale, item).value_or(std::u16string()));
}

DWORD numberOf(const wchar_t* locale, LCTYPE item, DWORD fallback) {
    DWORD value = 0;
    const int size = GetLocaleInfoEx(locale, item | asNumber, reinterpret_cast<wchar_t*>(&value),
                                     sizeof value / sizeof(wchar_t));
    return size > 0 ? value : fallback;
}

/// The name in the form of the operating system, "de-DE": "de_DE.UTF-8@euro" loses its end.
std::u16string hostName(std::string_view name) {
    std::u16string result;
    for (const char c : name.substr(0, name.find_first_of(".@")))
        result += c == '_' ? u'-' : static_cast<char16_t>(c);
    return result;
}

BOOL CALLBACK collect(LPWSTR name, DWORD, LPARAM to) {
    if (*name)
        reinterpret_cast<std::vector<std::u16string>*>(to)->emplace_back(
            reinterpret_cast<const char16_t*>(name));
    return TRUE;
}

} // namespace

Locale Locale::user() {
    const Data& data = *kept(Data{});
    return Locale(data, data);
}

Locale Locale::system() {
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> name{};
    GetSystemDefaultLocaleName(name.data(), LOCALE_NAME_MAX_LENGTH);
    const Data& data = *kept(Data{reinterpret_cast<const char16_t*>(name.data())});
    return Locale(data, data);
}

Locale Locale::named(std::string_view name) {
    std::u16string wanted = hostName(name);
    // An unknown region leads to the language's own locale.
    while (!wanted.empty() && !IsValidLocaleName(wide(wanted.c_str())))
        wanted.resize(wanted.rfind(u'-') == wanted.npos ? 0 : wanted.rfind(u'-'));
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> full{};
    if (!wanted.empty() && ResolveLocaleName(wide(wanted.c_str()), full.data(), LOCALE_NAME_MAX_LENGTH) > 1)
        wanted = reinterpret_cast<const char16_t*>(full.data());
    const Data& data = *kept(Data{wanted.empty() ? u"en-US" : wanted});
    return Locale(data, data);
}

bool Locale::isKnown(std::string_view name) {
    const std::u16string wanted = hostName(name);
    const auto language = wanted.substr(0, wanted.find(u'-'));
    return language.empty() || language == u"C" || language == u"POSIX" ||
           IsValidLocaleName(wide(language.c_str()));
}

std::vector<String> messageLanguages() {
    // The names one after the other, each ended by a NUL.
    ULONG count = 0, size = 0;
    std::vector<String> names;
    if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &size))
        return names;
    std::u16string list(size, u'\0');
    if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, reinterpret_cast<wchar_t*>(list.data()),
                                     &size))
        return names;
    for (std::size_t from = 0; names.size() < count && from < list.size();) {
        const auto end = std::min(list.find(u'\0', from), list.size());
        names.emplace_back(std::u16string_view(list).substr(from, end - from));
        from = end + 1;
    }
    return names;
}

std::vector<Locale> Locale::all() {
    std::vector<std::u16string> names;
    EnumSystemLocalesEx(&collect, LOCALE_ALL, reinterpret_cast<LPARAM>(&names), nullptr);
    std::vector<Locale> result;
    for (auto& name : names) {
        const Data& data = *kept(Data{std::move(name)});
        result.push_back(Locale(data, data));
    }
    return result;
}

std::u16string_view Locale::name() const {
    return dates_->name.empty() ? textOfItem(dates_->host(), LOCALE_SNAME) : dates_->name;
}

std::optional<String> Locale::item(std::int32_t number) const {
    const auto text = itemOf(dates_->host(), static_cast<LCTYPE>(number));
    return text ? std::optional(String(*text)) : std::nullopt;
}

std::u16string_view Locale::text(LocaleItem item) const {
    return textOfItem(dates_->host(), static_cast<LCTYPE>(item));
}

std::u16string_view Locale::monthName(int month, NameForm form) const {
    const bool isShort = form == NameForm::Abbreviated || form == NameForm::AbbreviatedGenitive;
    LCTYPE item = (isShort ? LOCALE_SABBREVMONTHNAME1 : LOCALE_SMONTHNAME1) + static_cast<LCTYPE>(month - 1);
    if (form == NameForm::Genitive || form == NameForm::AbbreviatedGenitive) {
        const auto genitive = textOfItem(dates_->host(), item | LOCALE_RETURN_GENITIVE_NAMES);
        if (!genitive.empty())
            return genitive;
    }
    return textOfItem(dates_->host(), item);
}

std::u16string_view Locale::weekdayName(int weekday, NameForm form) const {
    const bool isShort = form == NameForm::Abbreviated || form == NameForm::AbbreviatedGenitive;
    const auto place = static_cast<LCTYPE>((weekday + 5) % 7);
    return textOfItem(dates_->host(), (isShort ? firstWeekdayAbbreviation : firstWeekdayName) + place);
}

DateOrder Locale::dateOrder() const {
    return static_cast<DateOrder>(numberOf(dates_->host(), LOCALE_IDATE, 0) % 3);
}

int Locale::firstDayOfWeek() const {
    const DWORD afterMonday = numberOf(dates_->host(), LOCALE_IFIRSTDAYOFWEEK, 6);
    return static_cast<int>((afterMonday + 1) % 7 + 1);
}

unsigned Locale::codePage() const {
    const DWORD page = numberOf(dates_->host(), LOCALE_IDEFAULTANSICODEPAGE, 1252);
    return page < 3 ? 1252 : page; // languages without a page of their own tell 0
}

} // namespace vlgs
