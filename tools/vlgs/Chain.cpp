// SPDX-License-Identifier: MIT
#include "Chain.h"

#include "CallArguments.h"
#include "HostText.h"
#include "Misuse.h"
#include "Words.h"
#include "automation/Array.h"
#include "automation/CallError.h"
#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "library/Classes.h"

#include <algorithm>
#include <optional>

namespace vlgs::cli {

namespace {

// "[" in "[" stands no deeper than a person nests.
constexpr int maximumDepth = 64;

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

const ClassInfo& classNamed(std::string_view name) {
    if (const auto* info = findClass(fromHost(name)))
        return *info;
    std::vector<std::string_view> names;
    for (const auto* info : classes())
        names.push_back(info->name());
    throw Misuse("there is no class " + quoted(name) + nearest(name, names) +
                 "\nvlgs classes lists the classes");
}

// Member, value to write ("NAME=VALUE").
struct Target {
    std::string_view member;
    std::optional<std::string_view> written;

    explicit Target(std::string_view word) : member(word.substr(0, word.find('='))) {
        if (member.size() < word.size())
            written = word.substr(member.size() + 1);
    }
};

class Chain {
  public:
    Chain(const ChainWords& words, const Variables& variables) : words_(words), variables_(variables) {}

    ChainResult run() {
        evaluate();
        if (!atEnd())
            throw Misuse(quoted(word()) + " has no \"[\" or \"{\" before it");
        return std::move(result_);
    }

  private:
    bool atEnd() const { return at_ == words_.words.size(); }
    std::string_view word() const { return words_.words[at_]; }
    bool isMark(std::string_view mark) const { return !atEnd() && at_ < words_.literal && word() == mark; }

    // A word ".NAME" or "..NAME".
    bool isStep(std::string_view dots) const {
        return !atEnd() && at_ < words_.literal && word().starts_with(dots) &&
               isIdentifier(Target(word().substr(dots.size())).member);
    }

    void evaluate() {
        Variant value = first();
        while (isStep(".") || isStep("..")) {
            const bool sameObject = isStep("..") || keepsObject_;
            if (!sameObject)
                object_ = objectOf(value);
            const auto step = word().substr(isStep("..") ? 2 : 1);
            ++at_;
            isThrownAway_ = false;
            value = call(Target(step));
        }
        if (isThrownAway_)
            throw Misuse(
                "the property would be written to an object that ends with the command; name what comes "
                "next (CLASS.MEMBER=VALUE .MEMBER), or keep the object in a script (vlgs run)");
        result_.value = std::move(value);
    }

    Ref<Object> objectOf(const Variant& value) const {
        if (!value.isObject())
            throw Misuse("what stands before " + quoted(word()) + " gives no object");
        if (!value.object())
            raise(RunTimeError::ObjectVariableNotSet);
        return value.reference();
    }

    // The first word: CLASS.MEMBER, CLASS, VARIABLE.MEMBER or VARIABLE.
    Variant first() {
        if (atEnd())
            throw Misuse("a member is missing: CLASS.MEMBER");
        const auto path = word().substr(0, word().find('='));
        const auto target = word();
        ++at_;
        keepsObject_ = isThrownAway_ = false;
        const auto dot = path.rfind('.');
        if (const auto known = variables_.find(path.substr(0, dot)); known != variables_.end()) {
            if (dot == path.npos)
                return known->second;
            --at_; // what is said about the word names it
            object_ = objectOf(known->second);
            ++at_;
            return call(Target(target.substr(dot + 1)));
        }
        if (findClass(fromHost(path)) && path.size() == target.size())
            return Variant(createObject(fromHost(path)));
        if (dot == path.npos || dot == 0 || !isIdentifier(path.substr(dot + 1)))
            throw Misuse(quoted(path) +
                         " names no member: vlgs call CLASS.MEMBER, such as Files.ClassVersion");
        const auto& type = classNamed(path.substr(0, dot));
        requireMember(type, path.substr(dot + 1));
        object_ = createObject(fromHost(path.substr(0, dot)));
        const Target step(target.substr(dot + 1));
        auto value = call(step);
        isThrownAway_ = step.written.has_value();
        return value;
    }

    static void requireMember(const ClassInfo& type, std::string_view name) {
        if (type.idOf(fromHost(name)) != unknownMember)
            return;
        std::vector<std::string_view> names;
        for (const auto& member : type.members())
            if (!member.hidden)
                names.push_back(member.name);
        throw Misuse(std::string(type.name()) + " has no member " + quoted(name) + nearest(name, names) +
                     "\nvlgs describe " + std::string(type.name()) + " lists its members");
    }

    // A call of a member of `object_`.
    Variant call(const Target& target) {
        const Ref<Object> object = object_;
        const ClassInfo* type = object->classInfo();
        if (!type)
            raise(RunTimeError::NoSuchMember);
        requireMember(*type, target.member);
        const auto rows = rowsOf(*type, target.member);
        std::vector<Variant> positional, values;
        std::vector<std::string_view> names;
        takeArguments(rows, target.written || mayGiveObject(rows) || givesNothing(rows), positional, names,
                      values);
        if (target.written)
            positional.push_back(
                typedValue(parameterAt(writingRows(rows), positional.size()), *target.written));
        const auto kind =
            target.written ? InvokeKind::PropertyPut : kindOf(rows, positional.size() + names.size());
        std::vector<NamedArgument> named;
        std::vector<String> texts;
        for (const auto name : names)
            texts.push_back(fromHost(name));
        for (std::size_t i = 0; i < names.size(); ++i)
            named.push_back({texts[i], &values[i]});
        Variant value = type->invoke(*object, type->idOf(fromHost(target.member)), kind, {positional, named});
        object_ = object;
        keepsObject_ = writes(kind) || givesNothing(rows);
        noteWritten(rows, kind, positional, names, values);
        return value;
    }

    static MemberRows writingRows(const MemberRows& rows) {
        MemberRows result;
        std::ranges::copy_if(rows, std::back_inserter(result), [](auto* row) { return writes(row->kind); });
        return result;
    }

    // Whether what a member gives can have members.
    static bool mayGiveObject(const MemberRows& rows) {
        return std::ranges::any_of(rows, [](auto* row) {
            return row->result.type == VarType::Object || row->result.type == VarType::Variant;
        });
    }

    static bool givesNothing(const MemberRows& rows) {
        return std::ranges::all_of(rows, [](auto* row) { return row->result.type == VarType::Empty; });
    }

    // `leads`: a word .NAME is the next member.
    void takeArguments(const MemberRows& rows, bool leads, std::vector<Variant>& positional,
                       std::vector<std::string_view>& names, std::vector<Variant>& values) {
        while (!atEnd() && !isMark("]") && !isMark("}") && !isStep("..") && !(leads && isStep("."))) {
            const auto given = word();
            const auto name = at_ < words_.literal ? parameterName(rows, given) : std::nullopt;
            if (name) {
                names.push_back(*name);
                values.push_back(typedValue(parameterNamed(rows, *name), given.substr(name->size() + 1)));
                ++at_;
            } else if (!names.empty()) {
                throw Misuse(quoted(given) +
                             " stands behind an argument by name: arguments by name come last");
            } else {
                positional.push_back(argument(parameterAt(rows, positional.size())));
            }
        }
    }

    // A word, "[ CHAIN ]" or "{ ITEM... }".
    Variant argument(const ParameterInfo* parameter) {
        if (isMark("["))
            return bracketed();
        if (isMark("{"))
            return array();
        const auto given = word();
        const bool literal = at_++ >= words_.literal;
        if (!literal && given.starts_with('$'))
            if (const auto known = variables_.find(given.substr(1)); known != variables_.end())
                return known->second;
        return literal ? Variant(fromHost(given)) : typedValue(parameter, given);
    }

    void enter() {
        ++at_;
        if (++depth_ > maximumDepth)
            throw Misuse("the brackets are nested too deeply");
    }
    void leave(std::string_view mark) {
        if (!isMark(mark))
            throw Misuse("a " + quoted(mark) + " is missing");
        ++at_;
        --depth_;
    }

    Variant bracketed() {
        enter();
        const auto outer = std::pair(object_, result_);
        const bool kept = keepsObject_, thrown = isThrownAway_;
        evaluate();
        Variant value = std::move(result_.value);
        std::tie(object_, result_) = outer;
        keepsObject_ = kept;
        isThrownAway_ = thrown;
        leave("]");
        return value;
    }

    Variant array() {
        enter();
        std::vector<Variant> items;
        while (!atEnd() && !isMark("}"))
            items.push_back(argument(nullptr));
        leave("}");
        return Array::ofVariants(std::move(items));
    }

    // Whether a call reads (or runs) the member or writes it.
    static InvokeKind kindOf(const MemberRows& rows, std::size_t count) {
        const auto takes = [&](const MemberInfo* row) {
            return row->kind <= InvokeKind::PropertyGet &&
                   (count <= row->parameters.size() || row->result.type == VarType::Object);
        };
        const auto isWrite = [&](const MemberInfo* row) {
            return writes(row->kind) && count == row->parameters.size();
        };
        const bool write = std::ranges::none_of(rows, takes) && std::ranges::any_of(rows, isWrite);
        return write ? InvokeKind::PropertyPut : InvokeKind::MethodOrGet;
    }

    void noteWritten(const MemberRows& rows, InvokeKind kind, const std::vector<Variant>& positional,
                     const std::vector<std::string_view>& names, const std::vector<Variant>& values) {
        result_.names.clear();
        result_.written.clear();
        const auto row = std::ranges::find_if(rows, [&](auto* each) { return covers(kind, each->kind); });
        if (row == rows.end())
            return;
        for (std::size_t i = 0; i < (*row)->parameters.size(); ++i) {
            const auto& parameter = (*row)->parameters[i];
            if (!parameter.type.byReference)
                continue;
            const auto note = [&](const Variant& value) {
                result_.names.emplace_back(parameter.name);
                result_.written.push_back(value);
            };
            if (i < positional.size())
                note(positional[i]);
            for (std::size_t j = 0; j < names.size(); ++j)
                if (equalIgnoringCase(names[j], parameter.name))
                    note(values[j]);
        }
    }

    const ChainWords& words_;
    const Variables& variables_;
    std::size_t at_ = 0;
    int depth_ = 0;
    Ref<Object> object_;        // on which the last member was called
    bool keepsObject_ = false;  // the last call gave nothing to go on with
    bool isThrownAway_ = false; // the last call wrote to an object that nobody has
    ChainResult result_;
};

} // namespace

bool isIdentifier(std::string_view text) {
    const auto isWordPart = [](char c) { return ascii::isLetter(c) || ascii::isDigit(c) || c == '_'; };
    return !text.empty() && !ascii::isDigit(text.front()) && std::ranges::all_of(text, isWordPart);
}

ChainWords::ChainWords(std::span<const std::string_view> given) : words(given.begin(), given.end()) {
    const auto mark = std::ranges::find(words, std::string_view("--"));
    literal = static_cast<std::size_t>(mark - words.begin());
    if (mark != words.end())
        words.erase(mark);
}

std::vector<WrittenArgument> ChainResult::arguments() const {
    std::vector<WrittenArgument> result;
    for (std::size_t i = 0; i < names.size(); ++i)
        result.push_back({names[i], &written[i]});
    return result;
}

ChainResult runChain(const ChainWords& words, const Variables& variables) {
    return Chain(words, variables).run();
}

} // namespace vlgs::cli
