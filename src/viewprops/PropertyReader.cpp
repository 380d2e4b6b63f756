// SPDX-License-Identifier: MIT
#include "automation/OrderedCollection.h"
#include "base/CaseFold.h"
#include "frame/Errors.h"
#include "viewprops/PropertyString.h"
#include "viewprops/QuotedText.h"
#include "viewprops/ViewProperty.h"

#include <algorithm>
#include <array>

namespace vlgs {

namespace {

using View = std::u16string_view;

struct Halves {
    View first;
    View second;
};

/// What stands before the first delimiter, and what between that and the next. Raises 9 when there is none.
Halves halve(View text, View delimiter) {
    const auto at = text.find(delimiter);
    if (at == text.npos)
        raise(RunTimeError::SubscriptOutOfRange);
    const View rest = text.substr(at + delimiter.size());
    return {text.substr(0, at), rest.substr(0, rest.find(delimiter))};
}

template <class Use>
void forEachPiece(View text, char16_t delimiter, const Use& use) {
    for (std::size_t from = 0; from <= text.size();) {
        const auto to = std::min(text.find(delimiter, from), text.size());
        use(text.substr(from, to - from));
        from = to + 1;
    }
}

View withoutParentheses(View text) {
    if (text.starts_with(u'('))
        text.remove_prefix(1);
    if (text.ends_with(u')'))
        text.remove_suffix(1);
    return text;
}

/// The first character of a text in lower case, "" of an empty one. Type letters share their texts.
String letterOf(View text) {
    static const std::array<String, 7> letters{u"i", u"s", u"b", u"y", u"p", u"c", u"d"};
    const auto found = std::ranges::find(letters, text.substr(0, 1), &String::view);
    return found != letters.end() ? *found : toLower(text.substr(0, 1));
}

/// A type letter and the text behind it.
struct Typed {
    explicit Typed(View text) : letter(letterOf(text)), value(text.substr(letter.length())) {}
    bool is(View wanted) const { return letter == wanted; }
    String letter;
    View value;
};

/// A property of one of the plain types, null for any other letter.
Ref<ViewProperty> plainProperty(const Typed& typed) {
    const auto property = [&](Variant value) { return make<ViewProperty>(typed.letter, std::move(value)); };
    switch (typed.letter[0]) {
    case u'b':
        return property(toBoolean(typed.value));
    case u'i':
        return property(toLong(typed.value));
    case u's':
        return property(DecodeText_(typed.value));
    case u'y':
    case u'p':
        return property(typed.value);
    default:
        return nullptr;
    }
}

/// An item of a collection or of a pair, whose first character tells nothing.
Ref<ViewProperty> itemProperty(View item) {
    return plainProperty(Typed(item.substr(std::min<std::size_t>(item.size(), 1))));
}

Ref<OrderedCollection> readCollection(View text) {
    auto items = make<OrderedCollection>();
    forEachPiece(text, u',', [&](View item) {
        if (auto property = itemProperty(item))
            items->Add(std::move(property));
    });
    return items;
}

Ref<Dictionary> readDictionary(View text) {
    auto pairs = make<Dictionary>();
    if (text.empty())
        return pairs;
    forEachPiece(text, u',', [&](View pair) {
        const auto [first, second] = halve(pair, u"-");
        auto keySide = itemProperty(first);
        auto valueSide = itemProperty(second);
        if (!keySide || !valueSide)
            return;
        const Variant key = keySide->Value();
        valueSide->SetKeySideViewProperty(keySide);
        pairs->Add(key, std::move(valueSide));
    });
    return pairs;
}

Ref<ViewProperty> readProperty(const Typed& typed) {
    if (typed.is(u"c"))
        return make<ViewProperty>(typed.letter, readCollection(withoutParentheses(typed.value)));
    if (typed.is(u"d"))
        return make<ViewProperty>(typed.letter, readDictionary(withoutParentheses(typed.value)));
    return plainProperty(typed);
}

void readEntry(View entry, Dictionary& properties) {
    if (entry.empty())
        return;
    const auto [key, typed] = halve(entry, u"=/");
    if (key.empty())
        return;
    if (auto property = readProperty(Typed(typed)))
        properties.Add(key, std::move(property));
}

} // namespace

Ref<Dictionary> g_BuildPropertyObject(const String& sPropertyString) {
    const String text = TokenizeQuotedSubStrings_(sPropertyString, Quote::Double);
    return underMessage(u"VlGeneralServices.modViewProperties.g_BuildPropertyObject",
                        eMsg_ErrorReadingViewPropertiesStringX, [&] {
                            auto properties = make<Dictionary>();
                            forEachPiece(text, u';', [&](View entry) { readEntry(entry, *properties); });
                            return properties;
                        });
}

} // namespace vlgs
