// SPDX-License-Identifier: MIT
#include "Suggestions.h"

#include "CallArguments.h"
#include "HostText.h"
#include "base/Ascii.h"
#include "library/Classes.h"

#include <algorithm>
#include <set>

namespace vlgs::cli {

namespace {

// What is known of a chain: the class of what it has given so far, and of the object whose member that was;
// null for what only a run tells.
struct Known {
    const ClassInfo* given = nullptr;
    const ClassInfo* holder = nullptr;
    bool begun = false;
};

const ClassInfo* resultOf(const ClassInfo* type, std::string_view member) {
    if (type)
        for (const auto* row : rowsOf(*type, member))
            if (row->result.classInfo)
                return &row->result.classInfo();
    return nullptr;
}

const ClassInfo* typeOf(std::string_view name, const Variables& variables) {
    if (const auto known = variables.find(name); known != variables.end())
        return known->second.isObject() && known->second.object() ? known->second.object()->classInfo()
                                                                  : nullptr;
    return findClass(fromHost(name));
}

Known afterFirst(std::string_view word, const Variables& variables) {
    if (const auto* type = typeOf(word, variables))
        return {type, nullptr, true};
    const auto dot = word.rfind('.');
    if (dot == word.npos)
        return {nullptr, nullptr, true};
    const auto* holder = typeOf(word.substr(0, dot), variables);
    return {resultOf(holder, word.substr(dot + 1)), holder, true};
}

void take(Known& known, std::string_view word, const Variables& variables) {
    if (!known.begun)
        known = afterFirst(word, variables);
    else if (word.starts_with("..") && isIdentifier(word.substr(2)))
        known.given = resultOf(known.holder, word.substr(2));
    else if (word.starts_with(".") && isIdentifier(word.substr(1)))
        known = {resultOf(known.given, word.substr(1)), known.given, true};
}

Known knownAfter(std::span<const ChainWord> before, const Variables& variables) {
    std::vector<Known> open(1);
    for (const auto& [word, literal] : before) {
        if (!literal && word == "[")
            open.emplace_back();
        else if (!literal && word == "]" && open.size() > 1)
            open.pop_back();
        else if (!literal)
            take(open.back(), word, variables);
    }
    return open.back();
}

class Candidates {
  public:
    explicit Candidates(std::string_view word) : word_(word) {}

    void offer(const std::string& name) {
        const auto same = [](char a, char b) { return ascii::toLower(a) == ascii::toLower(b); };
        if (name.size() >= word_.size() &&
            std::equal(word_.begin(), word_.end(), name.begin(), name.begin() + std::ssize(word_), same))
            found_.insert(name);
    }
    /// The members of a class, or of all where it is not known.
    void offerMembers(std::string_view before, const ClassInfo* type) {
        if (!type)
            for (const auto* each : classes())
                offerMembers(before, each);
        else
            for (const auto& member : type->members())
                if (!member.hidden)
                    offer(std::string(before) + std::string(member.name));
    }
    std::vector<std::string> found() const { return {found_.begin(), found_.end()}; }

  private:
    std::string_view word_;
    std::set<std::string> found_;
};

} // namespace

std::vector<std::string> suggestions(std::span<const ChainWord> before, std::string_view word,
                                     const Variables& variables) {
    Candidates candidates(word);
    const auto known = knownAfter(before, variables);
    const auto dot = word.rfind('.');
    if (word.starts_with('$')) {
        for (const auto& [name, value] : variables)
            candidates.offer("$" + name);
    } else if (known.begun) {
        if (word.starts_with(".."))
            candidates.offerMembers("..", known.holder);
        else if (word.starts_with("."))
            candidates.offerMembers(".", known.given);
    } else if (dot != word.npos) {
        if (const auto* type = typeOf(word.substr(0, dot), variables))
            candidates.offerMembers(word.substr(0, dot + 1), type);
    } else {
        for (const auto* type : classes())
            if (type->header().creatable)
                candidates.offer(std::string(type->name()));
        for (const auto& [name, value] : variables)
            candidates.offer(name);
    }
    return candidates.found();
}

} // namespace vlgs::cli
