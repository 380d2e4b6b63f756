// SPDX-License-Identifier: MIT
#include "CommandWords.h"

#include "Candidates.h"
#include "Document.h"
#include "HostText.h"
#include "RegistryText.h"
#include "Suggestions.h"
#include "library/Classes.h"

#include <algorithm>
#include <map>

namespace vlgs::cli {

namespace {

using Names = std::set<std::string, std::less<>>;

/// What can stand behind "ini", the next words and options, and behind "ini get", options.
struct Grammar {
    Names commands;
    std::map<std::string, Names> next;
    std::map<std::string, Names> options;
};

std::vector<std::string> split(std::string_view text, std::string_view separators) {
    std::vector<std::string> result;
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of(separators), text.size());
        if (end > 0)
            result.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

/// Takes the words of a form behind "vlgs": "ini get [--json] [--default=TEXT] FILE SECTION [KEY]".
void takeForm(Grammar& grammar, std::span<const std::string> words) {
    const auto isWord = [](char c) { return (c >= 'a' && c <= 'z') || c == '|'; };
    const auto& command = words.front();
    std::string place = command;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const auto& word = words[i];
        if ((word.starts_with("--") && word.size() > 2) || (word.starts_with("/") && word.size() > 1)) {
            grammar.options[place].insert(
                word.substr(0, word.find('=') == word.npos ? word.npos : word.find('=') + 1));
        } else if (i == 1 && std::ranges::all_of(word, isWord)) {
            const auto choices = split(word, "|");
            grammar.next[command].insert(choices.begin(), choices.end());
            if (choices.size() == 1)
                place += " " + word;
        }
    }
}

Grammar grammarOf(std::span<const Command> commands) {
    Grammar grammar;
    for (const auto& command : commands) {
        grammar.commands.emplace(command.name);
        for (const auto& form : formsOf(command)) {
            const auto words = split(form, " []");
            takeForm(grammar, std::span(words).subspan(1));
        }
    }
    grammar.next["help"] = grammar.commands;
    return grammar;
}

using Given = std::span<const std::string>;

void offerAll(Candidates& candidates, const Names& names) {
    for (const auto& name : names)
        candidates.offer(name);
}

/// The words that are no options, whose own values count as options.
std::vector<std::string> plainWords(Given words, const Names& withValue) {
    std::vector<std::string> plain;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (withValue.contains(words[i]))
            ++i;
        else if (!words[i].starts_with("--") && (withValue.empty() || !words[i].starts_with("/")))
            plain.push_back(words[i]);
    }
    return plain;
}

// ---- call, describe ----

void offerChain(Candidates& candidates, Given before) {
    std::vector<std::string_view> words(before.begin(), before.end());
    std::erase(words, "--json");
    for (auto& name : suggestions(chainWords(words), candidates.word(), {}))
        candidates.offer(words.empty() && name.find('.') == name.npos ? name + "." : name);
}

void offerDescribed(Candidates& candidates) {
    for (const auto* info : classes()) {
        candidates.offer(std::string(info->name()));
        for (const auto& member : info->members())
            if (!member.hidden)
                candidates.offer(std::string(info->name()) + "." + std::string(member.name));
    }
}

// ---- ini ----

void offerKeys(Candidates& candidates, const SectionView& section, const std::string& before,
               const char* behind) {
    for (std::int32_t i = 1; i <= section.count(); ++i)
        candidates.offer(before + toHost(section.key(i).name()) + behind);
}

void offerAssignments(Candidates& candidates, const INIFile& document) {
    const String word = String::fromUtf8(candidates.word());
    for (const auto& section : sectionsOf(document)) {
        const String start = concat(section.name, u".");
        if (equalIgnoringCase(word.view().substr(0, start.length()), start.view()))
            offerKeys(candidates, section, toHost(start), "=");
        else
            candidates.offer(toHost(start));
    }
}

void offerOfDocument(Candidates& candidates, std::string_view command, Given before) {
    const auto plain = plainWords(before, {});
    const bool sets = command == "set";
    if (plain.empty() || (!sets && command != "get" && command != "delete"))
        return;
    const auto document = readDocument(plain[0]);
    if (sets)
        offerAssignments(candidates, *document);
    else if (plain.size() == 1)
        for (const auto& section : sectionsOf(*document))
            candidates.offer(toHost(section.name));
    if (plain.size() == 2 && plain[1].find('=') == plain[1].npos)
        offerKeys(candidates, sectionNamed(*document, fromHost(plain[1])), "", "");
}

// ---- reg ----

constexpr std::string_view hives[] = {"HKCR", "HKCU", "HKLM", "HKU", "HKCC", "HKDD"};

void offerRegistryKeys(Candidates& candidates) {
    const auto word = candidates.word();
    const auto slash = word.rfind('\\');
    if (slash == word.npos) {
        for (const auto hive : hives)
            candidates.offer(std::string(hive) + "\\");
        return;
    }
    std::vector<String> names;
    RegistryPath(fromHost(word.substr(0, slash))).open(registryAccess::enumerateSubKeys).keyNames(names);
    for (const auto& name : names)
        candidates.offer(std::string(word.substr(0, slash + 1)) + toHost(name));
}

void offerValueNames(Candidates& candidates, std::string_view key) {
    std::vector<RegistryValue> values;
    RegistryPath(fromHost(key)).open(registryAccess::queryValue).values(values);
    for (const auto& value : values)
        if (!value.name.empty())
            candidates.offer(toHost(value.name));
}

void offerOfRegistry(Candidates& candidates, std::string_view command, Given before) {
    const auto last = before.empty() ? std::string_view() : std::string_view(before.back());
    const auto plain = plainWords(before, {"/v", "/t", "/d"});
    if (last == "/v") {
        if (!plain.empty())
            offerValueNames(candidates, plain[0]);
    } else if (last == "/t") {
        for (const String& type : knownTypes())
            candidates.offer(toHost(type));
    } else if (plain.empty() && command != "import") {
        offerRegistryKeys(candidates);
    }
}

// ---- All ----

void offerOptions(Candidates& candidates, const Grammar& grammar, Given before) {
    const auto offer = [&](const std::string& place) {
        if (const auto known = grammar.options.find(place); known != grammar.options.end())
            offerAll(candidates, known->second);
    };
    offer(before[0]);
    if (before.size() > 1)
        offer(before[0] + " " + before[1]);
}

void offerWords(Candidates& candidates, const Grammar& grammar, Given before) {
    if (before.empty())
        return offerAll(candidates, grammar.commands);
    const auto& command = before[0];
    const auto next = grammar.next.find(command);
    if (candidates.word().starts_with('-') || candidates.word().starts_with('/'))
        offerOptions(candidates, grammar, before);
    else if (before.size() == 1 && next != grammar.next.end())
        offerAll(candidates, next->second);
    else if (command == "call")
        offerChain(candidates, before.subspan(1));
    else if (command == "describe")
        offerDescribed(candidates);
    else if (command == "ini" && before.size() > 1)
        offerOfDocument(candidates, before[1], before.subspan(2));
    else if (command == "reg" && before.size() > 1)
        offerOfRegistry(candidates, before[1], before.subspan(2));
}

} // namespace

std::vector<std::string> formsOf(const Command& command) {
    std::vector<std::string> forms;
    for (const auto& line : split(command.usage, "\n")) {
        const auto start = line.find_first_not_of(' ');
        if (start == 0)
            forms.push_back(line);
        else
            forms.back() += " " + line.substr(start);
    }
    return forms;
}

std::vector<std::string> commandWords(std::span<const Command> commands, std::span<const std::string> words) {
    if (words.empty())
        return {};
    Candidates candidates(words.back());
    try {
        offerWords(candidates, grammarOf(commands), words.first(words.size() - 1));
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a line that is being typed may be wrong
    }
    return candidates.found();
}

} // namespace vlgs::cli
