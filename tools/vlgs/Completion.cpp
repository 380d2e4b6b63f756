// SPDX-License-Identifier: MIT
#include "Completion.h"

#include "CommandWords.h"
#include "Misuse.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace vlgs::cli {

namespace {

// The scripts ask the program itself for what the word at the cursor can be, and offer files when that is
// nothing. Behind names that end with ".", "=" or "\" the same word goes on.

constexpr std::string_view forBash = R"(_vlgs() {
    mapfile -t COMPREPLY < <("$1" completion bash -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    [[ ${COMPREPLY[*]-} != *[\ \\\'\"\$\`]* ]] || compopt -o filenames
    [[ ${COMPREPLY-} != *[.=\\] ]] || compopt -o nospace
}
complete -o default -F _vlgs vlgs
)";

constexpr std::string_view forZsh = R"(#compdef vlgs
_vlgs() {
    local word=$PREFIX
    local -a found open
    [[ -n $compstate[quote] ]] || word=${(Q)PREFIX}
    found=("${(@f)$("${(Q)words[1]}" completion zsh -- "${(@Q)words[2,CURRENT-1]}" "$word" 2>/dev/null)}")
    found=(${found:#})
    (( $#found )) || { _files && return; return 1 }
    open=(${(M)found:#*[.=\\]})
    found=(${found:#*[.=\\]})
    (( ! $#open )) || compadd -U -S '' -a open
    (( ! $#found )) || compadd -U -a found
}
if [ "$funcstack[1]" = _vlgs ]; then _vlgs; else compdef _vlgs vlgs; fi
)";

constexpr std::string_view forFish = R"(function __vlgs_find
    set -l words (commandline -opc)
    set -l program $words[1]
    set -e words[1]
    set -l typed (commandline -ct)
    set -l word (string unescape -- $typed; or string trim --left --chars \'\" -- $typed)
    set -g __vlgs_found ($program completion fish -- $words "$word" 2>/dev/null)
    test -n "$__vlgs_found"
end
complete -c vlgs -n __vlgs_find -f -a '$__vlgs_found'
)";

// What a word of bash means: quotes and backslashes are still in it, and the last quote may be missing.
std::string unquoted(std::string_view word) {
    std::string result;
    char quote = 0;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char c = word[i];
        const bool escapes = c == '\\' && quote != '\'' && i + 1 < word.size() &&
                             (quote == 0 || std::string_view("\"\\$`").find(word[i + 1]) != word.npos);
        if (escapes)
            result += word[++i];
        else if (quote == 0 && (c == '\'' || c == '"'))
            quote = c;
        else if (c == quote && quote != 0)
            quote = 0;
        else
            result += c;
    }
    return result;
}

// Bash cuts words at "=" and ":".
std::vector<std::string> wordsOfBash(std::span<const std::string_view> cut) {
    std::vector<std::string> words;
    bool goesOn = false;
    for (const auto piece : cut) {
        const bool isCut = piece == "=" || piece == ":";
        if ((isCut || goesOn) && !words.empty())
            words.back() += unquoted(piece);
        else
            words.push_back(unquoted(piece));
        goesOn = isCut;
    }
    return words;
}

} // namespace

void writeCompletion(std::ostream& out, std::span<const std::string_view> words,
                     std::span<const Command> commands) {
    struct Shell {
        std::string_view name, script;
    };
    static constexpr Shell shells[] = {{"bash", forBash}, {"zsh", forZsh}, {"fish", forFish}};
    const auto shell = std::ranges::find(shells, words.empty() ? std::string_view() : words[0], &Shell::name);
    if (shell == std::end(shells) || (words.size() > 1 && words[1] != "--"))
        throw Misuse("completion needs the name of a shell: bash, zsh or fish");
    if (words.size() == 1) {
        out << shell->script;
        return;
    }
    const auto given = words.subspan(2);
    const auto typed =
        shell->name == "bash" ? wordsOfBash(given) : std::vector<std::string>(given.begin(), given.end());
    for (const auto& name : commandWords(commands, typed))
        out << name << '\n';
}

} // namespace vlgs::cli
