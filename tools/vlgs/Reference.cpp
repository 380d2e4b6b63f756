// SPDX-License-Identifier: MIT
// The reference pages.
#include "Describe.h"
#include "Members.h"
#include "base/Text.h"
#include "library/Classes.h"

#include <ostream>
#include <utility>

namespace vlgs::cli {

namespace {

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

} // namespace

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

} // namespace vlgs::cli
