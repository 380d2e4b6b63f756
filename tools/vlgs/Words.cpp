// SPDX-License-Identifier: MIT
#include "Words.h"

#include "HostText.h"
#include "InputFile.h"
#include "Misuse.h"
#include "base/NearestName.h"

#include <algorithm>
#include <utility>

namespace vlgs::cli {

Words::Words(std::string_view command, std::span<const std::string_view> given,
             std::initializer_list<std::string_view> known)
    : command_(command) {
    for (std::size_t i = 0; i < given.size(); ++i) {
        const auto word = given[i];
        if (word == "--") {
            plain_.insert(plain_.end(), given.begin() + static_cast<std::ptrdiff_t>(i) + 1, given.end());
            return;
        }
        const auto option = std::ranges::find_if(known, [&](std::string_view name) {
            return name.starts_with("--") && name.ends_with("=") ? word.starts_with(name)
                   : name.ends_with("=")                         ? word == name.substr(0, name.size() - 1)
                                                                 : word == name;
        });
        if (option == known.end()) {
            if (word.starts_with("--"))
                throw Misuse(command_ + " knows no option " + std::string(word) +
                             (known.size() == 1 ? ", only " + std::string(*known.begin())
                                                : nearest(word, {known.begin(), known.size()})));
            plain_.push_back(word);
        } else if (option->starts_with("--")) {
            options_.emplace_back(*option,
                                  word.substr(option->ends_with("=") ? option->size() : word.size()));
        } else if (!option->ends_with("=")) {
            options_.emplace_back(*option, std::string_view());
        } else if (++i == given.size()) {
            throw Misuse(std::string(word) + " needs a value");
        } else {
            options_.emplace_back(*option, given[i]);
        }
    }
}

std::optional<std::string_view> Words::value(std::string_view option) const {
    for (const auto& [name, value] : options_)
        if (name == option)
            return value;
    return std::nullopt;
}

void Words::need(std::size_t least, std::size_t most, std::string_view words) const {
    if (plain_.size() < least || plain_.size() > most)
        throw Misuse(command_ + " needs " + std::string(words));
}

namespace {

std::string takeInput() {
    static bool taken = false;
    if (std::exchange(taken, true))
        throw Misuse("standard input is one value: a second @- has nothing to read");
    return readInput();
}

} // namespace

String valueOf(std::string_view word) {
    if (!word.starts_with('@') || word.size() == 1)
        return fromHost(word);
    word.remove_prefix(1);
    if (word.starts_with('@'))
        return fromHost(word);
    std::string content;
    if (word == "-")
        content = takeInput();
    else
        content = readNamed(word);
    if (content.ends_with('\n'))
        content.pop_back();
    if (content.ends_with('\r'))
        content.pop_back();
    return fromHost(content);
}

int runSubcommand(std::string_view command, std::span<const std::string_view> words,
                  std::initializer_list<Subcommand> subcommands) {
    const auto wanted = words.empty() ? std::string_view() : words.front();
    std::vector<std::string_view> names;
    std::string list;
    for (const auto& [name, run] : subcommands) {
        if (name == wanted)
            return run(words.subspan(1));
        names.push_back(name);
        list += (list.empty() ? "" : ", ") + std::string(name);
    }
    throw Misuse(std::string(command) +
                 (wanted.empty() ? "" : " knows no \"" + std::string(wanted) + "\" and") + " needs one of " +
                 list + nearest(wanted, names));
}

std::string nearest(std::string_view wanted, std::span<const std::string_view> names) {
    const String text = String::fromUtf8(wanted);
    NearestName near(text);
    for (const auto name : names)
        near.offer(name);
    return near.found().empty() ? "" : "; did you mean " + std::string(near.found()) + "?";
}

} // namespace vlgs::cli
