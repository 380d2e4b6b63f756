// SPDX-License-Identifier: MIT
#include "automation/DatePatternReader.h"

#include "base/CaseFold.h"

#include <algorithm>

namespace vlgs {

namespace {

bool takeLiteral(std::u16string_view& text, std::u16string_view literal) {
    auto rest = text;
    while (!literal.empty()) {
        if (isDateBlank(literal.front())) {
            literal = skipDateBlanks(literal);
            rest = skipDateBlanks(rest);
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

// A quoted text with its quotation marks, which callers leave around it who format by the pattern themselves.
bool takeQuoted(std::u16string_view& text, std::u16string_view literal) {
    auto rest = skipDateBlanks(text);
    if (!rest.starts_with(u'\''))
        return false;
    rest.remove_prefix(1);
    if (!takeLiteral(rest, literal) || !rest.starts_with(u'\''))
        return false;
    text = rest.substr(1);
    return true;
}

} // namespace

DatePatternReader::DatePatternReader(std::u16string_view pattern, const DateNames& names, Weekdays weekdays)
    : names_(names) {
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

// Commas and blanks where a weekday name stood at the pattern's beginning are dropped with it.
void DatePatternReader::add(Piece piece) {
    if (!pieces_.empty() || piece.size > 0 || piece.letter == u'\'')
        pieces_.push_back(piece);
}

void DatePatternReader::dropSeconds() {
    const auto seconds = std::ranges::find(pieces_, u's', &Piece::letter);
    if (seconds == pieces_.end())
        return;
    const bool literal = seconds != pieces_.begin() && (seconds - 1)->size == 0;
    pieces_.erase(seconds - literal, seconds + 1);
}

bool DatePatternReader::dropYear(int thisYear) {
    if (pieces_.size() < 2 || pieces_[0].letter != u'y' || pieces_[1].letter != u'\'')
        return false;
    pieces_.erase(pieces_.begin(), pieces_.begin() + 2);
    year_ = thisYear;
    return true;
}

std::optional<Moment> DatePatternReader::read(std::u16string_view& text) const {
    auto rest = text;
    Fields fields;
    fields.year = year_;
    const bool isTime = std::ranges::find(pieces_, u'm', &Piece::letter) != pieces_.end();
    HalfOfDay half = isTime ? names_.takeHalf(rest) : HalfOfDay::None;
    for (const auto& piece : pieces_)
        if (!readPiece(piece, rest, fields))
            return std::nullopt;
    Moment moment;
    if (fields.hour) {
        if (half == HalfOfDay::None)
            half = takeHalfBehind(rest);
        moment.time = validTime(half, *fields.hour, fields.minute.value_or(0), fields.second.value_or(0));
    } else if (fields.year && fields.month && fields.day) {
        moment.day = validDay(*fields.year, *fields.month, *fields.day);
    }
    if (!moment.day && !moment.time)
        return std::nullopt;
    text = rest;
    return moment;
}

bool DatePatternReader::readPiece(const Piece& piece, std::u16string_view& rest, Fields& fields) const {
    const auto& [letter, size, literal] = piece;
    if (letter == u'\0' || letter == u'\'') {
        const bool edge = &piece == &pieces_.front() || &piece == &pieces_.back();
        return (letter == u'\'' && takeQuoted(rest, literal)) || takeLiteral(rest, literal) || edge;
    }
    rest = skipDateBlanks(rest);
    if (letter == u'd' && size > 2)
        return names_.takeWeekday(rest);
    if (letter == u'M' && size > 2)
        return (fields.month = names_.takeMonth(rest)).has_value();
    const auto before = rest.size();
    const auto number = takeDateNumber(rest);
    const auto digits = before - rest.size();
    if (!number || (letter == u'y' ? size > 2 && digits < 3 : digits > 2))
        return false;
    (letter == u'y'   ? fields.year
     : letter == u'M' ? fields.month
     : letter == u'd' ? fields.day
     : letter == u'm' ? fields.minute
     : letter == u's' ? fields.second
                      : fields.hour) = number;
    return true;
}

HalfOfDay DatePatternReader::takeHalfBehind(std::u16string_view& text) const {
    auto rest = skipDateBlanks(text);
    const HalfOfDay half = names_.takeHalf(rest);
    if (half != HalfOfDay::None)
        text = rest;
    return half;
}

} // namespace vlgs
