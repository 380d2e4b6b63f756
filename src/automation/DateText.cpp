#include "automation/DateText.h"

#include "automation/NumberText.h"
#include "base/CaseFold.h"
#include "base/Dates.h"
#include "base/Error.h"
#include "platform/Clock.h"
#include "platform/Locale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace vlgs {

namespace {

constexpr bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
constexpr bool isBlank(char16_t c) {
    return c == u' ' || c == u'\u00A0' || c == u'\u202F';
}
// A letter of the scripts that part words by blanks and have two cases: Latin, Greek, Cyrillic, Armenian.
constexpr bool isLetter(char16_t c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') ||
           (c >= u'\u00C0' && c <= u'\u0588' && c != u'\u00D7' && c != u'\u00F7') ||
           (c >= u'\u1E00' && c <= u'\u1FFF');
}

std::u16string_view skipBlanks(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::u16string_view withoutStrays(std::u16string_view text) {
    const auto stray = [](char16_t c) { return isBlank(c) || c == u','; };
    while (!text.empty() && stray(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && stray(text.back()))
        text.remove_suffix(1);
    return text;
}

struct Number {
    int value = 0;
    int digits = 0;
};

// A run of digits; ten or more of them are no part of a date.
std::optional<Number> takeNumber(std::u16string_view& text) {
    Number number;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        if (++number.digits > 9)
            return std::nullopt;
        number.value = number.value * 10 + (text.front() - u'0');
    }
    return number.digits > 0 ? std::optional(number) : std::nullopt;
}

// ---- Names
// --------------------------------------------------------------------------------------------------

// The length of `name` where the text begins with it as a whole word, else 0.
std::size_t lengthOfWord(std::u16string_view text, std::u16string_view name) {
    const auto size = name.size();
    if (size == 0 || text.size() < size || !equalIgnoringCase(text.substr(0, size), name))
        return 0;
    const bool cut = text.size() > size && ((isLetter(text[size - 1]) && isLetter(text[size])) ||
                                            (isDigit(text[size - 1]) && isDigit(text[size])));
    return cut ? 0 : size;
}

constexpr NameForm nameForms[] = {NameForm::Full, NameForm::Genitive, NameForm::Abbreviated,
                                  NameForm::AbbreviatedGenitive};

// The month whose longest name, in the user's language or in English, begins the text; 0 for none.
int takeMonth(std::u16string_view& text, const Locale& locale) {
    std::size_t longest = 0;
    int month = 0;
    for (const Locale& language : {locale, Locale::named("en-US")})
        for (int m = 1; m <= 12; ++m)
            for (const NameForm form : nameForms) {
                auto size = lengthOfWord(text, language.monthName(m, form));
                if (size == 0 && language.monthName(m, form).ends_with(u'.'))
                    size = lengthOfWord(
                        text, language.monthName(m, form).substr(0, language.monthName(m, form).size() - 1));
                if (size > longest) {
                    longest = size;
                    month = m;
                }
            }
    text.remove_prefix(longest);
    return month;
}

// Whether the text began with the name of a weekday in the user's language, which is then taken.
bool takeWeekday(std::u16string_view& text, const Locale& locale) {
    std::size_t longest = 0;
    for (int weekday = 1; weekday <= 7; ++weekday)
        for (const NameForm form : {NameForm::Full, NameForm::Abbreviated})
            longest = std::max(longest, lengthOfWord(text, locale.weekdayName(weekday, form)));
    text.remove_prefix(longest);
    return longest > 0;
}

enum class Half { None, Morning, Afternoon };

// A designator of either half of the day as the locale writes it, also without its dots or blanks, or as
// English does.
Half takeHalf(std::u16string_view& text, const Locale& locale) {
    std::size_t longest = 0;
    Half half = Half::None;
    const auto offer = [&](std::u16string_view name, Half which) {
        if (const auto size = lengthOfWord(text, name); size > longest) {
            longest = size;
            half = which;
        }
    };
    const auto offerForms = [&](std::u16string_view name, Half which) {
        offer(name, which);
        std::u16string form(name);
        std::erase_if(form, isBlank);
        offer(form, which);
        std::erase(form, u'.');
        offer(form, which);
    };
    offerForms(locale.text(LocaleItem::Morning), Half::Morning);
    offerForms(locale.text(LocaleItem::Afternoon), Half::Afternoon);
    for (const std::u16string_view name : {u"AM", u"A", u"a.m."})
        offer(name, Half::Morning);
    for (const std::u16string_view name : {u"PM", u"P", u"p.m."})
        offer(name, Half::Afternoon);
    text.remove_prefix(longest);
    return half;
}

// ---- Days and times
// -----------------------------------------------------------------------------------------

struct Day {
    int year, month, day;
};
struct Time {
    int hour = 0, minute = 0, second = 0;
};

std::optional<Day> validDay(int year, int month, int day) {
    return isDay(year, month, day) ? std::optional(Day{year, month, day}) : std::nullopt;
}

std::optional<int> yearOf(Number number) {
    if (number.digits <= 2)
        return fullYear(number.value);
    return number.value >= 100 && number.value <= 9999 ? std::optional(number.value) : std::nullopt;
}

std::optional<Day> validDay(Number year, Number month, Number day) {
    const auto full = yearOf(year);
    return full && month.digits <= 2 && day.digits <= 2 ? validDay(*full, month.value, day.value)
                                                        : std::nullopt;
}

std::optional<Time> validTime(Half half, int hour, int minute, int second) {
    if (hour > 23 || minute > 59 || second > 59 || (half == Half::Morning && hour > 12))
        return std::nullopt;
    if (half == Half::Morning && hour == 12)
        hour = 0;
    if (half == Half::Afternoon && hour < 12)
        hour += 12;
    return Time{hour, minute, second};
}

// What a text says, as far as it says it.
struct Moment {
    std::optional<Day> day;
    std::optional<Time> time;
};

Date dateOf(const Moment& moment) {
    const auto day = moment.day.value_or(Day{1899, 12, 30});
    const auto time = moment.time.value_or(Time{});
    return vlgs::dateOf(DateParts{day.year, day.month, day.day, time.hour, time.minute, time.second});
}

// ---- The user's own forms
// -----------------------------------------------------------------------------------

// Reads texts that have the form of one of the locale's own patterns, units and all: "2009年3月7日".
class PatternReader {
  public:
    enum class Weekdays { Drop, Keep };

    PatternReader(std::u16string_view pattern, const Locale& locale, Weekdays weekdays = Weekdays::Drop)
        : locale_(locale) {
        for (std::size_t i = 0; i < pattern.size();) {
            const char16_t c = pattern[i];
            auto end = std::min(pattern.find_first_not_of(c, i), pattern.size());
            if (c == u'\'') {
                end = std::min(pattern.find(u'\'', i + 1), pattern.size());
                add({u'\'', 0, pattern.substr(i + 1, end - i - 1)});
                ++end;
            } else if (std::u16string_view(u"dMyhHmst").find(c) == std::u16string_view::npos) {
                add({u'\0', 0, pattern.substr(i, end - i)});
            } else if (c != u't' && (c != u'd' || end - i <= 2 || weekdays == Weekdays::Keep)) {
                add({c, end - i, {}});
            } // designators may stand on either side of a time, whatever the pattern says
            i = end;
        }
    }

    // The same without the seconds and what stands before them.
    void dropSeconds() {
        const auto seconds = std::ranges::find(pieces_, u's', &Piece::letter);
        if (seconds == pieces_.end())
            return;
        const bool literal = seconds != pieces_.begin() && (seconds - 1)->size == 0;
        pieces_.erase(seconds - literal, seconds + 1);
    }

    // The same without a year in front and its unit, for this year's days: "3月7日". False for a pattern that
    // begins otherwise.
    bool dropYear(int thisYear) {
        if (pieces_.size() < 2 || pieces_[0].letter != u'y' || pieces_[1].letter != u'\'')
            return false;
        pieces_.erase(pieces_.begin(), pieces_.begin() + 2);
        year_ = Number{thisYear, 4};
        return true;
    }

    // Reads the beginning of the text; `text` is then what follows.
    std::optional<Moment> read(std::u16string_view& text) {
        auto rest = text;
        std::optional<Number> year = year_, month, day, hour, minute, second;
        int name = 0;
        Half half = std::ranges::find(pieces_, u'm', &Piece::letter) == pieces_.end()
                        ? Half::None
                        : takeHalf(rest, locale_);
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            const auto& [letter, size, literal] = pieces_[i];
            if (letter == u'\0' || letter == u'\'') {
                const bool edge = i == 0 || i + 1 == pieces_.size();
                const bool taken =
                    (letter == u'\'' && takeQuoted(rest, literal)) || takeLiteral(rest, literal);
                if (!taken && !edge)
                    return std::nullopt;
                continue;
            }
            rest = skipBlanks(rest);
            if (letter == u'd' && size > 2) {
                if (!takeWeekday(rest, locale_))
                    return std::nullopt;
                continue;
            }
            if (letter == u'M' && size > 2) {
                name = takeMonth(rest, locale_);
                if (name == 0)
                    return std::nullopt;
                continue;
            }
            const auto number = takeNumber(rest);
            if (!number || (letter == u'y' ? size > 2 && number->digits < 3 : number->digits > 2))
                return std::nullopt;
            (letter == u'y'   ? year
             : letter == u'M' ? month
             : letter == u'd' ? day
             : letter == u'm' ? minute
             : letter == u's' ? second
                              : hour) = number;
        }
        Moment moment;
        if (hour) {
            if (half == Half::None)
                half = takeHalfBehind(rest);
            moment.time = validTime(half, hour->value, minute.value_or(Number{}).value,
                                    second.value_or(Number{}).value);
        } else if (year && day && (month || name)) {
            moment.day = validDay(*year, month.value_or(Number{name, 2}), *day);
        }
        if (!moment.day && !moment.time)
            return std::nullopt;
        text = rest;
        return moment;
    }

  private:
    struct Piece {
        char16_t letter; // NUL or ' for literal text
        std::size_t size;
        std::u16string_view literal;
    };

    Half takeHalfBehind(std::u16string_view& text) const {
        auto rest = skipBlanks(text);
        const Half half = takeHalf(rest, locale_);
        if (half != Half::None)
            text = rest;
        return half;
    }

    // Commas and blanks where a weekday name stood at the pattern's beginning are dropped with it.
    void add(Piece piece) {
        if (!pieces_.empty() || piece.size > 0 || piece.letter == u'\'')
            pieces_.push_back(piece);
    }
    static bool takeLiteral(std::u16string_view& text, std::u16string_view literal) {
        auto rest = text;
        while (!literal.empty()) {
            if (isBlank(literal.front())) {
                literal = skipBlanks(literal);
                rest = skipBlanks(rest);
            } else if (!rest.empty() && foldCase(rest.front()) == foldCase(literal.front())) {
                literal.remove_prefix(1);
                rest.remove_prefix(1);
            } else {
                return false;
            }
        }
        text = rest;
        return true;
    }
    // A quoted text with the quotation marks that the formatting function leaves around it.
    static bool takeQuoted(std::u16string_view& text, std::u16string_view literal) {
        auto rest = skipBlanks(text);
        if (!rest.starts_with(u'\''))
            return false;
        rest.remove_prefix(1);
        if (!takeLiteral(rest, literal) || !rest.starts_with(u'\''))
            return false;
        text = rest.substr(1);
        return true;
    }

    const Locale& locale_;
    std::vector<Piece> pieces_;
    std::optional<Number> year_; // of days without one
};

// ---- Everything else
// ----------------------------------------------------------------------------------------

struct Item {
    enum Kind : std::uint8_t { Number, Month, Morning, Afternoon, Colon, Separator, Blank } kind;
    vlgs::Number number;
    char16_t separator = 0;
};

// The text as items; nothing for a text with anything that no date or time holds.
class Lexer {
  public:
    static constexpr std::size_t limit = 32; // no date or time has so many items

    Lexer(std::u16string_view text, const Locale& locale) : rest_(text), locale_(locale) {}

    std::optional<std::vector<Item>> items() {
        std::vector<Item> items;
        while (!rest_.empty()) {
            auto item = next();
            if (!item || items.size() == limit)
                return std::nullopt;
            items.push_back(*item);
        }
        return items;
    }

  private:
    std::optional<Item> next() {
        const char16_t c = rest_.front();
        if (isDigit(c)) {
            const auto number = takeNumber(rest_);
            return number ? std::optional(Item{Item::Number, *number}) : std::nullopt;
        }
        if (isBlank(c)) {
            rest_ = skipBlanks(rest_);
            return Item{Item::Blank, {}};
        }
        if (const auto word = name())
            return word;
        if (c == u':') {
            rest_.remove_prefix(1);
            return Item{Item::Colon, {}};
        }
        const auto own = locale_.text(LocaleItem::DateSeparator);
        const auto size = !own.empty() && rest_.starts_with(own) ? own.size() : 1;
        if (size == 1 && std::u16string_view(u"/-.,").find(c) == std::u16string_view::npos &&
            !rest_.starts_with(own))
            return std::nullopt;
        rest_.remove_prefix(size);
        return Item{Item::Separator, {}, c};
    }

    // A month or a designator, whichever is longer: in Arabic the afternoon begins the name of March.
    std::optional<Item> name() {
        auto behindHalf = rest_;
        auto behindMonth = rest_;
        const Half half = takeHalf(behindHalf, locale_);
        const int month = takeMonth(behindMonth, locale_);
        rest_ = behindMonth.size() < behindHalf.size() ? behindMonth : behindHalf;
        if (month != 0 && rest_.size() == behindMonth.size())
            return Item{Item::Month, {month, 0}};
        if (half == Half::None)
            return std::nullopt;
        return Item{half == Half::Morning ? Item::Morning : Item::Afternoon, {}};
    }

    std::u16string_view rest_;
    const Locale& locale_;
};

bool isHalf(const Item& item) {
    return item.kind == Item::Morning || item.kind == Item::Afternoon;
}

// Finds the one time of day among the items and cuts it out: [half] hour [: minute [: second]] [half], with
// at least a colon or a half of the day. False when the items hold a time that is none, or more than one.
class TimeFinder {
  public:
    explicit TimeFinder(std::vector<Item>& items) : items_(items) {}

    bool find(std::optional<Time>& time) {
        const auto anchor = std::ranges::find_if(
            items_, [](const Item& item) { return item.kind == Item::Colon || isHalf(item); });
        if (anchor == items_.end())
            return true;
        at_ = static_cast<std::size_t>(anchor - items_.begin());
        if (is(at_, Item::Colon) || (isHalf(items_[at_]) && numberBefore())) {
            if (is(at_, Item::Colon) ? at_ == 0 || !is(at_ - 1, Item::Number) : false)
                return false;
            if (is(at_, Item::Colon))
                --at_;
        }
        const std::size_t begin = at_;
        Half half = takeHalf();
        std::array<int, 3> parts{};
        std::size_t count = 0;
        for (;;) {
            if (!is(at_, Item::Number) || items_[at_].number.digits > 2)
                return false;
            parts[count++] = items_[at_++].number.value;
            if (count == 3 || !is(at_, Item::Colon))
                break;
            ++at_;
        }
        if (half == Half::None) {
            const std::size_t end = at_;
            skipBlank();
            half = takeHalf();
            if (half == Half::None)
                at_ = end;
        }
        time = validTime(half, parts[0], parts[1], parts[2]);
        if (!time || (count == 1 && half == Half::None))
            return false;
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(begin),
                     items_.begin() + static_cast<std::ptrdiff_t>(at_));
        items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(begin), Item{Item::Blank, {}});
        return std::ranges::none_of(
            items_, [](const Item& item) { return item.kind == Item::Colon || isHalf(item); });
    }

  private:
    bool is(std::size_t at, Item::Kind kind) const { return at < items_.size() && items_[at].kind == kind; }
    void skipBlank() {
        if (is(at_, Item::Blank))
            ++at_;
    }
    Half takeHalf() {
        if (at_ >= items_.size() || !isHalf(items_[at_]))
            return Half::None;
        const Half half = items_[at_++].kind == Item::Morning ? Half::Morning : Half::Afternoon;
        if (is(at_, Item::Blank) && is(at_ + 1, Item::Number))
            ++at_;
        return half;
    }
    // "10 AM" without minutes: moves from the designator to its hour. "AM 10" stays at the designator.
    bool numberBefore() {
        const std::size_t back = at_ > 0 && is(at_ - 1, Item::Blank) ? 2 : 1;
        const bool behind =
            is(at_ + 1, Item::Number) || (is(at_ + 1, Item::Blank) && is(at_ + 2, Item::Number));
        const bool colonBehind = is(at_ + 2, Item::Colon) || is(at_ + 3, Item::Colon);
        if (at_ < back || !is(at_ - back, Item::Number) || (behind && colonBehind))
            return false;
        at_ -= back;
        return true;
    }

    std::vector<Item>& items_;
    std::size_t at_ = 0;
};

// The numbers and the month name of a date, checked for what stands between them.
struct DateItems {
    std::array<Number, 3> numbers{};
    std::size_t count = 0;
    int month = 0;
    std::size_t monthPlace = 0; // how many numbers stand before it
};

std::optional<DateItems> dateItems(std::span<const Item> items) {
    DateItems result;
    bool separated = true; // what follows may be a number or a name
    int marks = 0;
    for (const auto& item : items) {
        switch (item.kind) {
        case Item::Number:
            if (!separated || result.count == 3)
                return std::nullopt;
            result.numbers[result.count++] = item.number;
            separated = false;
            marks = 0;
            break;
        case Item::Month:
            if (result.month != 0)
                return std::nullopt;
            result.month = item.number.value;
            result.monthPlace = result.count;
            separated = true;
            marks = 0;
            break;
        case Item::Blank:
            separated = true;
            break;
        default:
            // A dot may end an abbreviation or an ordinal number before another separator.
            if (++marks > 2 || (marks == 2 && item.separator != u',') ||
                (result.count == 0 && result.month == 0))
                return std::nullopt;
            separated = true;
        }
    }
    return marks == 0 ? std::optional(result) : std::nullopt;
}

std::optional<Day> namedDay(const DateItems& items, int thisYear) {
    const auto& [numbers, count, month, place] = items;
    if (count == 1) {
        if (numbers[0].digits <= 2)
            if (const auto day = validDay(thisYear, month, numbers[0].value))
                return day;
        return validDay(numbers[0], {month, 2}, {1, 1});
    }
    if (count != 2)
        return std::nullopt;
    const auto day = validDay(numbers[1], {month, 2}, numbers[0]);
    return day ? day : validDay(numbers[0], {month, 2}, numbers[1]);
}

std::optional<Day> twoNumbers(Number first, Number second, DateOrder order, int thisYear) {
    if (first.digits > 2)
        return validDay(first, second, {1, 1});
    if (second.digits > 2)
        return validDay(second, first, {1, 1});
    const bool dayFirst = order == DateOrder::DayMonthYear;
    for (const bool swapped : {dayFirst, !dayFirst})
        if (const auto day = validDay(thisYear, swapped ? second.value : first.value,
                                      swapped ? first.value : second.value))
            return day;
    for (const bool yearLast : {true, false}) // 3/45 is March 1945
        if (const auto day = yearLast ? validDay(second, first, {1, 1}) : validDay(first, second, {1, 1}))
            return day;
    return std::nullopt;
}

std::optional<Day> threeNumbers(const std::array<Number, 3>& n, DateOrder order) {
    using Try = std::array<std::size_t, 3>; // places of year, month and day
    constexpr Try monthDayYear{2, 0, 1}, dayMonthYear{2, 1, 0}, yearMonthDay{0, 1, 2}, yearDayMonth{0, 2, 1};
    constexpr std::array<Try, 4> orders[] = {
        {monthDayYear, dayMonthYear, yearMonthDay, yearDayMonth},
        {dayMonthYear, monthDayYear, yearMonthDay, yearDayMonth},
        {yearMonthDay, monthDayYear, dayMonthYear, yearDayMonth},
    };
    for (const auto& [year, month, day] : orders[static_cast<std::size_t>(order)])
        if (const auto result = validDay(n[year], n[month], n[day]))
            return result;
    return std::nullopt;
}

std::optional<Moment> generalMoment(std::u16string_view text, const Locale& locale, int thisYear) {
    auto items = Lexer(withoutStrays(text), locale).items();
    Moment moment;
    if (!items || !TimeFinder(*items).find(moment.time))
        return std::nullopt;
    while (!items->empty() && (items->back().kind == Item::Blank || items->back().separator == u','))
        items->pop_back();
    while (!items->empty() && (items->front().kind == Item::Blank || items->front().separator == u','))
        items->erase(items->begin());
    if (items->empty())
        return moment.time ? std::optional(moment) : std::nullopt;
    const auto date = dateItems(*items);
    if (!date)
        return std::nullopt;
    moment.day = date->month != 0   ? namedDay(*date, thisYear)
                 : date->count == 3 ? threeNumbers(date->numbers, locale.dateOrder())
                 : date->count == 2
                     ? twoNumbers(date->numbers[0], date->numbers[1], locale.dateOrder(), thisYear)
                     : std::nullopt;
    return moment.day ? std::optional(moment) : std::nullopt;
}

// "2009-03-07", "2009-03-07 14:05" and "2009-03-07 14:05:09", the forms that programs write, without the
// detour of the general reading, which would say the same. Nothing for any other text.
std::optional<Date> isoMoment(std::u16string_view text) {
    constexpr std::u16string_view form = u"0000-00-00 00:00:00";
    if (text.size() != 10 && text.size() != 16 && text.size() != 19)
        return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (form[i] == u'0' ? !isDigit(text[i]) : text[i] != form[i])
            return std::nullopt;
    const auto two = [&](std::size_t at) {
        return at < text.size() ? (text[at] - u'0') * 10 + (text[at + 1] - u'0') : 0;
    };
    const DateParts parts{two(0) * 100 + two(2), two(5), two(8), two(11), two(14), two(17)};
    if (!isDay(parts.year, parts.month, parts.day) || parts.hour > 23 || parts.minute > 59 ||
        parts.second > 59)
        return std::nullopt;
    return vlgs::dateOf(parts);
}

class Parser {
  public:
    std::optional<Date> parse(std::u16string_view text) {
        text = withoutStrays(text);
        if (text.empty())
            return std::nullopt;
        if (const auto moment = ownForms(text))
            return dateOf(*moment);
        if (const auto moment = generalMoment(text, locale_, thisYear_))
            return dateOf(*moment);
        if (const auto moment = ownTimeBehind(text))
            return dateOf(*moment);
        return std::nullopt;
    }

  private:
    std::optional<Moment> ownForms(std::u16string_view text) {
        for (const auto item : {LocaleItem::ShortDatePattern, LocaleItem::LongDatePattern}) {
            auto rest = text;
            if (auto moment = PatternReader(locale_.text(item), locale_).read(rest); moment && moment->day)
                if (addTime(*moment, rest))
                    return moment;
        }
        PatternReader days(locale_.text(LocaleItem::LongDatePattern), locale_);
        if (auto rest = text; days.dropYear(thisYear_))
            if (auto moment = days.read(rest); moment && moment->day && addTime(*moment, rest))
                return moment;
        auto rest = text;
        if (auto moment = ownTime(rest))
            if (addDay(*moment, rest))
                return moment;
        return std::nullopt;
    }

    std::optional<Moment> ownTime(std::u16string_view& text) {
        PatternReader reader(locale_.text(LocaleItem::TimePattern), locale_);
        if (auto moment = reader.read(text); moment && moment->time)
            return moment;
        reader.dropSeconds();
        auto moment = reader.read(text);
        return moment && moment->time ? moment : std::nullopt;
    }

    // A date in any form before a time in the user's form, whose separator may be that of dates:
    // "2009.03.07 14.05". The last blank, or the one before it, stands between them.
    std::optional<Moment> ownTimeBehind(std::u16string_view text) {
        auto blank = text.size();
        for (int tries = 0; tries < 2; ++tries) {
            while (blank > 0 && !isBlank(text[blank - 1]))
                --blank;
            if (blank == 0)
                return std::nullopt;
            auto behind = text.substr(blank--);
            const auto time = ownTime(behind);
            auto moment = time && behind.empty() ? generalMoment(text.substr(0, blank), locale_, thisYear_)
                                                 : std::nullopt;
            if (moment && !moment->time) {
                moment->time = time->time;
                return moment;
            }
        }
        return std::nullopt;
    }

    // What follows a date in one of the user's forms: nothing, or a time behind a blank.
    bool addTime(Moment& moment, std::u16string_view rest) {
        if (withoutStrays(rest).empty())
            return true;
        if (!isBlank(rest.front()) && rest.front() != u',')
            return false;
        rest = withoutStrays(rest);
        auto behind = rest;
        auto time = ownTime(behind);
        if (!time || !withoutStrays(behind).empty())
            time = generalMoment(rest, locale_, thisYear_);
        if (!time || time->day)
            return false;
        moment.time = time->time;
        return true;
    }
    bool addDay(Moment& moment, std::u16string_view rest) {
        if (withoutStrays(rest).empty())
            return true;
        if (!isBlank(rest.front()) && rest.front() != u',')
            return false;
        rest = withoutStrays(rest);
        for (const auto item : {LocaleItem::ShortDatePattern, LocaleItem::LongDatePattern}) {
            auto behind = rest;
            const auto day = PatternReader(locale_.text(item), locale_).read(behind);
            if (day && day->day && withoutStrays(behind).empty()) {
                moment.day = day->day;
                return true;
            }
        }
        const auto day = generalMoment(rest, locale_, thisYear_);
        if (!day || day->time)
            return false;
        moment.day = day->day;
        return true;
    }

    const Locale locale_ = Locale::user();
    const int thisYear_ = localNow().year;
};

} // namespace

std::optional<Date> parseLongDate(std::u16string_view text) {
    const Locale locale = Locale::user();
    auto rest = withoutStrays(text);
    const auto moment =
        PatternReader(locale.text(LocaleItem::LongDatePattern), locale, PatternReader::Weekdays::Keep)
            .read(rest);
    return moment && moment->day && rest.empty() ? std::optional(dateOf(*moment)) : std::nullopt;
}

std::optional<Date> parseDate(std::u16string_view text) {
    if (const auto date = isoMoment(text))
        return date;
    if (const auto date = Parser().parse(text))
        return date;
    if (!isNumericText(text))
        return std::nullopt;
    const Date date{textToNumber(text)};
    try {
        partsOf(date);
    } catch (const Error&) {
        return std::nullopt;
    }
    return date;
}

Date textToDate(std::u16string_view text) {
    const auto date = parseDate(text);
    if (!date)
        raise(RunTimeError::TypeMismatch);
    return *date;
}

} // namespace vlgs
