// SPDX-License-Identifier: MIT
#include "automation/DateItems.h"

#include "base/Ascii.h"

#include <algorithm>
#include <array>

namespace vlgs {

namespace {

constexpr std::size_t mostItems = 7; // three numbers of a date, three of a time, a designator
constexpr int mostMarks = 2;         // also where a time follows: "1/2/3 4:5" and "1/2/3:4", not "1/2/3/4:5"

class Lexer {
  public:
    Lexer(std::u16string_view text, const Locale& locale, const DateNames& names)
        : rest_(text), separator_(locale.text(LocaleItem::DateSeparator)), names_(names) {}

    std::optional<DateItems> items() {
        DateItems items;
        for (;;) {
            const auto between = gap();
            if (!between || (*between == DateGap::Mark && ++marks_ > mostMarks))
                return std::nullopt;
            const bool edge = items.empty() || rest_.empty();
            if (edge && *between != DateGap::Nothing && *between != DateGap::Blank)
                return std::nullopt;
            if (rest_.empty())
                return items;
            const auto item = word(*between);
            if (!item || items.size() == mostItems)
                return std::nullopt;
            items.push_back(*item);
        }
    }

  private:
    std::optional<DateGap> gap() {
        DateGap result = DateGap::Nothing;
        for (; !rest_.empty(); rest_.remove_prefix(1)) {
            const char16_t c = rest_.front();
            const bool comma = c == u',' && !rest_.starts_with(separator_);
            if (isDateBlank(c) || comma) {
                if (comma && result == DateGap::Colon)
                    return std::nullopt;
                result = std::max(result, DateGap::Blank);
                continue;
            }
            const DateGap mark = punctuation(c);
            if (mark == DateGap::Nothing)
                break;
            if (result > DateGap::Blank)
                return std::nullopt;
            result = mark;
        }
        return result;
    }

    // Takes all but the last character of a mark.
    DateGap punctuation(char16_t c) {
        if (!separator_.empty() && rest_.starts_with(separator_)) {
            rest_.remove_prefix(separator_.size() - 1);
            return DateGap::Mark;
        }
        if (c == u':')
            return DateGap::Colon;
        if (c == u'.')
            return separator_.starts_with(u'.') ? DateGap::Mark : DateGap::Colon;
        return c == u'/' || c == u'-' ? DateGap::Mark : DateGap::Nothing;
    }

    std::optional<DateItem> word(DateGap before) {
        const bool digit = ascii::isDigit(rest_.front());
        if (!digit || names_.monthsBeginWithDigits())
            if (const auto name = monthOrHalf(before))
                return name;
        const auto number = takeDateNumber(rest_);
        return number ? std::optional(DateItem{DateItem::Number, before, *number}) : std::nullopt;
    }

    // Whichever is longer: in Arabic the afternoon begins the name of March.
    std::optional<DateItem> monthOrHalf(DateGap before) {
        auto behindHalf = rest_;
        auto behindMonth = rest_;
        const HalfOfDay half = names_.takeHalf(behindHalf);
        const auto month = names_.takeMonth(behindMonth);
        rest_ = behindMonth.size() < behindHalf.size() ? behindMonth : behindHalf;
        if (month && rest_.size() == behindMonth.size())
            return DateItem{DateItem::Month, before, *month};
        if (half == HalfOfDay::None)
            return std::nullopt;
        return DateItem{half == HalfOfDay::Morning ? DateItem::Morning : DateItem::Afternoon, before, 0};
    }

    std::u16string_view rest_;
    std::u16string_view separator_;
    const DateNames& names_;
    int marks_ = 0;
};

// A time of day among the items: [designator] hour [: minute [: second]] [designator].
struct FoundTime {
    std::size_t begin, end;
    std::optional<TimeOfDay> time;
};

// The time that begins at an item; it has a colon or a designator.
std::optional<FoundTime> timeAt(const DateItems& items, std::size_t begin) {
    auto at = begin;
    HalfOfDay half = HalfOfDay::None;
    const auto takeHalf = [&] {
        if (half != HalfOfDay::None || at == items.size() || !items[at].isHalf() ||
            (at > begin && items[at].before >= DateGap::Mark))
            return;
        half = items[at++].kind == DateItem::Morning ? HalfOfDay::Morning : HalfOfDay::Afternoon;
    };
    const auto isNumber = [&] { return at < items.size() && items[at].kind == DateItem::Number; };
    takeHalf();
    if (!isNumber() || (at > begin && items[at].before >= DateGap::Mark))
        return std::nullopt;
    std::array<int, 3> numbers{};
    std::size_t count = 0;
    do
        numbers[count++] = items[at++].value;
    while (count < numbers.size() && isNumber() && items[at].before == DateGap::Colon);
    takeHalf();
    // A designator before an hour alone may be that of a number before it: "1 2 am 3".
    if (count == 1 && (half == HalfOfDay::None || (items[begin].isHalf() && begin > 0)))
        return std::nullopt;
    return FoundTime{begin, at, validTime(half, numbers[0], numbers[1], numbers[2])};
}

bool isOfTime(const DateItem& item) {
    return item.isHalf() || item.before == DateGap::Colon;
}

// Whether the time stands at one end of the items, and nothing of a time outside it.
bool standsAlone(const DateItems& items, const FoundTime& found) {
    const auto begin = items.begin() + static_cast<std::ptrdiff_t>(found.begin);
    const auto end = items.begin() + static_cast<std::ptrdiff_t>(found.end);
    return (begin == items.begin() || end == items.end()) && begin->before != DateGap::Colon &&
           std::none_of(items.begin(), begin, isOfTime) && std::none_of(end, items.end(), isOfTime);
}

} // namespace

std::optional<DateItems> dateItems(std::u16string_view text, const Locale& locale, const DateNames& names) {
    return Lexer(text, locale, names).items();
}

bool takeTime(DateItems& items, std::optional<TimeOfDay>& time) {
    if (std::ranges::none_of(items, isOfTime))
        return true;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto found = timeAt(items, i);
        if (!found || !standsAlone(items, *found))
            continue;
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(found->begin),
                    items.begin() + static_cast<std::ptrdiff_t>(found->end));
        time = found->time;
        return time.has_value();
    }
    return false;
}

} // namespace vlgs
