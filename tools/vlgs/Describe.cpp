// SPDX-License-Identifier: MIT
#include "Describe.h"

#include "Misuse.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "frame/Messages.h"
#include "library/Classes.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace vlgs::cli {

namespace {

std::string typeName(const TypeInfo& type) {
    std::string name;
    if (type.classInfo)
        name = type.classInfo().name();
    else if (type.enumeration)
        name = type.enumeration->name;
    else if (type.record)
        name = type.record->name;
    else {
        static constexpr std::pair<VarType, std::string_view> names[] = {
            {VarType::Byte, "Byte"},       {VarType::Integer, "Integer"}, {VarType::Long, "Long"},
            {VarType::Single, "Single"},   {VarType::Double, "Double"},   {VarType::Currency, "Currency"},
            {VarType::Date, "Date"},       {VarType::String, "String"},   {VarType::Object, "Object"},
            {VarType::Boolean, "Boolean"}, {VarType::Variant, "Variant"}, {VarType::Decimal, "Decimal"},
        };
        const auto element = static_cast<VarType>(code(type.type) & 0xFFF);
        const auto found = std::ranges::find(names, element, &std::pair<VarType, std::string_view>::first);
        name = found != std::end(names) ? found->second : "Variant";
    }
    return code(type.type) & code(VarType::Array) ? name + "()" : name;
}

std::string parameterText(const ParameterInfo& parameter) {
    std::string text = parameter.type.byReference ? "ByRef " : "";
    text += std::string(parameter.name) + " As " + typeName(parameter.type);
    if (parameter.standard.kind == DefaultValue::Kind::Number)
        text += " = " + std::to_string(parameter.standard.number);
    else if (parameter.standard.kind == DefaultValue::Kind::Text)
        text += " = \"" + String(parameter.standard.text).toUtf8() + "\"";
    return parameter.optional ? "[" + text + "]" : text;
}

/// All rows of one member, the way of reading it first.
struct Member {
    std::vector<const MemberInfo*> rows;

    const MemberInfo& main() const { return *rows.front(); }
    bool isMethod() const { return main().kind == InvokeKind::Method; }

    std::string access() const {
        const bool reads =
            std::ranges::any_of(rows, [](auto row) { return row->kind == InvokeKind::PropertyGet; });
        const bool writes =
            std::ranges::any_of(rows, [](auto row) { return row->kind >= InvokeKind::PropertyPut; });
        if (isMethod())
            return "method";
        return reads && writes ? "read/write property" : reads ? "read-only property" : "write-only property";
    }

    /// "RetrieveINIFile(sPath As String) As INIFile"
    std::string signature() const {
        auto parameters = main().parameters;
        TypeInfo type = main().result;
        if (main().kind >= InvokeKind::PropertyPut) { // its value is the last parameter
            type = parameters.back().type;
            parameters = parameters.first(parameters.size() - 1);
        }
        std::string text(main().name);
        if (isMethod() || !parameters.empty()) {
            const char* separator = "(";
            for (const auto& parameter : parameters)
                text += std::exchange(separator, ", ") + parameterText(parameter);
            text += parameters.empty() ? "()" : ")";
        }
        return type.type == VarType::Empty ? text : text + " As " + typeName(type);
    }
};

std::vector<Member> membersOf(std::span<const MemberInfo> infos) {
    std::vector<Member> members;
    for (const auto& info : infos) {
        if (info.hidden)
            continue;
        const auto known =
            std::ranges::find(members, info.name, [](const Member& m) { return m.main().name; });
        if (known == members.end())
            members.push_back({{&info}});
        else if (info.kind == InvokeKind::PropertyGet)
            known->rows.insert(known->rows.begin(), &info);
        else
            known->rows.push_back(&info);
    }
    return members;
}

/// Every parameter of a member's rows once, the way of reading it first.
std::vector<const ParameterInfo*> parametersOf(const Member& member) {
    std::vector<const ParameterInfo*> parameters;
    for (const auto* row : member.rows)
        for (const auto& parameter : row->parameters)
            if (std::ranges::find(parameters, parameter.name, &ParameterInfo::name) == parameters.end())
                parameters.push_back(&parameter);
    return parameters;
}

/// The name of a code of the message catalogue, "" for a number of the run time.
std::string_view messageName(std::int32_t code) {
    const auto& messages = enumInfo(enumMessages{});
    const auto found = std::ranges::find(messages.members, code, &EnumMember::value);
    return found == messages.members.end() ? std::string_view() : found->name;
}

void writeSummary(std::ostream& out, const Member& member) {
    out << "  " << member.signature() << "\n      " << member.main().help << " (" << member.access()
        << (member.main().id == defaultMember ? ", default member" : "") << ")\n";
}

void writeMember(std::ostream& out, const Member& member) {
    writeSummary(out, member);
    std::size_t width = 0;
    const auto parameters = parametersOf(member);
    for (const auto* parameter : parameters)
        width = std::max(width, parameter->name.size());
    for (const auto* parameter : parameters)
        out << "      " << parameter->name << std::string(width + 2 - parameter->name.size(), ' ')
            << parameter->meaning << '\n';
    for (const auto& error : member.main().errors)
        out << "      raises " << error.code << " when " << error.when << '\n';
    if (const auto& example = member.main().example; !example.call.empty())
        out << "\n      $ vlgs call " << example.call << "\n      "
            << replaceAll(String::fromUtf8(example.prints), u"\n", u"\n      ").toUtf8() << '\n';
}

void writeClass(std::ostream& out, const ClassInfo& info) {
    out << info.programmaticId().toUtf8() << (info.header().creatable ? "" : " (made by other classes only)")
        << "\n  " << info.header().help << "\n\n";
    for (const auto& member : membersOf(info.members()))
        writeSummary(out, member);
    if (!info.events().empty())
        out << "\nEvents:\n";
    for (const auto& event : membersOf(info.events()))
        writeSummary(out, event);
}

// ---- Reference pages ------------------------------------------------------------------------------------

/// The help text with plain line ends.
std::string helpLines(const MemberInfo& member) {
    return replaceAll(String::fromUtf8(member.help), u"\r\n", u"\n").toUtf8();
}

void writeMarkdownMember(std::ostream& out, const Member& member) {
    const MemberInfo& main = member.main();
    out << "\n### " << main.name << "\n\n```\n"
        << member.signature() << "\n```\n\n"
        << helpLines(main) << (main.help.ends_with('.') ? "" : ".") << " *" << member.access()
        << (main.id == defaultMember ? ", the default member" : "") << "*\n";
    const auto parameters = parametersOf(member);
    if (!parameters.empty())
        out << '\n';
    for (const auto* parameter : parameters)
        out << "- `" << parameter->name << "`: " << parameter->meaning << '\n';
    if (!main.errors.empty())
        out << "\n| Raises | when |\n|---|---|\n";
    for (const auto& error : main.errors) {
        const auto name = messageName(error.code);
        out << "| " << error.code << (name.empty() ? "" : " `" + std::string(name) + "`") << " | "
            << error.when << " |\n";
    }
    if (!main.example.call.empty())
        out << "\n```\n$ vlgs call " << main.example.call << '\n' << main.example.prints << "\n```\n";
}

void writeMarkdownMembers(std::ostream& out, std::string_view title, std::span<const MemberInfo> infos) {
    const auto members = membersOf(infos);
    if (members.empty())
        return;
    out << "\n## " << title << "\n";
    for (const auto& member : members)
        writeMarkdownMember(out, member);
}

void writeMarkdownClass(std::ostream& out, const ClassInfo& info) {
    out << "# " << info.name() << "\n\n"
        << info.header().help << ".\n\n"
        << (info.header().creatable ? "Created as `" + info.programmaticId().toUtf8() + "`."
                                    : "Made by other classes only.")
        << " Written by `vlgs describe --markdown " << info.name() << "`.\n";
    writeMarkdownMembers(out, "Members", info.members());
    writeMarkdownMembers(out, "Events", info.events());
}

void writeMarkdownIndex(std::ostream& out) {
    out << "# Reference\n\nWritten by `scripts/reference.sh` from the descriptions of the classes.\n\n"
           "Codes of the message catalogue (those with a name beside them) and those of the class GUID are "
           "raised as\n"
           "0x80040000 + code, all other numbers as they are.\n\n"
           "| Class | | |\n|---|---|---|\n";
    for (const auto* info : classes())
        out << "| [" << info->name() << "](" << info->name() << ".md) | " << info->header().help << " | "
            << (info->header().creatable ? "" : "made by other classes only") << " |\n";
    for (const auto* info : enumerations()) {
        out << "\n## " << info->name << "\n\n" << info->help << ".\n\n| Member | Value |\n|---|---|\n";
        for (const auto& member : info->members)
            out << "| `" << member.name << "` | " << member.value << " |\n";
    }
    for (const auto* info : records()) {
        out << "\n## " << info->name << "\n\n" << info->help << ". A record of texts:";
        const char* separator = " ";
        for (const auto& field : info->fields)
            out << std::exchange(separator, ", ") << '`' << field << '`';
        out << ".\n";
    }
}

const ClassInfo& classNamed(std::string_view name) {
    if (const auto* info = findClass(String::fromUtf8(name)))
        return *info;
    std::string known;
    for (const auto* info : classes())
        known += " " + std::string(info->name());
    throw Misuse("no class \"" + std::string(name) + "\"; the classes are" + known);
}

void describeMember(std::ostream& out, const ClassInfo& info, std::string_view name) {
    for (const auto infos : {info.members(), info.events()}) {
        for (const auto& member : membersOf(infos)) {
            if (equalIgnoringCase(String::fromUtf8(member.main().name), String::fromUtf8(name)))
                return writeMember(out, member);
        }
    }
    throw Misuse(std::string(info.name()) + " has no member \"" + std::string(name) + "\"; vlgs describe " +
                 std::string(info.name()) + " lists them");
}

} // namespace

void listClasses(std::ostream& out) {
    std::size_t width = 0;
    for (const auto* info : classes())
        width = std::max(width, info->name().size());
    for (const auto* info : classes())
        out << info->name() << std::string(width + 2 - info->name().size(), ' ') << info->header().help
            << (info->header().creatable ? "" : " (made by other classes only)") << '\n';
}

void describe(std::ostream& out, std::span<const std::string_view> words) {
    const bool markdown = !words.empty() && words.front() == "--markdown";
    if (markdown)
        words = words.subspan(1);
    if (markdown && words.empty())
        return writeMarkdownIndex(out);
    if (words.size() != 1)
        throw Misuse("describe needs one name: vlgs describe CLASS[.MEMBER]");
    const auto name = words.front();
    if (markdown)
        return writeMarkdownClass(out, classNamed(name));
    const auto dot = name.rfind('.');
    if (findClass(String::fromUtf8(name)) || dot == std::string_view::npos)
        return writeClass(out, classNamed(name));
    describeMember(out, classNamed(name.substr(0, dot)), name.substr(dot + 1));
}

} // namespace vlgs::cli
