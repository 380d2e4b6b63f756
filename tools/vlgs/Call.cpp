#include "Call.h"

#include "HostText.h"
#include "Misuse.h"
#include "Print.h"
#include "automation/CallError.h"
#include "automation/LateBound.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "library/Classes.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace vlgs::cli {

namespace {

/// What the command line asks for.
struct Request {
    std::string className;
    std::string member;
    std::optional<String> written; // the value of CLASS.MEMBER=VALUE
    bool json = false;
    std::vector<std::string_view> words; // the arguments
    std::size_t literal = 0;             // from this one on they are texts, whatever they look like
};

bool isIdentifier(std::string_view text) {
    const auto isWordPart = [](unsigned char c) { return std::isalnum(c) || c == '_'; };
    return !text.empty() && !std::isdigit(static_cast<unsigned char>(text.front())) &&
           std::ranges::all_of(text, isWordPart);
}

Request parse(std::span<const std::string_view> words) {
    Request request;
    std::optional<std::string_view> target;
    request.literal = words.size();
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--json") {
            request.json = true;
        } else if (words[i] == "--" && target) {
            request.literal = request.words.size();
            request.words.insert(request.words.end(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                 words.end());
            break;
        } else if (target) {
            request.words.push_back(words[i]);
        } else if (words[i].starts_with("-")) {
            throw Misuse("call knows no option " + std::string(words[i]) + ", only --json");
        } else {
            target = words[i];
        }
    }
    if (!target)
        throw Misuse("call needs a member: vlgs call CLASS.MEMBER [ARG...] [NAME=VALUE...]");
    const auto equals = target->find('=');
    const auto path = target->substr(0, equals);
    const auto dot = path.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || !isIdentifier(path.substr(dot + 1)))
        throw Misuse("\"" + std::string(path) +
                     "\" names no member: vlgs call CLASS.MEMBER, such as Files.ClassVersion");
    request.className = path.substr(0, dot);
    request.member = path.substr(dot + 1);
    if (equals != std::string_view::npos)
        request.written = fromHost(target->substr(equals + 1));
    return request;
}

/// The rows of the member, one for each way of using it.
std::vector<const MemberInfo*> rowsOf(const ClassInfo& info, std::string_view name) {
    std::vector<const MemberInfo*> rows;
    for (const auto& row : info.members())
        if (equalIgnoringCase(String::fromUtf8(row.name), String::fromUtf8(name)))
            rows.push_back(&row);
    return rows;
}

/// Number of letters to change, add, drop or exchange with their neighbour between two names.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before, last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = std::exchange(last, row);
    }
    return last[b.size()];
}

/// The arguments of a call. `NAME=VALUE` is one by name when the member has a parameter NAME, else a text
/// like any other; a NAME that is nearly a parameter's is taken for a slip.
struct CallArguments {
    std::vector<Variant> positional;
    std::vector<String> names;
    std::vector<Variant> values;

    CallArguments(const Request& request, const std::vector<const MemberInfo*>& rows) {
        for (std::size_t i = 0; i < request.words.size(); ++i) {
            const auto word = request.words[i];
            const auto equals = word.find('=');
            const bool maybeNamed = i < request.literal && equals != std::string_view::npos;
            const auto name = maybeNamed ? word.substr(0, equals) : std::string_view();
            if (isIdentifier(name) && isParameter(rows, name)) {
                names.push_back(fromHost(name));
                values.emplace_back(fromHost(word.substr(equals + 1)));
            } else if (!names.empty()) {
                throw Misuse("\"" + std::string(word) +
                             "\" stands behind an argument by name: arguments by name come last");
            } else {
                positional.emplace_back(fromHost(word));
            }
        }
    }

    std::vector<NamedArgument> named() {
        std::vector<NamedArgument> result;
        for (std::size_t i = 0; i < names.size(); ++i)
            result.push_back({names[i], &values[i]});
        return result;
    }

  private:
    static bool isParameter(const std::vector<const MemberInfo*>& rows, std::string_view name) {
        const std::string wanted = toLower(String::fromUtf8(name)).toUtf8();
        std::string_view nearly;
        std::size_t nearest = 3;
        for (const auto* row : rows) {
            for (const auto& parameter : row->parameters) {
                const std::string known = toLower(String::fromUtf8(parameter.name)).toUtf8();
                if (known == wanted)
                    return true;
                if (wanted.size() < 5 || wanted.size() > 64 || known.front() != wanted.front())
                    continue;
                const std::size_t slips = distance(known, wanted);
                if (slips < nearest) {
                    nearest = slips;
                    nearly = parameter.name;
                }
            }
        }
        if (!nearly.empty())
            throw Misuse("no parameter " + std::string(name) + ", but " + std::string(nearly) +
                         "; a text that looks like NAME=VALUE stands behind --");
        return false;
    }
};

/// Whether the call reads (or runs) the member or writes it.
InvokeKind kindOf(const Request& request, const std::vector<const MemberInfo*>& rows, std::size_t count) {
    if (request.written)
        return InvokeKind::PropertyPut;
    const auto takes = [&](const MemberInfo* row) {
        return row->kind <= InvokeKind::PropertyGet &&
               (count <= row->parameters.size() || row->result.type == VarType::Object);
    };
    const auto writes = [&](const MemberInfo* row) {
        return row->kind >= InvokeKind::PropertyPut && count == row->parameters.size();
    };
    const bool write = std::ranges::none_of(rows, takes) && std::ranges::any_of(rows, writes);
    return write ? InvokeKind::PropertyPut : InvokeKind::MethodOrGet;
}

/// The by-reference arguments as the member left them, by parameter name.
std::vector<WrittenArgument> writtenArguments(const std::vector<const MemberInfo*>& rows, InvokeKind kind,
                                              const CallArguments& arguments) {
    std::vector<WrittenArgument> result;
    for (const auto* row : rows) {
        if (!covers(kind, row->kind))
            continue;
        for (std::size_t i = 0; i < row->parameters.size(); ++i) {
            const auto& parameter = row->parameters[i];
            if (!parameter.type.byReference)
                continue;
            if (i < arguments.positional.size())
                result.push_back({parameter.name, &arguments.positional[i]});
            for (std::size_t j = 0; j < arguments.names.size(); ++j)
                if (equalIgnoringCase(arguments.names[j], String::fromUtf8(parameter.name)))
                    result.push_back({parameter.name, &arguments.values[j]});
        }
        break;
    }
    return result;
}

} // namespace

void call(std::span<const std::string_view> words) {
    const Request request = parse(words);
    const String className = fromHost(request.className);
    const Ref<Object> object = createObject(className);
    const DispatchId member = object->idOf(fromHost(request.member));
    if (member == unknownMember)
        throw noSuchMember(*object->classInfo(), fromHost(request.member));
    const auto rows = rowsOf(*findClass(className), request.member);
    CallArguments arguments(request, rows);
    if (request.written)
        arguments.positional.emplace_back(*request.written);
    const InvokeKind kind = kindOf(request, rows, arguments.positional.size() + arguments.names.size());
    const auto named = arguments.named();
    const Variant result = object->invoke(member, kind, {arguments.positional, named});
    if (request.json)
        printJson(std::cout, result, writtenArguments(rows, kind, arguments));
    else
        print(std::cout, result);
}

} // namespace vlgs::cli
