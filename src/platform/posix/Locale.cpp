// SPDX-License-Identifier: MIT
// Locales from the compiled-in table.
#include "platform/Locale.h"

#include "base/Ascii.h"
#include "platform/posix/UserEnvironment.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

namespace vlgs {

namespace {

/// Number of a text in the table's pool.
using TextNumber = std::uint16_t;

constexpr std::size_t monthCount = 12;
constexpr std::size_t weekdayCount = 7;
constexpr std::size_t itemCount = 62;
constexpr std::size_t firstWeekdayName = 4 * monthCount;

using NameBlock = std::array<TextNumber, firstWeekdayName + 3 * weekdayCount>;

/// A name under which a locale is found, and its place in the table.
struct Key {
    std::string_view name;
    std::uint16_t record;
};

} // namespace

struct Locale::Data {
    std::uint16_t nameBlock;
    std::array<TextNumber, itemCount> items;
};

namespace {

using Record = Locale::Data;

#include "platform/posix/generated_locale_data.inc"

static_assert(std::size(itemNumbers) == itemCount);

// Numbers of items that are the names of months and weekdays.
constexpr std::int32_t firstLongMonth = 0x38;
constexpr std::int32_t firstShortMonth = 0x44;
constexpr std::int32_t firstLongWeekday = 0x2A; // Monday
constexpr std::int32_t firstShortWeekday = 0x31;
constexpr std::int32_t firstShortestWeekday = 0x60;
constexpr std::int32_t lastShortestWeekday = 0x66;

constexpr std::int32_t nameItem = 0x5C;
constexpr std::int32_t dateOrderItem = 0x21;
constexpr std::int32_t firstWeekdayItem = 0x100C;
constexpr std::int32_t codePageItem = 0x1004;

// Flags of item numbers.
constexpr std::uint32_t noUserOverride = 0x80000000;
constexpr std::uint32_t inAnsiPage = 0x40000000;
constexpr std::uint32_t genitive = 0x10000000;

std::u16string_view textOf(TextNumber number) {
    return {pool + textStarts[number], textStarts[number + 1] - textStarts[number]};
}

/// The column of an item, `itemCount` when there is none.
std::size_t columnOf(std::int32_t item) {
    const auto* found = std::lower_bound(std::begin(itemNumbers), std::end(itemNumbers), item);
    const bool known = found != std::end(itemNumbers) && *found == item;
    return known ? static_cast<std::size_t>(found - std::begin(itemNumbers)) : itemCount;
}

bool concernsNumbers(std::int32_t item) {
    return (item >= 0x0C && item <= 0x1C) || item == 0x50 || item == 0x51 || item == 0x76 || item == 0x77 ||
           item == 0x1007 || item == 0x1008 || item == 0x1010 || item == 0x1014;
}

unsigned numberIn(std::u16string_view digits) {
    unsigned value = 0;
    for (char16_t digit : digits)
        value = value * 10 + (digit - u'0');
    return value;
}

/// The parts of a locale name that choose a locale, in small letters.
struct Tag {
    std::string language;
    std::string script;
    std::string region;
    bool valencian = false;

    explicit Tag(std::string_view name);
    bool add(const std::string& part);
    void modify(std::string_view modifier);
};

std::string inSmallLetters(std::string_view text) {
    std::string small(text);
    for (char& character : small)
        character = static_cast<char>(ascii::toLower(character));
    return small;
}

// "de-DE", "sr-Latn-RS" and "sr_RS.UTF-8@latin" alike.
Tag::Tag(std::string_view name) {
    const auto main = name.substr(0, name.find_first_of(".@"));
    const auto at = name.find('@');
    for (std::size_t from = 0; from <= main.size();) {
        const auto end = std::min(main.find_first_of("-_", from), main.size());
        auto part = inSmallLetters(main.substr(from, end - from));
        from = end + 1;
        if (language.empty())
            language = std::move(part);
        else if (!add(part))
            break;
    }
    if (at != name.npos)
        modify(inSmallLetters(name.substr(at + 1)));
}

// False where the part begins what does not tell locales apart.
bool Tag::add(const std::string& part) {
    if (part.size() == 4 && std::ranges::all_of(part, ascii::isLetter))
        script = part;
    else if ((part.size() == 2 && std::ranges::all_of(part, ascii::isLetter)) ||
             (part.size() == 3 && std::ranges::all_of(part, ascii::isDigit)))
        region = part;
    else if (part == "valencia")
        valencian = true;
    return part.size() != 1;
}

void Tag::modify(std::string_view modifier) {
    static constexpr std::pair<std::string_view, std::string_view> scripts[] = {
        {"latin", "latn"}, {"cyrillic", "cyrl"}, {"devanagari", "deva"}, {"arabic", "arab"}};
    for (const auto& [name, code] : scripts)
        if (modifier == name)
            script = code;
    valencian = valencian || modifier == "valencia";
}

const Record* lookUp(const std::string& name) {
    const auto* found = std::ranges::lower_bound(keys, std::string_view(name), {}, &Key::name);
    return found != std::end(keys) && found->name == name ? &records[found->record] : nullptr;
}

const Record* findRecord(const Tag& tag) {
    std::array<std::string, 5> names;
    if (tag.valencian)
        names[0] = tag.language + "-" + (tag.region.empty() ? "es" : tag.region) + "-valencia";
    if (!tag.script.empty()) {
        names[1] = tag.language + "-" + tag.script + "-" + tag.region;
        names[2] = tag.language + "-" + tag.script;
    }
    names[3] = tag.language + "-" + tag.region;
    names[4] = tag.language;
    for (const auto& candidate : names)
        if (const auto* record = lookUp(candidate))
            return record;
    return nullptr;
}

const Record& recordOf(std::string_view name) {
    const auto* record = findRecord(Tag(name));
    return record ? *record : records[defaultRecord];
}

/// Whether a name asks for no language at all: "C", "C.UTF-8", "POSIX", "".
bool isWithoutLanguage(const Tag& tag) {
    return tag.language.empty() || tag.language == "c" || tag.language == "posix";
}

const std::string& either(const std::string& first, const std::string& second) {
    return first.empty() ? second : first;
}

} // namespace

Locale Locale::user() {
    thread_local std::uint32_t generation = 0;
    thread_local const Data* dates = &records[defaultRecord];
    thread_local const Data* numbers = &records[defaultRecord];
    const auto& set = userEnvironment();
    if (generation != set.generation) {
        // LC_NUMERIC alone tells the language too, and LC_TIME the numbers.
        const auto decided = [&](const std::string& own, const std::string& other) -> const Data& {
            return recordOf(either(set.locale, either(set.all, either(own, either(set.language, other)))));
        };
        dates = &decided(set.time, set.numeric);
        numbers = &decided(set.numeric, set.time);
        generation = set.generation;
    }
    return Locale(*dates, *numbers);
}

Locale Locale::system() {
    thread_local std::uint32_t generation = 0;
    thread_local const Data* record = &records[defaultRecord];
    const auto& set = userEnvironment();
    if (generation != set.generation) {
        // Interpreters set LC_CTYPE=C.UTF-8 by themselves where the locale of LANG is not installed.
        const bool tells = !isWithoutLanguage(Tag(set.characters));
        record = &recordOf(either(set.locale, either(set.all, tells ? set.characters : set.language)));
        generation = set.generation;
    }
    return Locale(*record, *record);
}

bool Locale::isKnown(std::string_view name) {
    const Tag tag(name);
    return isWithoutLanguage(tag) || findRecord(tag);
}

std::vector<String> messageLanguages() {
    const auto& set = userEnvironment();
    std::vector<String> names;
    const auto add = [&](std::string_view name) {
        if (!name.empty())
            names.push_back(String::fromUtf8(name));
    };
    const bool isOff = set.all == "C" || set.all == "POSIX";
    for (std::string_view list = set.languages; !isOff && !list.empty();) {
        const auto end = std::min(list.find(':'), list.size());
        add(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    add(either(set.all, either(set.messages, set.language)));
    add(set.locale);
    return names;
}

Locale Locale::named(std::string_view name) {
    const auto& record = recordOf(name);
    return Locale(record, record);
}

std::vector<Locale> Locale::all() {
    std::vector<Locale> locales;
    for (const auto& record : records)
        locales.push_back(Locale(record, record));
    return locales;
}

std::u16string_view Locale::textAt(std::int32_t item) const {
    return textOf((concernsNumbers(item) ? numbers_ : dates_)->items[columnOf(item)]);
}

std::u16string_view Locale::name() const {
    return textAt(nameItem);
}
std::u16string_view Locale::text(LocaleItem item) const {
    return textAt(static_cast<std::int32_t>(item));
}

std::optional<String> Locale::item(std::int32_t number) const {
    const auto bits = static_cast<std::uint32_t>(number) & ~(noUserOverride | inAnsiPage);
    const bool besideDay = (bits & genitive) != 0;
    const auto item = static_cast<std::int32_t>(bits & ~genitive);
    const auto month = [&](std::int32_t first, NameForm plain, NameForm beside) {
        return String(monthName(item - first + 1, besideDay ? beside : plain));
    };
    if (item >= firstLongMonth && item < firstShortMonth)
        return month(firstLongMonth, NameForm::Full, NameForm::Genitive);
    if (item >= firstShortMonth && item < firstShortMonth + static_cast<std::int32_t>(monthCount))
        return month(firstShortMonth, NameForm::Abbreviated, NameForm::AbbreviatedGenitive);
    if (besideDay)
        return std::nullopt;
    const auto weekday = [&](std::int32_t first, std::size_t form) {
        const auto fromSunday = static_cast<std::size_t>(item - first + 1) % weekdayCount;
        return String(
            textOf(nameBlocks[dates_->nameBlock][firstWeekdayName + form * weekdayCount + fromSunday]));
    };
    if (item >= firstLongWeekday && item < firstShortWeekday)
        return weekday(firstLongWeekday, 0);
    if (item >= firstShortWeekday && item < firstLongMonth)
        return weekday(firstShortWeekday, 1);
    if (item >= firstShortestWeekday && item <= lastShortestWeekday)
        return weekday(firstShortestWeekday, 2);
    if (columnOf(item) == itemCount)
        return std::nullopt;
    return String(textAt(item));
}

std::u16string_view Locale::monthName(int month, NameForm form) const {
    const auto place = static_cast<std::size_t>(form) * monthCount + static_cast<std::size_t>(month - 1);
    return textOf(nameBlocks[dates_->nameBlock][place]);
}

std::u16string_view Locale::weekdayName(int weekday, NameForm form) const {
    const bool full = form == NameForm::Full || form == NameForm::Genitive;
    const auto place = firstWeekdayName + (full ? 0 : weekdayCount) + static_cast<std::size_t>(weekday - 1);
    return textOf(nameBlocks[dates_->nameBlock][place]);
}

DateOrder Locale::dateOrder() const {
    return static_cast<DateOrder>(numberIn(textAt(dateOrderItem)));
}

int Locale::firstDayOfWeek() const {
    // The item counts from Monday, 0.
    return static_cast<int>((numberIn(textAt(firstWeekdayItem)) + 1) % weekdayCount + 1);
}

unsigned Locale::codePage() const {
    return numberIn(textAt(codePageItem));
}

} // namespace vlgs
