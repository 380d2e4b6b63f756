#include "automation/DateNames.h"

#include "base/Ascii.h"
#include "base/CaseFold.h"

namespace vlgs {

namespace {

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
    words.months.reserve(4 * 12 * 2 + 12);
    const auto addMonth = [&](std::u16string_view name, int month) {
        words.digits |= ascii::isDigit(name.front());
        words.months.push_back({name, month});
        if (name.ends_with(u'.'))
            words.months.push_back({name.substr(0, name.size() - 1), month});
    };
    for (const Locale& language : {locale_, Locale::named("en-US")})
        for (int month = 1; month <= 12; ++month)
            for (const NameForm form : nameForms)
                addMonth(language.monthName(month, form), month);
    for (int weekday = 1; weekday <= 7; ++weekday)
        for (const NameForm form : {NameForm::Full, NameForm::Abbreviated})
            words.weekdays.push_back({locale_.weekdayName(weekday, form), weekday});

    const auto addHalf = [&](std::u16string_view name, HalfOfDay half) {
        words.halves.push_back({name, static_cast<int>(half)});
    };
    const auto addForms = [&](std::u16string_view name, HalfOfDay half) {
        addHalf(name, half);
        auto& withoutBlanks = words.forms.emplace_back(name);
        std::erase_if(withoutBlanks, isDateBlank);
        addHalf(withoutBlanks, half);
        auto& withoutDots = words.forms.emplace_back(withoutBlanks);
        std::erase(withoutDots, u'.');
        addHalf(withoutDots, half);
    };
    addForms(locale_.text(LocaleItem::Morning), HalfOfDay::Morning);
    addForms(locale_.text(LocaleItem::Afternoon), HalfOfDay::Afternoon);
    for (const std::u16string_view name : {u"AM", u"A", u"a.m."})
        addHalf(name, HalfOfDay::Morning);
    for (const std::u16string_view name : {u"PM", u"P", u"p.m."})
        addHalf(name, HalfOfDay::Afternoon);
    return words;
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
    const auto* word = take(words().halves, text);
    return word ? static_cast<HalfOfDay>(word->meaning) : HalfOfDay::None;
}

bool DateNames::monthsBeginWithDigits() const {
    return words().digits;
}

} // namespace vlgs
