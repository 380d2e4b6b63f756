// SPDX-License-Identifier: MIT
#include "Script.h"

#include "Chain.h"
#include "Describe.h"
#include "HostText.h"
#include "InputFile.h"
#include "LineEditor.h"
#include "Misuse.h"
#include "Report.h"
#include "ScriptLine.h"
#include "Suggestions.h"
#include "base/Error.h"

#include <charconv>
#include <cstdint>
#include <iostream>
#include <optional>
#include <sstream>

namespace vlgs::cli {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

class Script {
  public:
    Script(bool json, std::span<const std::string_view> arguments) : json_(json) {
        for (std::size_t i = 0; i < arguments.size(); ++i)
            variables_[std::to_string(i + 1)] = Variant(fromHost(arguments[i]));
    }

    bool ended() const noexcept { return ended_; }
    /// What the lines wanted it to end with.
    int status() const noexcept { return status_; }
    const Variables& variables() const noexcept { return variables_; }

    void carryOut(std::string_view text) {
        const ScriptLine line(text);
        const auto words = line.words();
        if (words.empty() || command(words))
            return;
        if (words.size() > 1 && !words[1].isLiteral && words[1].text == "=")
            return assign(words);
        const auto result = runChain(words, &variables_);
        if (json_)
            printJson(std::cout, result.value, result.arguments());
        else
            print(std::cout, result.value);
    }

  private:
    void assign(std::span<const ChainWord> words) {
        const auto name = words[0].text;
        if (words[0].isLiteral || !isIdentifier(name))
            throw Misuse("\"" + std::string(name) +
                         "\" is no name for a variable; a property is written as NAME.MEMBER=VALUE");
        auto value = runChain(words.subspan(2), &variables_).value;
        variables_.insert_or_assign(std::string(name), std::move(value));
    }

    bool command(std::span<const ChainWord> words) {
        const auto name = words[0].text;
        if (words[0].isLiteral || (words.size() > 1 && words[1].text == "="))
            return false;
        std::vector<std::string_view> rest;
        for (const auto& word : words.subspan(1))
            rest.push_back(word.text);
        if (name == "describe")
            describe(std::cout, rest);
        else if (name == "classes" && rest.empty())
            listClasses(std::cout);
        else if (name == "help" && rest.empty())
            std::cout << runHelp;
        else if ((name == "exit" || name == "quit") && rest.size() < 2)
            end(rest);
        else
            return false;
        return true;
    }

    void end(std::span<const std::string_view> words) {
        std::uint8_t status = 0;
        if (!words.empty()) {
            const auto word = words.front();
            const auto [stop, failure] = std::from_chars(word.data(), word.data() + word.size(), status);
            if (failure != std::errc() || stop != word.data() + word.size())
                throw Misuse("exit takes a status from 0 to 255");
        }
        status_ = status;
        ended_ = true;
    }

    bool json_;
    bool ended_ = false;
    int status_ = 0;
    Variables variables_;
};

// The status of the first line that fails, with its place told.
int runLines(std::istream& lines, const std::string& name, Script& script) {
    std::string line;
    for (std::size_t number = 1; !script.ended(); ++number) {
        try {
            if (!nextLine(*lines.rdbuf(), line))
                break;
            const bool marked = number == 1 && line.starts_with(byteOrderMark);
            script.carryOut(std::string_view(line).substr(marked ? byteOrderMark.size() : 0));
        } catch (const std::exception&) {
            std::cout.flush();
            return reportFailure(name + ":" + std::to_string(number) + ": ");
        }
    }
    return script.status();
}

int converse(Script& script) {
    LineEditor editor([&](std::string_view before, std::string_view word) {
        const ScriptLine line(before);
        auto words = line.words();
        const bool assigns = words.size() > 1 && words[1].text == "=";
        return suggestions(std::span(words).subspan(assigns ? 2 : 0), word, script.variables());
    });
    while (!script.ended()) {
        const auto line = editor.read("vlgs> ");
        if (!line) {
            std::cout << '\n';
            break;
        }
        try {
            script.carryOut(*line);
        } catch (const std::exception&) {
            std::cout.flush();
            reportFailure();
        }
        std::cout.flush();
    }
    return script.status();
}

} // namespace

int runScript(std::span<const std::string_view> words) {
    const bool json = !words.empty() && words.front() == "--json";
    if (json)
        words = words.subspan(1);
    if (!words.empty() && words.front().starts_with("--"))
        throw Misuse("run knows no option " + std::string(words.front()) + ", only --json");
    Script script(json, words.empty() ? words : words.subspan(1));
    const bool fromInput = words.empty() || words.front() == "-";
    if (fromInput && isInteractive())
        return converse(script);
    if (fromInput)
        return runLines(std::cin, "-", script);
    std::istringstream lines(readNamed(words.front()));
    return runLines(lines, std::string(words.front()), script);
}

} // namespace vlgs::cli
