// SPDX-License-Identifier: MIT
#include "Ini.h"

#include "Document.h"
#include "EditLock.h"
#include "HostText.h"
#include "InputFile.h"
#include "Misuse.h"
#include "Terminal.h"
#include "Words.h"
#include "base/Text.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <utility>

namespace vlgs::cli {

namespace {

// One value and its line end.
template <class Write>
void printJson(Json::Layout layout, Write&& write) {
    Json json(std::cout, layout);
    write(json);
    json.end();
}

void printJson(const INIFile& document) {
    printJson(Json::Layout::Entries, [&](Json& json) { writeDocument(json, document); });
}

void printText(const String& text, bool json) {
    if (json)
        printJson(Json::Layout::Line, [&](Json& out) { out.value(text); });
    else
        std::cout << toHost(text) << '\n';
}

// Section and key of "SECTION.KEY": the section is the longest one that the document has, else what stands
// before the first dot.
std::pair<std::u16string_view, std::u16string_view> splitName(const INIFile& document,
                                                              std::u16string_view name) {
    auto dot = name.find(u'.');
    for (auto at = dot; at != name.npos; at = name.find(u'.', at + 1))
        if (hasSection(document, name.substr(0, at)))
            dot = at;
    return {name.substr(0, dot), name.substr(dot + 1)};
}

struct Target {
    String section;
    std::optional<String> key;
};

// What stands behind the file: SECTION, SECTION KEY, or SECTION.KEY where no section has that name, or one
// nearly so.
Target targetOf(const INIFile& document, const Words& words) {
    const String name = fromHost(words[1]);
    if (words.count() == 3)
        return {name, fromHost(words[2])};
    const auto hasDot = [](std::u16string_view text) { return text.find(u'.') != text.npos; };
    if (!hasDot(name) || hasSection(document, name))
        return {name, std::nullopt};
    const auto [section, key] = splitName(document, name);
    if (!hasSection(document, section) &&
        std::ranges::any_of(sectionsOf(document), [&](const auto& each) { return hasDot(each.name); }))
        return {name, std::nullopt};
    return {section, key};
}

int get(std::span<const std::string_view> given) {
    const Words words("ini get", given, {"--json", "--default="});
    words.need(2, 3, "a file, a section and perhaps a key");
    const bool json = words.has("--json");
    const auto standard = words.value("--default=");
    const bool isKey = words.count() == 3 || words[1].find('.') != std::string_view::npos;
    try {
        const auto document = readDocument(words[0]);
        const auto target = targetOf(*document, words);
        const auto section = sectionNamed(*document, target.section);
        if (target.key) {
            printText(keyNamed(section, *target.key), json);
        } else if (json) {
            printJson(Json::Layout::Line, [&](Json& out) { writeKeys(out, section); });
        } else {
            for (std::int32_t i = 1; i <= section.count(); ++i)
                std::cout << toHost(section.key(i).name()) << '=' << toHost(section.key(i).value().text())
                          << '\n';
        }
    } catch (const Error& error) {
        if (!standard || !isKey ||
            (!error.is(RunTimeError::SubscriptOutOfRange) && !error.is(RunTimeError::FileNotFound)))
            throw;
        printText(fromHost(*standard), json);
    }
    return 0;
}

struct Assignment {
    String section;
    String key;
    String value;
};

// What would not be read again as it was written.
void requireStorable(const Assignment& assignment) {
    const auto hasLineEnd = [](std::u16string_view text) { return text.find_first_of(u"\r\n") != text.npos; };
    const auto& [section, key, value] = assignment;
    if (hasLineEnd(value) || hasLineEnd(key) || hasLineEnd(section))
        throw Misuse("names and values in documents are one line");
    if (key.view().find(u'=') != key.view().npos || trim(key) != key.view())
        throw Misuse("the name of a key has no \"=\", and no blank at its ends: \"" + toHost(key) + "\"");
    if (section.view().find_first_of(u"]=") != section.view().npos || trim(section) != section.view())
        throw Misuse("the name of a section has no \"]\" or \"=\", and no blank at its ends: \"" +
                     toHost(section) + "\"");
}

std::vector<Assignment> assignmentsOf(const INIFile& document, const Words& words) {
    std::vector<Assignment> result;
    if (words.count() == 4 && words[1].find('=') == std::string_view::npos) {
        result.push_back({fromHost(words[1]), fromHost(words[2]), valueOf(words[3])});
    } else {
        for (std::size_t i = 1; i < words.count(); ++i) {
            const auto equals = words[i].find('=');
            const auto name = words[i].substr(0, equals);
            if (equals == std::string_view::npos || name.find('.') == std::string_view::npos)
                throw Misuse("\"" + std::string(words[i]) +
                             "\" is no SECTION.KEY=VALUE; ini set also takes FILE SECTION KEY VALUE");
            const String text = fromHost(name);
            const auto [section, key] = splitName(document, text);
            result.push_back({section, key, valueOf(words[i].substr(equals + 1))});
        }
    }
    for (const auto& assignment : result)
        requireStorable(assignment);
    return result;
}

int set(std::span<const std::string_view> given) {
    const Words words("ini set", given, {"--drop-lines"});
    words.need(2, words.count(), "a file and SECTION.KEY=VALUE, or a file, a section, a key and a value");
    const EditLock lock(fullPath(fromHost(words[0])));
    const auto document = readDocument(words[0], Absent::IsEmpty);
    for (const auto& [section, key, value] : assignmentsOf(*document, words))
        document->CreateKey(Variant(section), key, value);
    saveDocument(*document, words.has("--drop-lines"));
    return 0;
}

int remove(std::span<const std::string_view> given) {
    const Words words("ini delete", given, {"--drop-lines"});
    words.need(2, 3, "a file, a section and perhaps a key");
    const EditLock lock(fullPath(fromHost(words[0])));
    const auto document = readDocument(words[0]);
    const auto [name, key] = targetOf(*document, words);
    const auto section = sectionNamed(*document, name);
    if (key) {
        keyNamed(section, *key);
        document->DeleteKey(name, Variant(*key));
    } else {
        document->DeleteSection(Variant(name));
    }
    saveDocument(*document, words.has("--drop-lines"));
    return 0;
}

int list(std::span<const std::string_view> given) {
    const Words words("ini list", given, {"--json"});
    words.need(1, 1, "one file");
    const auto document = readDocument(words[0]);
    if (words.has("--json")) {
        printJson(*document);
        return 0;
    }
    for (const auto& section : sectionsOf(*document))
        for (std::int32_t i = 1; i <= section.count(); ++i)
            std::cout << toHost(section.name) << '.' << toHost(section.key(i).name()) << '='
                      << toHost(section.key(i).value().text()) << '\n';
    return 0;
}

int tree(std::span<const std::string_view> given) {
    const Words words("ini tree", given, {"--json"});
    words.need(1, 1, "one file");
    const auto document = readDocument(words[0]);
    if (words.has("--json")) {
        printJson(*document);
        return 0;
    }
    std::cout << words[0] << '\n';
    const auto sections = sectionsOf(*document);
    for (std::size_t s = 0; s < sections.size(); ++s) {
        const bool last = s + 1 == sections.size();
        std::cout << branch(last) << inColour(Colour::Group, toHost(sections[s].name)) << '\n';
        for (std::int32_t i = 1; i <= sections[s].count(); ++i)
            std::cout << trunk(last) << branch(i == sections[s].count())
                      << inColour(Colour::Name, toHost(sections[s].key(i).name())) << '='
                      << toHost(sections[s].key(i).value().text()) << '\n';
    }
    return 0;
}

// ---- Differences ----

struct Difference {
    String section;
    std::optional<String> key; // none for a section without keys
    std::optional<String> before, after;
};

const Property* find(const INIFile& document, std::u16string_view section, std::u16string_view key) {
    const auto keys = document.SectionKeys(Variant(String(section)));
    return keys ? keys->property(key) : nullptr;
}

// What `from` has and `to` has otherwise or, with `onlyAbsent`, not at all.
void compare(const INIFile& from, const INIFile& to, bool backwards, std::vector<Difference>& found) {
    const auto add = [&](const String& section, std::optional<String> key, String value,
                         std::optional<String> other) {
        Difference difference{section, std::move(key), std::move(value), std::move(other)};
        if (backwards)
            std::swap(difference.before, difference.after);
        found.push_back(std::move(difference));
    };
    for (const auto& section : sectionsOf(from)) {
        if (section.count() == 0 && !hasSection(to, section.name))
            add(section.name, std::nullopt, {}, std::nullopt);
        for (std::int32_t i = 1; i <= section.count(); ++i) {
            const auto& key = section.key(i);
            const Property* other = find(to, section.name, key.name());
            if (!other)
                add(section.name, key.name(), key.value().text(), std::nullopt);
            else if (!backwards && other->value().text() != key.value().text())
                add(section.name, key.name(), key.value().text(), other->value().text());
        }
    }
}

void printDifference(const Difference& difference) {
    const auto print = [&](char sign, Colour colour, const std::optional<String>& value) {
        if (!value)
            return;
        std::string line = std::string(1, sign) + "[" + toHost(difference.section) + "]";
        if (difference.key)
            line += " " + toHost(*difference.key) + "=" + toHost(*value);
        std::cout << inColour(colour, line) << '\n';
    };
    print('-', Colour::Gone, difference.before);
    print('+', Colour::Added, difference.after);
}

void printJson(const std::vector<Difference>& differences) {
    printJson(Json::Layout::Entries, [&](Json& json) {
        json.array([&] {
            for (const auto& difference : differences)
                json.object([&] {
                    json.field("section", difference.section);
                    const std::pair<const char*, const std::optional<String>&> fields[] = {
                        {"key", difference.key}, {"before", difference.before}, {"after", difference.after}};
                    for (const auto& [name, value] : fields) {
                        json.name(name);
                        value ? json.value(value->view()) : json.null();
                    }
                });
        });
    });
}

int diff(std::span<const std::string_view> given) {
    const Words words("ini diff", given, {"--json"});
    words.need(2, 2, "two files");
    const auto before = readDocument(words[0]);
    const auto after = readDocument(words[1]);
    std::vector<Difference> differences;
    compare(*before, *after, false, differences);
    compare(*after, *before, true, differences);
    if (words.has("--json"))
        printJson(differences);
    else
        for (const auto& difference : differences)
            printDifference(difference);
    return differences.empty() ? 0 : 1;
}

void printJson(const std::vector<Finding>& findings) {
    printJson(Json::Layout::Entries, [&](Json& json) {
        json.array([&] {
            for (const auto& finding : findings)
                json.object([&] {
                    json.name("line");
                    json.raw(std::to_string(finding.line));
                    json.field("problem", finding.what);
                    json.field("lost", finding.isLost);
                });
        });
    });
}

int check(std::span<const std::string_view> given) {
    const Words words("ini check", given, {"--json"});
    words.need(1, 1, "one file");
    const auto findings = readNamed(words[0], checkLines);
    if (words.has("--json"))
        printJson(findings);
    else
        for (const auto& finding : findings)
            std::cout << words[0] << ':' << finding.line << ": " << finding.what << '\n';
    return findings.empty() ? 0 : 1;
}

} // namespace

int ini(std::span<const std::string_view> words) {
    return runSubcommand("ini", words,
                         {{"get", get},
                          {"set", set},
                          {"delete", remove},
                          {"list", list},
                          {"tree", tree},
                          {"diff", diff},
                          {"check", check}});
}

} // namespace vlgs::cli
