// SPDX-License-Identifier: MIT
#include "Chain.h"

#include "CallArguments.h"
#include "HostText.h"
#include "Members.h"
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
    Chain(std::span<const ChainWord> words, Variables* variables) : words_(words), variables_(variables) {}

    ChainResult run() {
        evaluate();
        if (!atEnd())
            throw Misuse(quoted(word()) + " has no \"[\" or \"{\" before it");
        return std::move(result_);
    }

  private:
    bool atEnd() const { return at_ == words_.size(); }
    std::string_view word() const { return words_[at_].text; }
    bool isMark(std::string_view mark) const { return !atEnd() && !words_[at_].isLiteral && word() == mark; }

    // A word ".NAME" or "..NAME".
    bool isStep(std::string_view dots) const {
        return !atEnd() && !words_[at_].isLiteral && word().starts_with(dots) &&
               isIdentifier(Target(word().substr(dots.size())).member);
    }

    void evaluate() {
        Variant value = first();
        while (isStep(".") || isStep("..")) {
            const bool sameObject = isStep("..") || keepsObject_;
            if (!sameObject)
                object_ = objectOf(value);
            if (!object_)
                throw Misuse("no member was called before " + quoted(word()));
            const auto step = word().substr(isStep("..") ? 2 : 1);
            ++at_;
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

    // A variable's value, null for a name that none has.
    const Variant* variable(std::string_view name) const {
        if (!variables_)
            return nullptr;
        const auto known = variables_->find(name);
        return known == variables_->end() ? nullptr : &known->second;
    }

    // What the first word stands for: CLASS.MEMBER, CLASS, VARIABLE.MEMBER, VARIABLE; where variables can
    // take it, a value as well.
    Variant first() {
        if (atEnd())
            throw Misuse("a member is missing: CLASS.MEMBER");
        object_ = nullptr;
        keepsObject_ = isThrownAway_ = startsFromVariable_ = false;
        if (variables_ && isValue())
            return argument(nullptr);
        const auto target = word().substr(variables_ && word().starts_with('$') ? 1 : 0);
        const auto path = target.substr(0, target.find('='));
        ++at_;
        const auto dot = path.rfind('.');
        if (const auto* known = variable(path.substr(0, dot))) {
            startsFromVariable_ = true;
            if (dot == path.npos)
                return *known;
            --at_; // what is said about the word names it
            object_ = objectOf(*known);
            ++at_;
            return call(Target(target.substr(dot + 1)));
        }
        const bool isWhole = !variables_ && words_.size() == 1; // which would do nothing
        if (!isWhole && path.size() == target.size() && findClass(fromHost(path)))
            return Variant(createObject(fromHost(path)));
        if (!variables_ && findClass(fromHost(path)))
            throw Misuse(quoted(path) +
                         " is a class and needs a member: CLASS.MEMBER, such as Files.ClassVersion");
        if (dot == path.npos || dot == 0 || !isIdentifier(path.substr(dot + 1)))
            throw Misuse(quoted(path) + " names no member: CLASS.MEMBER, such as Files.ClassVersion" +
                         nearest(path, holders()) +
                         (variables_ ? "\na variable is made by NAME = CHAIN, a text stands in quotes" : ""));
        if (variables_ && !findClass(fromHost(path.substr(0, dot))))
            throw Misuse("there is no class or variable " + quoted(path.substr(0, dot)) +
                         nearest(path.substr(0, dot), holders()));
        const auto& type = classNamed(path.substr(0, dot));
        requireMember(type, path.substr(dot + 1));
        object_ = createObject(fromHost(path.substr(0, dot)));
        return call(Target(target.substr(dot + 1)));
    }

    bool isValue() const {
        return words_[at_].isLiteral || isMark("{") || isMark("[") || word().starts_with('@') ||
               isTypedValue(word());
    }

    // What members can be called on by name.
    std::vector<std::string_view> holders() const {
        std::vector<std::string_view> names;
        for (const auto* info : classes())
            names.push_back(info->name());
        if (variables_)
            for (const auto& [known, value] : *variables_)
                names.push_back(known);
        return names;
    }

    // A call of a member of `object_`.
    Variant call(const Target& target) {
        const Ref<Object> object = object_;
        const ClassInfo* type = object->classInfo();
        if (!type)
            raise(RunTimeError::NoSuchMember);
        requireMember(*type, target.member);
        const auto rows = rowsOf(*type, target.member);
        Given given = takeArguments(rows, target.written || mayGiveObject(rows) || givesNothing(rows));
        auto& positional = given.positional;
        if (target.written)
            positional.push_back(
                typedValue(parameterAt(writingRows(rows), positional.size()), *target.written));
        const auto kind =
            target.written ? InvokeKind::PropertyPut : kindOf(rows, positional.size() + given.names.size());
        std::vector<NamedArgument> named;
        std::vector<String> texts;
        for (const auto name : given.names)
            texts.push_back(fromHost(name));
        for (std::size_t i = 0; i < texts.size(); ++i)
            named.push_back({texts[i], &given.values[i]});
        Variant value = type->invoke(*object, type->idOf(fromHost(target.member)), kind, {positional, named});
        object_ = object;
        keepsObject_ = writes(kind) || givesNothing(rows);
        isThrownAway_ = writes(kind) && !startsFromVariable_;
        noteWritten(rows, kind, given);
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

    // The arguments of a call: those by position, and those by name with their names. The variables are those
    // that arguments were taken from, as they stand, by position and by name.
    struct Given {
        std::vector<Variant> positional, values;
        std::vector<std::string_view> names;
        std::vector<std::string_view> positionalVariables, namedVariables;
    };

    // `leads`: a word .NAME is the next member.
    Given takeArguments(const MemberRows& rows, bool leads) {
        Given given;
        while (!atEnd() && !isMark("]") && !isMark("}") && !isStep("..") && !(leads && isStep("."))) {
            const auto [text, literal] = words_[at_];
            if (const auto name = literal ? std::nullopt : parameterName(rows, text)) {
                const auto value = text.substr(name->size() + 1);
                const auto* parameter = parameterNamed(rows, *name);
                given.names.push_back(*name);
                given.namedVariables.push_back(variableIn({value, false}));
                given.values.push_back(valueOfWord(parameter, {value, false}));
                ++at_;
            } else if (!given.names.empty()) {
                throw Misuse(quoted(text) +
                             " stands behind an argument by name: arguments by name come last");
            } else {
                given.positionalVariables.push_back(variableIn(words_[at_]));
                given.positional.push_back(argument(parameterAt(rows, given.positional.size())));
            }
        }
        return given;
    }

    // The name of the variable that a word stands for, "" for another word.
    std::string_view variableIn(const ChainWord& word) const {
        const bool is = variables_ && !word.isLiteral && word.text.starts_with('$') && word.text.size() > 1;
        return is ? word.text.substr(1) : std::string_view();
    }

    Variant valueOfWord(const ParameterInfo* parameter, const ChainWord& word) const {
        if (word.isLiteral)
            return Variant(fromHost(word.text));
        const auto name = variableIn(word);
        if (name.empty())
            return typedValue(parameter, word.text);
        if (const auto* known = variable(name))
            return *known;
        if (parameter && parameter->type.byReference && isIdentifier(name))
            return Variant(); // which the member fills
        std::vector<std::string_view> names;
        for (const auto& [each, value] : *variables_)
            names.push_back(each);
        throw Misuse("there is no variable " + quoted(name) + nearest(name, names));
    }

    // A word, "[ CHAIN ]" or "{ ITEM... }".
    Variant argument(const ParameterInfo* parameter) {
        if (isMark("["))
            return bracketed();
        if (isMark("{"))
            return array();
        return valueOfWord(parameter, words_[at_++]);
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
        const bool kept = keepsObject_, thrown = isThrownAway_, ours = startsFromVariable_;
        evaluate();
        Variant value = std::move(result_.value);
        std::tie(object_, result_) = outer;
        keepsObject_ = kept;
        isThrownAway_ = thrown;
        startsFromVariable_ = ours;
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

    void noteWritten(const MemberRows& rows, InvokeKind kind, const Given& given) {
        result_.names.clear();
        result_.written.clear();
        const auto row = std::ranges::find_if(rows, [&](auto* each) { return covers(kind, each->kind); });
        if (row == rows.end())
            return;
        for (std::size_t i = 0; i < (*row)->parameters.size(); ++i) {
            const auto& parameter = (*row)->parameters[i];
            if (!parameter.type.byReference)
                continue;
            const auto note = [&](const Variant& value, std::string_view variable) {
                result_.names.emplace_back(parameter.name);
                result_.written.push_back(value);
                if (!variable.empty())
                    variables_->insert_or_assign(std::string(variable), value);
            };
            if (i < given.positionalVariables.size())
                note(given.positional[i], given.positionalVariables[i]);
            for (std::size_t j = 0; j < given.names.size(); ++j)
                if (equalIgnoringCase(given.names[j], parameter.name))
                    note(given.values[j], given.namedVariables[j]);
        }
    }

    std::span<const ChainWord> words_;
    Variables* variables_;
    std::size_t at_ = 0;
    int depth_ = 0;
    Ref<Object> object_;        // on which the last member was called
    bool keepsObject_ = false;  // the last call gave nothing to go on with
    bool isThrownAway_ = false; // the last call wrote to an object that nobody has
    bool startsFromVariable_ = false;
    ChainResult result_;
};

} // namespace

bool isIdentifier(std::string_view text) {
    const auto isWordPart = [](unsigned char c) {
        return ascii::isLetter(c) || ascii::isDigit(c) || c == '_';
    };
    return !text.empty() && !ascii::isDigit(static_cast<unsigned char>(text.front())) &&
           std::ranges::all_of(text, isWordPart);
}

std::vector<ChainWord> chainWords(std::span<const std::string_view> given) {
    std::vector<ChainWord> words;
    bool literal = false;
    for (const auto word : given) {
        if (!literal && word == "--")
            literal = true;
        else
            words.push_back({word, literal});
    }
    return words;
}

std::vector<WrittenArgument> ChainResult::arguments() const {
    std::vector<WrittenArgument> result;
    for (std::size_t i = 0; i < names.size(); ++i)
        result.push_back({names[i], &written[i]});
    return result;
}

ChainResult runChain(std::span<const ChainWord> words, Variables* variables) {
    return Chain(words, variables).run();
}

} // namespace vlgs::cli
