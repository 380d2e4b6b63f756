// SPDX-License-Identifier: MIT
#include "ScriptLine.h"

#include "Misuse.h"

#include <algorithm>

namespace vlgs::cli {

namespace {

constexpr std::string_view blanks = " \t\r";

// Moves what stands between quotes from the line to the word.
void takeQuoted(std::string_view& line, std::string& word) {
    const char quote = line.front();
    line.remove_prefix(1);
    while (!line.empty() && line.front() != quote) {
        const bool escapes = quote == '"' && (line.starts_with("\\\"") || line.starts_with("\\\\"));
        word += line[escapes ? 1 : 0];
        line.remove_prefix(escapes ? 2 : 1);
    }
    if (line.empty())
        throw Misuse(std::string("a ") + quote + " is missing at the end of a text");
    line.remove_prefix(1);
}

std::string takeWord(std::string_view& line) {
    std::string word;
    while (!line.empty() && blanks.find(line.front()) == blanks.npos) {
        if (line.front() == '\'' || line.front() == '"') {
            takeQuoted(line, word);
        } else {
            word += line.front();
            line.remove_prefix(1);
        }
    }
    return word;
}

} // namespace

ScriptLine::ScriptLine(std::string_view line) {
    bool rest = false;
    for (;;) {
        line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
        if (line.empty() || line.front() == '#')
            return;
        const bool quoted = line.front() == '\'' || line.front() == '"';
        auto word = takeWord(line);
        if (word == "--" && !quoted && !rest)
            rest = true;
        else
            words_.push_back({std::move(word), quoted || rest});
    }
}

std::vector<ChainWord> ScriptLine::words() const {
    std::vector<ChainWord> result;
    for (const auto& [text, isLiteral] : words_)
        result.push_back({text, isLiteral});
    return result;
}

} // namespace vlgs::cli
