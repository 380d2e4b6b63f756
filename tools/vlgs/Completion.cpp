// SPDX-License-Identifier: MIT
#include "Completion.h"

#include "Misuse.h"
#include "library/Classes.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

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
void takeForm(Grammar& grammar, const std::vector<std::string>& words) {
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
        std::vector<std::string> form;
        for (const auto& line : split(command.usage, "\n")) {
            auto words = split(line, " []");
            if (line.starts_with(" ")) {
                form.insert(form.end(), words.begin(), words.end());
                continue;
            }
            if (!form.empty())
                takeForm(grammar, form);
            form.assign(words.begin() + 1, words.end());
        }
        takeForm(grammar, form);
    }
    grammar.next["help"] = grammar.commands;
    return grammar;
}

std::string joined(const Names& names) {
    std::string list;
    for (const auto& name : names)
        list += (list.empty() ? "" : " ") + name;
    return list;
}

/// The names of all members behind "CLASS." or, with `steps`, behind ".".
Names memberNames(bool steps) {
    Names names;
    for (const auto* info : classes())
        for (const auto& member : info->members())
            if (!member.hidden)
                names.insert((steps ? "" : std::string(info->name())) + "." + std::string(member.name));
    return names;
}

Names describedNames() {
    Names names = memberNames(false);
    for (const auto* info : classes())
        names.emplace(info->name());
    return names;
}

/// The part that bash and zsh have in common: sets `names` by $at, the place of the word, $command and $next,
/// the words behind "vlgs", and $word.
void writeCases(std::ostream& out, const Grammar& grammar) {
    out << "    case \"$at $command $next\" in\n    \"1 \"*) names='" << joined(grammar.commands) << "' ;;\n"
        << "    \"2 call \"*) names='--json " << joined(memberNames(false)) << "' ;;\n"
        << "    *\" call \"*) [[ $word != .* ]] || names='" << joined(memberNames(true)) << "' ;;\n"
        << "    \"2 describe \"*) names='--json --markdown " << joined(describedNames()) << "' ;;\n";
    for (const auto& [command, names] : grammar.next)
        out << "    \"2 " << command << " \"*) names='" << joined(names) << "' ;;\n";
    for (const auto& [place, names] : grammar.options)
        out << "    *\" " << place << " \"*) [[ $word != [-/]* ]] || names='" << joined(names) << "' ;;\n";
    out << "    esac\n";
}

void writeForBash(std::ostream& out, const Grammar& grammar) {
    out << "_vlgs() {\n    local names= at=$COMP_CWORD command=${COMP_WORDS[1]} next=\"${COMP_WORDS[2]} \"\n"
           "    local word=${COMP_WORDS[COMP_CWORD]}\n";
    writeCases(out, grammar);
    out << "    COMPREPLY=($(compgen -W \"$names\" -- \"$word\"))\n"
           "    [[ ${COMPREPLY-} != *= ]] || compopt -o nospace\n}\n"
           "complete -o default -F _vlgs vlgs\n";
}

void writeForZsh(std::ostream& out, const Grammar& grammar) {
    out << "#compdef vlgs\n_vlgs() {\n"
           "    local names= at=$((CURRENT - 1)) command=$words[2] next=\"$words[3] \" "
           "word=$words[CURRENT]\n";
    writeCases(out, grammar);
    out << "    compadd -- ${=names} || _files\n}\n"
           "if [ \"$funcstack[1]\" = _vlgs ]; then _vlgs; else compdef _vlgs vlgs; fi\n";
}

void writeForFish(std::ostream& out, const Grammar& grammar) {
    const auto write = [&](const std::string& condition, const Names& names, bool files) {
        out << "complete -c vlgs -n '" << condition << (files ? "' -a '" : "' -f -a '") << joined(names)
            << "'\n";
    };
    const auto seen = [](const std::string& words) { return "__fish_seen_subcommand_from " + words; };
    write("__fish_use_subcommand", grammar.commands, false);
    write(seen("call"), memberNames(false), true);
    write(seen("call") + "; and string match -q \".*\" -- (commandline -ct)", memberNames(true), true);
    write(seen("describe"), describedNames(), false);
    for (const auto& [command, names] : grammar.next)
        write(seen(command) + "; and not " + seen(joined(names)), names, false);
    for (const auto& [place, names] : grammar.options) {
        const auto words = split(place, " ");
        write(seen(words.front()) + (words.size() > 1 ? "; and " + seen(words.back()) : ""), names, true);
    }
}

} // namespace

void writeCompletion(std::ostream& out, std::string_view shell, std::span<const Command> commands) {
    const auto grammar = grammarOf(commands);
    if (shell == "bash")
        writeForBash(out, grammar);
    else if (shell == "zsh")
        writeForZsh(out, grammar);
    else if (shell == "fish")
        writeForFish(out, grammar);
    else
        throw Misuse("completion is made for bash, zsh and fish");
}

} // namespace vlgs::cli
