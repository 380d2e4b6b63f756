// SPDX-License-Identifier: MIT
#include "Explain.h"

#include "HostText.h"
#include "InputFile.h"
#include "Json.h"
#include "Terminal.h"
#include "Words.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "files/Files.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <utility>
#include <vector>

namespace vlgs::cli {

namespace {

struct Meaning {
    std::string_view name;
    std::string_view meaning;
    bool isSecret = false;
};

constexpr Meaning meanings[] = {
    {"DRIVER", "the ODBC driver"},
    {"DSN", "the ODBC data source"},
    {"DBQ", "the database file"},
    {"SERVER", "the database server"},
    {"DATABASE", "the database on it"},
    {"UID", "the account"},
    {"PWD", "its password", true},
    {"PASSWORD", "its password", true},
    {"ENCRYPTED", "whether the password is scrambled"},
    {"VLGUID", "the project's identity"},
    {"VLPROJKEY", "the project's key"},
    {"SCHEMATOKEN", "the schema"},
    {"SEQKEY", "the sequence key"},
};

// Rather too often than too seldom.
bool mayBeSecret(std::u16string_view name) {
    return std::ranges::any_of(std::array{u"pass", u"pwd", u"secret", u"token", u"credential", u"apikey"},
                               [&](auto* part) { return findIgnoringCase(name, part) != name.npos; });
}

Meaning meaningOf(std::u16string_view name) {
    const auto known = std::ranges::find_if(
        meanings, [&](const Meaning& each) { return equalIgnoringCase(each.name, name); });
    return known == std::end(meanings) ? Meaning{{}, "as it stands in the file", mayBeSecret(name)} : *known;
}

struct Pair {
    String name;
    String value;
};

// "NAME=VALUE;…", where a value in braces may hold semicolons.
std::vector<Pair> pairsOf(std::u16string_view text) {
    std::vector<Pair> pairs;
    while (!text.empty()) {
        const auto equals = std::min(text.find(u'='), text.find(u';'));
        auto from = equals;
        if (equals != text.npos && text.substr(equals).starts_with(u"={"))
            if (const auto close = text.find(u'}', equals); close != text.npos)
                from = close;
        const auto end = std::min(text.find(u';', from == text.npos ? 0 : from), text.size());
        const auto pair = text.substr(0, end);
        if (!pair.empty())
            pairs.push_back({pair.substr(0, equals), equals < pair.size() ? pair.substr(equals + 1) : u""});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pairs;
}

void printJson(const std::vector<Pair>& pairs) {
    Json json(std::cout, Json::Layout::Entries);
    json.array([&] {
        for (const auto& pair : pairs)
            json.object([&] {
                json.field("name", pair.name);
                json.field("value", pair.value);
                json.field("meaning", meaningOf(pair.name).meaning);
            });
    });
    json.end();
}

} // namespace

int explain(std::span<const std::string_view> given) {
    const Words words("explain", given, {"--json", "--show-secrets"});
    words.need(1, 1, "one project information file or database link file");
    auto pairs = readNamed(words[0], [](const String& path) {
        requireFile(path);
        return pairsOf(make<Files>()->BuildConnectionStringFromPath(path));
    });
    std::size_t nameWidth = 0, valueWidth = 0;
    for (auto& [name, value] : pairs) {
        if (meaningOf(name).isSecret && !words.has("--show-secrets"))
            value = u"********";
        nameWidth = std::max(nameWidth, name.length());
        valueWidth = std::max(valueWidth, value.length());
    }
    if (words.has("--json")) {
        printJson(pairs);
        return 0;
    }
    for (const auto& [name, value] : pairs)
        std::cout << inColour(Colour::Name, toHost(name)) << std::string(nameWidth + 2 - name.length(), ' ')
                  << toHost(value) << std::string(valueWidth + 2 - value.length(), ' ')
                  << meaningOf(name).meaning << '\n';
    return 0;
}

} // namespace vlgs::cli
