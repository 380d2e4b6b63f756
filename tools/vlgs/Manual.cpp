// SPDX-License-Identifier: MIT
#include "Manual.h"

#include "library/Classes.h"

#include <ostream>
#include <string>

namespace vlgs::cli {

namespace {

// Text that says nothing to roff: no escapes, no requests, hyphens that can be copied.
void writePlain(std::ostream& out, std::string_view text) {
    bool lineBegins = true;
    for (const char c : text) {
        if (lineBegins && (c == '.' || c == '\''))
            out << "\\&";
        if (c == '\\')
            out << "\\e";
        else if (c == '-')
            out << "\\-";
        else
            out << c;
        lineBegins = c == '\n';
    }
}

void writeVerbatim(std::ostream& out, std::string_view text) {
    out << ".nf\n";
    writePlain(out, text);
    out << ".fi\n";
}

// Paragraphs are filled; lines that begin with blanks, lists and examples, stay as they are.
void writeHelp(std::ostream& out, std::string_view text) {
    bool verbatim = false;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n') + 1);
        text.remove_prefix(line.size());
        if (line == "\n") {
            if (!verbatim || !text.starts_with(" "))
                out << ".PP\n";
            continue;
        }
        if (line.starts_with(" ") != verbatim) {
            verbatim = !verbatim;
            out << (verbatim ? ".nf\n" : ".fi\n");
        }
        writePlain(out, line);
    }
    if (verbatim)
        out << ".fi\n";
}

void writeCommand(std::ostream& out, const Command& command) {
    out << ".SS ";
    writePlain(out, command.name);
    out << '\n';
    writeVerbatim(out, command.usage);
    out << ".PP\n";
    if (command.help.empty()) {
        out << "Vlgs ";
        writePlain(out, command.name);
        out << ' ';
        writePlain(out, command.brief);
        out << ".\n";
    }
    writeHelp(out, command.help);
}

} // namespace

void writeManual(std::ostream& out, std::span<const Command> commands, std::string_view status) {
    out << ".TH VLGS 1 \"\" \"VlGeneralServices " << VLGS_VERSION_TEXT << "\" \"User Commands\"\n"
        << ".SH NAME\nvlgs \\- INI documents, project files, the registry and general services\n"
        << ".SH SYNOPSIS\n.B vlgs\n.I COMMAND\n.RI [ WORD ...]\n.SH COMMANDS\n";
    for (const auto& command : commands)
        writeCommand(out, command);
    out << ".SH CLASSES\n";
    for (const auto* info : classes()) {
        out << ".TP\n.B " << info->name() << '\n';
        writePlain(out, info->header().help);
        out << (info->header().creatable ? ".\n" : " (made by other classes only).\n");
    }
    out << ".PP\n.B vlgs describe\n.I CLASS\nlists the members of a class.\n.SH EXIT STATUS\n";
    writePlain(out, status);
}

} // namespace vlgs::cli
