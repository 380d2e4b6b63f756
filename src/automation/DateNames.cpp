// SPDX-License-Identifier: MIT
#include "automation/DateNames.h"

#include "base/Ascii.h"
#include "base/CaseFold.h"

namespace vlgs {

namespace {

constexpr bool beginsWithDigit(std::u16string_view text) {
    return !text.empty() && ascii::isDigit(text.front());
}
// A letter of the scripts that part words by blanks and have two cases: Latin, Greek, Cyrillic, Armenian.
constexpr bool isLetter(char16_t c) {
    return ascii::isLetter(c) || (c >= u'\u00C0' && c <= u'\u0588' && c != u'\u00D7' && c != u'\u00F7') ||
           (c >= u'\u1E00' && c <= u'\u1FFF');
}

bool beginsWithWord(std::u16string_view text, std::u16string_view word) {
    const auto size = word.size();
    if (size == 0 || text.size() < size || foldCase(text.front()) != foldCase(word.front()) ||
        !equalIgnoringCase(text.substr(0, size), word))
        return false;
    return text.size() == size || !((isLetter(text[size - 1]) && isLetter(text[size])) ||
                                    (ascii::isDigit(text[size - 1]) && ascii::isDigit(text[size])));
}

constexpr NameForm nameForms[] = {NameForm::Full, NameForm::Genitive, NameForm::Abbreviated,
                                  NameForm::AbbreviatedGenitive};

} // namespace

std::u16string_view skipDateBlanks(std::u16string_view text) {
    while (!text.empty() && isDateBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::optional<int> takeDateNumber(std::u16string_view& text) {
    int value = 0;
    int digits = 0;
    for (; !text.empty() && ascii::isDigit(text.front()); text.remove_prefix(1)) {
        if (++digits > 9)
            return std::nullopt;
        value = value * 10 + (text.front() - u'0');
    }
    return digits > 0 ? std::optional(value) : std::nullopt;
}

const DateNames::Words& DateNames::words() const {
    if (words_)
        return *words_;
    auto& words = words_.emplace();
    for (const Locale& language : {locale_, Locale::named("en-US")})
        for (int month = 1; month <= 12; ++month)
            for (const NameForm form : nameForms) {
                const auto name = language.monthName(month, form);
                words.months.push_back({name, month});
                if (name.ends_with(u'.'))
                    words.months.push_back({name.substr(0, name.size() - 1), month});
            }
    for (int weekday = 1; weekday <= 7; ++weekday)
        for (const NameForm form : {NameForm::Full, NameForm::Abbreviated})
            words.weekdays.push_back({locale_.weekdayName(weekday, form), weekday});
    addHalf(words, HalfOfDay::Morning, locale_.text(LocaleItem::Morning), {u"AM", u"A", u"a.m."});
    addHalf(words, HalfOfDay::Afternoon, locale_.text(LocaleItem::Afternoon), {u"PM", u"P", u"p.m."});
    return words;
}

void DateNames::addHalf(Words& words, HalfOfDay half, std::u16string_view name,
                        std::initializer_list<std::u16string_view> english) {
    const auto add = [&](std::u16string_view text) {
        words.halves.push_back({text, static_cast<int>(half)});
    };
    add(name);
    auto& withoutBlanks = words.forms.emplace_back(name);
    std::erase_if(withoutBlanks, isDateBlank);
    add(withoutBlanks);
    auto& withoutDots = words.forms.emplace_back(withoutBlanks);
    std::erase(withoutDots, u'.');
    add(withoutDots);
    for (const auto text : english)
        add(text);
}

const DateNames::Word* DateNames::take(const std::vector<Word>& words, std::u16string_view& text) {
    const Word* longest = nullptr;
    for (const auto& word : words)
        if (beginsWithWord(text, word.text) && (!longest || word.text.size() > longest->text.size()))
            longest = &word;
    if (longest)
        text.remove_prefix(longest->text.size());
    return longest;
}

std::optional<int> DateNames::takeMonth(std::u16string_view& text) const {
    const auto* word = take(words().months, text);
    return word ? std::optional(word->meaning) : std::nullopt;
}

bool DateNames::takeWeekday(std::u16string_view& text) const {
    return take(words().weekdays, text) != nullptr;
}

HalfOfDay DateNames::takeHalf(std::u16string_view& text) const {
    if (text.empty() || beginsWithDigit(text)) // most times have none, and then need no names
        return HalfOfDay::None;
    const auto* word = take(words().halves, text);
    return word ? static_cast<HalfOfDay>(word->meaning) : HalfOfDay::None;
}

bool DateNames::monthsBeginWithDigits() const {
    if (!digits_)
        digits_ = beginsWithDigit(locale_.monthName(1)) ||
                  beginsWithDigit(locale_.monthName(1, NameForm::Abbreviated));
    return *digits_;
}

} // namespace vlgs
