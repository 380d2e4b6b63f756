// SPDX-License-Identifier: MIT
#include "Describe.h"

#include "HostText.h"
#include "Members.h"
#include "Misuse.h"
#include "Terminal.h"
#include "Words.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "library/Classes.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace vlgs::cli {

namespace {

constexpr std::size_t memberIndent = 2, textIndent = 6;

void writeSummary(std::ostream& out, const Member& member) {
    writeWrapped(out, memberIndent, member.signature(), textIndent);
    writeWrapped(out, textIndent,
                 std::string(member.main().help) + " (" + member.access() +
                     (member.main().id == defaultMember ? ", default member" : "") + ")");
}

void writeMember(std::ostream& out, const Member& member) {
    writeSummary(out, member);
    std::size_t width = 0;
    const auto parameters = parametersOf(member);
    for (const auto* parameter : parameters)
        width = std::max(width, parameter->name.size() + 2);
    for (const auto* parameter : parameters)
        writeWrapped(out, textIndent,
                     std::string(parameter->name) + std::string(width - parameter->name.size(), ' ') +
                         std::string(parameter->meaning),
                     textIndent + width);
    for (const auto& error : member.main().errors)
        writeWrapped(out, textIndent,
                     "raises " + std::to_string(error.code) + " when " + std::string(error.when));
    if (const auto& example = member.main().example; !example.call.empty())
        out << "\n      $ vlgs call " << example.call << "\n      "
            << replaceAll(String::fromUtf8(example.prints), u"\n", u"\n      ").toUtf8() << '\n';
}

void writeClass(std::ostream& out, const ClassInfo& info) {
    out << info.programmaticId().toUtf8() << (info.header().creatable ? "" : " (made by other classes only)")
        << '\n';
    writeWrapped(out, memberIndent, info.header().help);
    out << '\n';
    for (const auto& member : membersOf(info.members()))
        writeSummary(out, member);
    if (!info.events().empty())
        out << "\nEvents:\n";
    for (const auto& event : membersOf(info.events()))
        writeSummary(out, event);
}

Member memberNamed(const ClassInfo& info, std::string_view name) {
    for (const auto infos : {info.members(), info.events()})
        for (const auto& member : membersOf(infos))
            if (equalIgnoringCase(fromHost(member.main().name), fromHost(name)))
                return member;
    requireMember(info, name);
    throw Misuse("a hidden member has no description");
}

} // namespace

void listClasses(std::ostream& out) {
    std::size_t width = 0;
    for (const auto* info : classes())
        width = std::max(width, info->name().size() + 2);
    for (const auto* info : classes())
        writeWrapped(out, 0,
                     std::string(info->name()) + std::string(width - info->name().size(), ' ') +
                         std::string(info->header().help) +
                         (info->header().creatable ? "" : " (made by other classes only)"),
                     width);
}

void describe(std::ostream& out, std::span<const std::string_view> given) {
    const Words words("describe", given, {"--markdown", "--json"});
    const bool markdown = words.has("--markdown"), json = words.has("--json");
    if (markdown && words.count() == 0)
        return writeMarkdownIndex(out);
    words.need(1, 1, "one name: vlgs describe CLASS[.MEMBER]");
    const auto name = words[0];
    const auto dot = name.rfind('.');
    if (markdown || dot == std::string_view::npos || findClass(fromHost(name))) {
        const auto& info = classNamed(name);
        return markdown ? writeMarkdownClass(out, info)
               : json   ? describeAsJson(out, info)
                        : writeClass(out, info);
    }
    const auto member = memberNamed(classNamed(name.substr(0, dot)), name.substr(dot + 1));
    json ? describeAsJson(out, member) : writeMember(out, member);
}

} // namespace vlgs::cli
