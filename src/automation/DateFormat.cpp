// SPDX-License-Identifier: MIT
#include "automation/DateFormat.h"

#include "automation/Convert.h"
#include "automation/DateText.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Dates.h"
#include "platform/Locale.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>

namespace vlgs {

enum class DateToken : std::uint8_t {
    General,
    Day,
    Day2,
    WeekdayShort,
    Weekday,
    ShortDate,
    LongDate,
    DayOfWeek,
    Week,
    Month,
    Month2,
    MonthShort,
    MonthName,
    Quarter,
    DayOfYear,
    Year2,
    Year4,
    Era,
    Hour,
    Hour2,
    Minute,
    Minute2,
    Second,
    Second2,
    LongTime,
    AmPmFull,
    AmPmShort,
    AmPmLocale,
    DateSeparator,
    TimeSeparator,
    Literal,
};

namespace {

struct Spelling {
    std::u16string_view text; // lower case
    DateToken token;
};
// Longer spellings before their beginnings.
constexpr Spelling spellings[] = {
    {u"dddddd", DateToken::LongDate}, {u"ddddd", DateToken::ShortDate},
    {u"dddd", DateToken::Weekday},    {u"ddd", DateToken::WeekdayShort},
    {u"dd", DateToken::Day2},         {u"d", DateToken::Day},
    {u"yyyy", DateToken::Year4},      {u"yy", DateToken::Year2},
    {u"y", DateToken::DayOfYear},     {u"mmmm", DateToken::MonthName},
    {u"mmm", DateToken::MonthShort},  {u"mm", DateToken::Month2},
    {u"m", DateToken::Month},         {u"hh", DateToken::Hour2},
    {u"h", DateToken::Hour},          {u"nn", DateToken::Minute2},
    {u"n", DateToken::Minute},        {u"ss", DateToken::Second2},
    {u"s", DateToken::Second},        {u"ww", DateToken::Week},
    {u"w", DateToken::DayOfWeek},     {u"ttttt", DateToken::LongTime},
    {u"am/pm", DateToken::AmPmFull},  {u"a/p", DateToken::AmPmShort},
    {u"ampm", DateToken::AmPmLocale}, {u"ggg", DateToken::Era},
    {u"gg", DateToken::Era},          {u"g", DateToken::Era},
    {u"q", DateToken::Quarter},       {u"c", DateToken::General},
    {u"/", DateToken::DateSeparator}, {u":", DateToken::TimeSeparator},
};

// The spellings that begin with a character, as a range of the table; most characters have none.
struct Range {
    std::uint8_t first = 0;
    std::uint8_t last = 0;
};
constexpr auto byFirstCharacter = [] {
    std::array<Range, 128> ranges{};
    std::uint8_t row = 0;
    for (const auto& spelling : spellings) {
        auto& range = ranges[spelling.text.front()];
        if (range.last == 0)
            range.first = row;
        range.last = ++row;
    }
    return ranges;
}();

const Spelling* spellingAt(std::u16string_view text) {
    const char16_t first = ascii::toLower(text.front());
    if (first >= byFirstCharacter.size())
        return nullptr;
    for (auto i = byFirstCharacter[first].first; i < byFirstCharacter[first].last; ++i) {
        const auto spelling = spellings[i].text;
        if (text.size() >= spelling.size() &&
            std::equal(spelling.begin() + 1, spelling.end(), text.begin() + 1,
                       [](char16_t a, char16_t b) { return a == ascii::toLower(b); }))
            return &spellings[i];
    }
    return nullptr;
}

// Cuts a pattern into tokens; `text()` is the current token's text, for a literal the text to be put out.
class Scanner {
  public:
    explicit Scanner(std::u16string_view pattern) : rest_(pattern) {}

    bool next() {
        if (rest_.empty())
            return false;
        token_ = DateToken::Literal;
        if (rest_.front() == u'\\') {
            take(1);
            text_ = take(1);
            return true;
        }
        if (rest_.front() == u'"') {
            take(1);
            const auto end = rest_.find(u'"');
            text_ = take(end);
            take(1);
            return true;
        }
        const Spelling* spelling = spellingAt(rest_);
        if (!spelling) {
            text_ = take(1);
            return true;
        }
        // Minutes are spelled like months directly after hours.
        const auto token = spelling->token;
        const bool minutes = afterHour_ && (token == DateToken::Month || token == DateToken::Month2);
        token_ = !minutes ? token : token == DateToken::Month ? DateToken::Minute : DateToken::Minute2;
        text_ = take(spelling->text.size());
        if (token_ != DateToken::DateSeparator && token_ != DateToken::TimeSeparator)
            afterHour_ = token_ == DateToken::Hour || token_ == DateToken::Hour2;
        return true;
    }
    DateToken token() const { return token_; }
    std::u16string_view text() const { return text_; }

  private:
    std::u16string_view take(std::size_t count) {
        const auto taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    std::u16string_view rest_;
    std::u16string_view text_;
    DateToken token_ = DateToken::Literal;
    bool afterHour_ = false;
};

// The text so far: on the stack while it is short, as nearly all dates are.
class Output {
  public:
    Output& operator+=(std::u16string_view text) {
        if (size_ + text.size() > buffer_.size())
            return appendLong(text);
        for (const char16_t c : text)
            buffer_[size_++] = c;
        return *this;
    }
    Output& put(char16_t character) {
        if (size_ == buffer_.size())
            appendLong({});
        buffer_[size_++] = character;
        return *this;
    }
    String text() const {
        const std::u16string_view end(buffer_.data(), size_);
        return long_.empty() ? String(end) : concat(long_, end);
    }

  private:
    // Moves what is on the stack to the text that grows.
    Output& appendLong(std::u16string_view text) {
        long_.append(buffer_.data(), std::exchange(size_, 0)).append(text);
        return *this;
    }

    std::array<char16_t, 64> buffer_;
    std::size_t size_ = 0;
    std::u16string long_;
};

// The pairs of digits that numbers of fixed width are made of.
enum DigitPair : std::size_t { Century, YearOfCentury, Month, Day, Hour, Minute, Second };

struct DigitPairs {
    DigitPair first = Century;
    std::size_t count = 0; // 0 for a token that is no such number
};
DigitPairs digitPairs(DateToken token) {
    switch (token) {
    case DateToken::Year4:
        return {Century, 2};
    case DateToken::Year2:
        return {YearOfCentury, 1};
    case DateToken::Month2:
        return {Month, 1};
    case DateToken::Day2:
        return {Day, 1};
    case DateToken::Hour2:
        return {Hour, 1};
    case DateToken::Minute2:
        return {Minute, 1};
    case DateToken::Second2:
        return {Second, 1};
    default:
        return {};
    }
}

// "00" to "99", one behind the other.
constexpr auto allDigitPairs = [] {
    std::array<char16_t, 200> digits{};
    for (std::size_t i = 0; i < 100; ++i) {
        digits[2 * i] = static_cast<char16_t>(u'0' + i / 10);
        digits[2 * i + 1] = static_cast<char16_t>(u'0' + i % 10);
    }
    return digits;
}();

// Fills the gaps of a layout, such as that of every universal timestamp.
String formatFixed(const DateParts& parts, const DatePattern& pattern) {
    const int numbers[] = {parts.year / 100, parts.year % 100, parts.month, parts.day,
                           parts.hour,       parts.minute,     parts.second};
    return String::build(pattern.layout().size(), [&](char16_t* to) {
        pattern.layout().copy(to, pattern.layout().size());
        for (const auto [pair, at] : pattern.digits())
            std::memcpy(to + at, &allDigitPairs[2 * static_cast<std::size_t>(numbers[pair])], 2 * sizeof *to);
    });
}

class Formatter {
  public:
    Formatter(Date date, FirstDayOfWeek firstDay, FirstWeekOfYear firstWeek,
              std::optional<Locale> locale = std::nullopt)
        : locale_(locale), date_(date), parts_(partsOf(date)), firstDay_(firstDay), firstWeek_(firstWeek) {}

    String format(const DatePattern& pattern) {
        for (const auto& [token, text] : pattern.pieces())
            put(token, text, pattern.hasDesignator());
        return out_.text();
    }

  private:
    void twoDigits(int value) {
        out_.put(static_cast<char16_t>(u'0' + value / 10));
        out_.put(static_cast<char16_t>(u'0' + value % 10));
    }
    void number(int value, int width = 1) {
        if (width == 2 && value < 100)
            return twoDigits(value);
        std::array<char16_t, 8> digits;
        auto first = digits.size();
        do {
            digits[--first] = static_cast<char16_t>(u'0' + value % 10);
            value /= 10;
        } while (value > 0 || first + static_cast<std::size_t>(width) > digits.size());
        out_ += std::u16string_view(digits.data() + first, digits.size() - first);
    }
    void put(LocaleItem item) { out_ += locale().text(item); }
    bool morning() const { return parts_.hour < 12; }

    void put(DateToken token, std::u16string_view text, bool twelve) {
        const int hour = twelve ? (parts_.hour + 11) % 12 + 1 : parts_.hour;
        switch (token) {
        case DateToken::General:
            return general();
        case DateToken::Day:
            return number(parts_.day);
        case DateToken::Day2:
            return number(parts_.day, 2);
        case DateToken::WeekdayShort:
            out_ += locale().weekdayName(weekday(), NameForm::Abbreviated);
            return;
        case DateToken::Weekday:
            out_ += locale().weekdayName(weekday());
            return;
        case DateToken::ShortDate:
            return platformPattern(locale().text(LocaleItem::ShortDatePattern));
        case DateToken::LongDate:
            return platformPattern(locale().text(LocaleItem::LongDatePattern));
        case DateToken::DayOfWeek:
            return number((weekday() - firstDay() + 7) % 7 + 1);
        case DateToken::Week:
            return number(week());
        case DateToken::Month:
            return number(parts_.month);
        case DateToken::Month2:
            return number(parts_.month, 2);
        case DateToken::MonthShort:
            out_ += locale().monthName(parts_.month, NameForm::Abbreviated);
            return;
        case DateToken::MonthName:
            out_ += locale().monthName(parts_.month);
            return;
        case DateToken::Quarter:
            return number((parts_.month + 2) / 3);
        case DateToken::DayOfYear:
            return number(dayOfYear(parts_));
        case DateToken::Year2:
            return number(parts_.year % 100, 2);
        case DateToken::Year4:
            return number(parts_.year, 4);
        case DateToken::Era:
            return; // the Gregorian calendar as the locales use it names none
        case DateToken::Hour:
            return number(hour);
        case DateToken::Hour2:
            return number(hour, 2);
        case DateToken::Minute:
            return number(parts_.minute);
        case DateToken::Minute2:
            return number(parts_.minute, 2);
        case DateToken::Second:
            return number(parts_.second);
        case DateToken::Second2:
            return number(parts_.second, 2);
        case DateToken::LongTime:
            return platformPattern(locale().text(LocaleItem::TimePattern));
        case DateToken::AmPmFull:
            out_ += morning() ? text.substr(0, 2) : text.substr(3);
            return;
        case DateToken::AmPmShort:
            out_ += morning() ? text.substr(0, 1) : text.substr(2);
            return;
        case DateToken::AmPmLocale:
            return put(morning() ? LocaleItem::Morning : LocaleItem::Afternoon);
        case DateToken::DateSeparator:
            return put(LocaleItem::DateSeparator);
        case DateToken::TimeSeparator:
            return put(LocaleItem::TimeSeparator);
        case DateToken::Literal:
            if (text.size() == 1)
                out_.put(text.front());
            else
                out_ += text;
            return;
        }
    }

    void general() {
        const bool midnight = parts_.hour == 0 && parts_.minute == 0 && parts_.second == 0;
        const bool dayZero = dayOf(date_) == Date{0};
        if (!dayZero)
            platformPattern(locale().text(LocaleItem::ShortDatePattern));
        if (!dayZero && !midnight)
            out_.put(u' ');
        if (dayZero || !midnight)
            platformPattern(locale().text(LocaleItem::TimePattern));
    }

    int firstDay() const {
        return firstDay_ == FirstDayOfWeek::System ? locale().firstDayOfWeek() : static_cast<int>(firstDay_);
    }

    // The number of whole weeks since the week that counts as the year's first, from 1.
    int week() const {
        const int january1 = weekdayOf(dateOf({parts_.year, 1, 1}));
        const int before = (january1 - firstDay() + 7) % 7; // days of its week that lie in the old year
        const int skipped = firstWeek_ == FirstWeekOfYear::FourDays   ? (before > 3 ? 7 : 0)
                            : firstWeek_ == FirstWeekOfYear::FullWeek ? (before > 0 ? 7 : 0)
                                                                      : 0;
        const int days = dayOfYear(parts_) - 1 + before - skipped;
        if (days < 0) { // the last week of the old year
            Formatter last(dateOf({parts_.year - 1, 12, 31}), firstDay_, firstWeek_, locale_);
            return last.week();
        }
        if (firstWeek_ == FirstWeekOfYear::FourDays && parts_.month == 12) {
            const int place = (weekday() - firstDay() + 7) % 7;
            if (31 - parts_.day + place < 3) // at least four days of its week lie in the new year
                return 1;
        }
        return days / 7 + 1;
    }

    // A pattern of the platform: M months, H and h hours, t designators, literal text between single quotes.
    void platformPattern(std::u16string_view pattern) {
        const bool hasDay = pattern.find(u'd') != pattern.npos && !isOnlyWeekday(pattern);
        for (std::size_t i = 0; i < pattern.size();) {
            const char16_t c = pattern[i];
            if (c == u'\'') {
                const auto end = std::min(pattern.find(u'\'', i + 1), pattern.size());
                out_ += end == i + 1 ? u"'" : pattern.substr(i + 1, end - i - 1);
                i = end + 1;
                continue;
            }
            const auto run = std::min(pattern.find_first_not_of(c, i), pattern.size()) - i;
            platformToken(c, static_cast<int>(run), hasDay);
            i += run;
        }
    }
    static bool isOnlyWeekday(std::u16string_view pattern) {
        for (auto at = pattern.find(u'd'); at != pattern.npos;) {
            const auto end = std::min(pattern.find_first_not_of(u'd', at), pattern.size());
            if (end - at <= 2)
                return false;
            at = pattern.find(u'd', end);
        }
        return true;
    }
    void platformToken(char16_t letter, int run, bool besideDay) {
        switch (letter) {
        case u'd':
            if (run <= 2)
                return number(parts_.day, run);
            out_ += locale().weekdayName(weekday(), run == 3 ? NameForm::Abbreviated : NameForm::Full);
            return;
        case u'M':
            if (run <= 2)
                return number(parts_.month, run);
            out_ += locale().monthName(parts_.month, run == 3    ? besideDay ? NameForm::AbbreviatedGenitive
                                                                             : NameForm::Abbreviated
                                                     : besideDay ? NameForm::Genitive
                                                                 : NameForm::Full);
            return;
        case u'y':
            return run <= 2 ? number(parts_.year % 100, run) : number(parts_.year, 4);
        case u'h':
            return number((parts_.hour + 11) % 12 + 1, std::min(run, 2));
        case u'H':
            return number(parts_.hour, std::min(run, 2));
        case u'm':
            return number(parts_.minute, std::min(run, 2));
        case u's':
            return number(parts_.second, std::min(run, 2));
        case u't': {
            const auto text = locale().text(morning() ? LocaleItem::Morning : LocaleItem::Afternoon);
            out_ += run == 1 ? text.substr(0, 1) : text;
            return;
        }
        case u'g':
            return;
        default:
            for (; run > 0; --run)
                out_ += std::u16string_view(&letter, 1);
        }
    }

    int weekday() const { return weekdayOf(dateOf(parts_)); }
    // Most patterns need nothing of the locale, which is then never asked for.
    const Locale& locale() const {
        if (!locale_)
            locale_ = Locale::user();
        return *locale_;
    }

    mutable std::optional<Locale> locale_; // the user's, once it is needed
    Date date_;
    DateParts parts_;
    FirstDayOfWeek firstDay_;
    FirstWeekOfYear firstWeek_;
    Output out_;
};

} // namespace

DatePattern::DatePattern(std::u16string_view pattern) {
    for (Scanner scan(pattern); scan.next();) {
        pieces_.push_back({scan.token(), scan.text()});
        hasDesignator_ |= scan.token() >= DateToken::AmPmFull && scan.token() <= DateToken::AmPmLocale;
    }
    const auto isFixed = [](const Piece& piece) {
        return piece.token == DateToken::Literal || digitPairs(piece.token).count > 0;
    };
    if (std::ranges::all_of(pieces_, isFixed))
        for (const Piece& piece : pieces_)
            lay(piece);
}

void DatePattern::lay(const Piece& piece) {
    if (piece.token == DateToken::Literal) {
        layout_ += piece.text;
        return;
    }
    const auto [first, count] = digitPairs(piece.token);
    for (std::size_t i = 0; i < count; ++i) {
        digits_.push_back({first + i, layout_.size()});
        layout_ += u"00";
    }
}

String formatDate(Date date, std::u16string_view pattern, FirstDayOfWeek firstDay,
                  FirstWeekOfYear firstWeek) {
    return formatDate(date, DatePattern(pattern), firstDay, firstWeek);
}

String formatDate(Date date, const DatePattern& pattern, FirstDayOfWeek firstDay, FirstWeekOfYear firstWeek) {
    if (!pattern.layout().empty())
        return formatFixed(partsOf(date), pattern);
    return Formatter(date, firstDay, firstWeek).format(pattern);
}

String formatDate(Date date, const DatePattern& pattern, const Locale& locale, FirstDayOfWeek firstDay,
                  FirstWeekOfYear firstWeek) {
    return Formatter(date, firstDay, firstWeek, locale).format(pattern);
}

String formatValueAsDate(const Variant& value, std::u16string_view pattern, FirstDayOfWeek firstDay,
                         FirstWeekOfYear firstWeek) {
    if (value.isString()) {
        const auto date = parseDate(value.text());
        return date ? formatDate(*date, pattern, firstDay, firstWeek) : value.text();
    }
    return formatDate(toDate(value), pattern, firstDay, firstWeek);
}

String dateToText(Date date) {
    return formatDate(date, u"c");
}

} // namespace vlgs
