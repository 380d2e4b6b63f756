// SPDX-License-Identifier: MIT
#include "Suggestions.h"

#include "CallArguments.h"
#include "Candidates.h"
#include "HostText.h"
#include "library/Classes.h"

namespace vlgs::cli {

namespace {

// What is known of a chain: the class of what it has given so far, the class of the object whose member that
// was, and the member; null and nothing for what only a run tells.
struct Known {
    const ClassInfo* given = nullptr;
    const ClassInfo* holder = nullptr;
    MemberRows member;
    bool begun = false;
};

Known afterMember(const ClassInfo* holder, std::string_view member) {
    Known known{nullptr, holder, {}, true};
    if (holder)
        known.member = rowsOf(*holder, member);
    for (const auto* row : known.member)
        if (row->result.classInfo)
            known.given = &row->result.classInfo();
    return known;
}

const ClassInfo* typeOf(std::string_view name, const Variables& variables) {
    if (const auto known = variables.find(name); known != variables.end())
        return known->second.isObject() && known->second.object() ? known->second.object()->classInfo()
                                                                  : nullptr;
    return findClass(fromHost(name));
}

Known afterFirst(std::string_view word, const Variables& variables) {
    if (const auto* type = typeOf(word, variables))
        return {type, nullptr, {}, true};
    const auto dot = word.rfind('.');
    if (dot == word.npos)
        return {nullptr, nullptr, {}, true};
    return afterMember(typeOf(word.substr(0, dot), variables), word.substr(dot + 1));
}

void take(Known& known, std::string_view word, const Variables& variables) {
    if (!known.begun)
        known = afterFirst(word, variables);
    else if (word.starts_with("..") && isIdentifier(word.substr(2)))
        known = afterMember(known.holder, word.substr(2));
    else if (word.starts_with(".") && isIdentifier(word.substr(1)))
        known = afterMember(known.given, word.substr(1));
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

/// The members of a class, or of all where it is not known.
void offerMembers(Candidates& candidates, std::string_view before, const ClassInfo* type) {
    if (!type)
        for (const auto* each : classes())
            offerMembers(candidates, before, each);
    else
        for (const auto& member : type->members())
            if (!member.hidden)
                candidates.offer(std::string(before) + std::string(member.name));
}

/// Names of parameters, and what those of enumerations can be.
void offerArguments(Candidates& candidates, const MemberRows& member) {
    for (const auto* row : member)
        for (const auto& parameter : row->parameters) {
            candidates.offer(std::string(parameter.name) + "=");
            if (parameter.type.enumeration)
                for (const auto& each : parameter.type.enumeration->members)
                    candidates.offer(std::string(each.name));
        }
}

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
            offerMembers(candidates, "..", known.holder);
        else if (word.starts_with("."))
            offerMembers(candidates, ".", known.given);
        else if (!word.empty())
            offerArguments(candidates, known.member);
    } else if (dot != word.npos) {
        if (const auto* type = typeOf(word.substr(0, dot), variables))
            offerMembers(candidates, word.substr(0, dot + 1), type);
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
