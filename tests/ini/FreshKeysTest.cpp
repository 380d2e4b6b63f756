// SPDX-License-Identifier: MIT
// Documents whose sections and keys are still as they were read, beside documents of the same content that
// stands in general stores: whatever is done to both, both answer the same.
#include "base/Text.h"
#include "ini/INIFile.h"
#include "ini/INIText.h"
#include "platform/Scratch.h"
#include "support/Raised.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace vlgs::test {
namespace {

// Several of these are the same name; U+212A is another "k", U+017F another "s".
constexpr std::u16string_view words[] = {u"k",      u"K",     u"\u212A",    u"s\u017F", u"SS", u"Größe",
                                         u"GRÖSSE", u"grÖßE", u"a b",       u"x",       u"y",  u"\u00E9",
                                         u"\u00C9", u"key",   u"long name", u"日本",    u"z"};

class Pair {
  public:
    explicit Pair(std::uint32_t seed) : random_(seed) {
        read(manyKeys());
        for (int step = 0; step < 150; ++step)
            change();
        compareAll();
    }

  private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    String word() {
        // Numbered names make sections long enough for an index.
        const auto chosen = words[below(std::size(words))];
        return below(2) ? String(chosen) : concat(chosen, decimal(below(12)));
    }
    String section() {
        constexpr std::u16string_view names[] = {u"Sä", u"SÄ", u"t", u"T", u"other"};
        return names[below(std::size(names))];
    }
    String value() { return below(4) ? concat(u"v ", decimal(below(1000))) : word(); }
    Variant index() {
        switch (below(5)) {
        case 0:
            return static_cast<std::int32_t>(below(60)) - 2;
        case 1:
            return static_cast<std::int16_t>(below(60));
        case 2:
            return below(100) / 2.0;
        case 3:
            return null;
        default:
            return word();
        }
    }
    String manyKeys() {
        String text;
        for (std::uint32_t i = below(120); i > 0; --i)
            text += below(15) ? concat(word(), u"=", value(), u"\r\n") : concat(u"[", section(), u"]\r\n");
        return text;
    }

    void read(const String& text) {
        for (auto& document : documents_)
            document->PutStream(text);
        makeGeneral();
    }
    void makeGeneral() {
        documents_[1]->Sections()->Store();
        for (std::int32_t i = 1; i <= documents_[1]->Sections()->Count(); ++i)
            if (const auto keys = documents_[1]->SectionKeys(i))
                keys->Store();
    }

    /// Does the same with both documents and expects the same answer, or the same failure.
    template <class Act>
    void both(Act&& act) {
        Variant answers[2];
        std::int32_t failures[2] = {};
        for (const int side : {0, 1})
            failures[side] = raised([&] { answers[side] = act(*documents_[side], side); }).number;
        EXPECT_EQ(failures[0], failures[1]);
        EXPECT_EQ(answers[0], answers[1]);
    }
    /// What can be told of a key: its texts, and which of the keys met before it is.
    Variant told(const Property* key, int side) {
        if (!key)
            return {};
        auto& met = met_[side];
        const auto at =
            std::find_if(met.begin(), met.end(), [&](const auto& known) { return known.get() == key; });
        const auto number = static_cast<std::int64_t>(at - met.begin());
        if (at == met.end())
            met.emplace_back(const_cast<Property*>(key));
        const String text = key->value().isString() ? key->value().text() : String(u"(keys)");
        return concat(key->name(), u"=", text, u" ", decimal(number));
    }
    Variant told(const Variant& member, int side) {
        const auto* key = objectIn<Property>(&member);
        return key ? told(key, side) : member;
    }

    void change() {
        const String in = section(), name = word(), text = value();
        const Variant at = index(), reference = below(3) ? Variant(missing) : index();
        const bool rarely = below(6) == 0;
        const Variant sectionAt = below(3) ? Variant(in) : at;
        switch (below(20)) {
        case 0:
            return both([&](auto& document, int side) {
                return told(document.CreateKey(in, name, text, reference, missing).get(), side);
            });
        case 1:
            return both([&](auto& document, int side) {
                return told(document.CreateKey(in, name, text).get(), side);
            });
        case 2:
        case 3:
            return both([&](auto& document, int side) { return told(document.Key(in, at).get(), side); });
        case 4:
            return both([&](auto& document, int) { return document.DeleteKey(in, at); });
        case 5:
            return both([&](auto& document, int side) { return told(memberOf(document, in, at), side); });
        case 6:
            return both([&](auto& document, int) {
                const auto keys = document.SectionKeys(in);
                return keys && keys->IsPresent(at);
            });
        case 7: // another member of a section under this name, or a text
            return both([&](auto& document, int side) -> Variant {
                const auto keys = document.SectionKeys(in);
                const Variant member = met_[side].empty() || !met_[side].front()->value().isString()
                                           ? Variant(text)
                                           : Variant(met_[side].front());
                return keys ? keys->Add(member, name, reference) : 0;
            });
        case 8: // the same content, also seen through the document that was there before
            return both([&](auto& document, int side) {
                aliases_[side] = document.Clone(u"C:\\clone.ini");
                return Variant();
            });
        case 12:
            return both([&](auto&, int side) {
                if (aliases_[side])
                    std::swap(documents_[side], aliases_[side]);
                return Variant();
            });
        case 13:
            return both([&](auto& document, int side) {
                return told(document.CreateSection(in, reference).get(), side);
            });
        case 14:
            return both(
                [&](auto& document, int side) { return told(document.CreateSection(in).get(), side); });
        case 15:
            return both(
                [&](auto& document, int side) { return told(document.Section(sectionAt).get(), side); });
        case 16:
            return both([&](auto& document, int) { return document.KeyCount(sectionAt); });
        case 17:
            return both([&](auto& document, int) { return rarely && document.DeleteSection(sectionAt); });
        case 18:
            return both([&](auto& document, int side) {
                enumerators_[side] = document.Sections()->NewEnum();
                return Variant();
            });
        case 9:
            return both([&](auto& document, int side) {
                const auto keys = document.SectionKeys(in);
                enumerators_[side] = keys ? keys->NewEnum() : nullptr;
                return Variant();
            });
        case 10:
            return both([&](auto&, int side) {
                Variant member;
                return enumerators_[side] && enumerators_[side]->next(member) ? told(member, side)
                                                                              : Variant();
            });
        case 11:
            return both([&](auto& document, int) { return document.GetStream(true); });
        default:
            return below(8) ? read(manyKeys()) : saveAndReload();
        }
    }
    static Variant memberOf(const INIFile& document, const String& in, const Variant& at) {
        const auto keys = document.SectionKeys(in);
        return keys ? keys->Item(at) : Variant();
    }

    // In a code page that holds every character.
    void saveAndReload() {
        const Setting setting("VLGS_CODEPAGE", "65001");
        both([&](auto& document, int side) {
            const String path = scratch_.path(side ? "general.ini" : "fresh.ini");
            document.Save(path);
            readFileInto(document, path);
            return document.GetStream(true);
        });
        makeGeneral();
    }

    void compareAll() {
        both([](auto& document, int) { return document.TotalKeyCount(); });
        both([](auto& document, int) { return document.GetStream(false); });
        for (const auto& word : words)
            for (const auto* in : {u"Sä", u"T", u"other"})
                both([&](auto& document, int) { return document.KeyValue(in, word); });
        ASSERT_EQ(met_[0].size(), met_[1].size());
        for (std::size_t i = 0; i < met_[0].size(); ++i) // also those that were removed since
            EXPECT_EQ(told(met_[0][i].get(), 0), told(met_[1][i].get(), 1));
    }

    std::mt19937 random_;
    Scratch scratch_;
    Ref<INIFile> documents_[2] = {make<INIFile>(), make<INIFile>()};
    Ref<INIFile> aliases_[2];
    std::vector<Ref<Property>> met_[2];
    Ref<Enumerator> enumerators_[2];
};

TEST(FreshKeys, BehaveLikeAGeneralStore) {
    for (std::uint32_t seed = 0; seed < 60 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Pair pair(seed);
    }
}

} // namespace
} // namespace vlgs::test
