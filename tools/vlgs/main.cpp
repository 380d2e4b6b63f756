// SPDX-License-Identifier: MIT
// The command line. A failure that the library raises ends it with status 1, a command line that cannot be
// carried out with status 2.
#include "Call.h"
#include "Command.h"
#include "Completion.h"
#include "Describe.h"
#include "Explain.h"
#include "HostText.h"
#include "Ini.h"
#include "Json.h"
#include "Lock.h"
#include "Manual.h"
#include "Misuse.h"
#include "Reg.h"
#include "Report.h"
#include "Script.h"
#include "Words.h"
#include "base/Error.h"
#include "base/Text.h"
#include "library/Idl.h"
#include "platform/Environment.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace vlgs::cli {
namespace {

constexpr std::string_view callUsage =
    R"(vlgs call [--json] CLASS.MEMBER [ARG...] [NAME=VALUE...] [.MEMBER [ARG...]]...
vlgs call CLASS.MEMBER=VALUE .MEMBER [ARG...]
)";
constexpr std::string_view callHelp =
    R"(Creates an object of the class, calls the member, and prints the result: a text as it is, an array an item a
line, a document as its text. --json prints the type and the value. .MEMBER goes on with a member of the
result, ..MEMBER with one of the object whose member was called last:

  vlgs call Files.RetrieveINIFile demo.VLS .Section ODBC .Value .Count
  vlgs call Files.RetrieveINIFile demo.VLS .CreateKey ODBC DSN demo ..Save

NAME=VALUE gives the parameter NAME its value, MEMBER=VALUE writes a property. An argument is a text, which
the library converts to what the member takes, or one of

  @FILE @-         the text of a file, of standard input, without its last line end ("@@X" is the text "@X")
  eINI_VLS         the member of an enumeration, where the parameter is no text
  long:1 null:     a value of that type, where the parameter takes any: byte, integer, long, single, double,
                   currency, decimal, date, boolean, text; empty: null: missing: nothing:
  [ CLASS.M ... ]  what another call gives; "[ CLASS ]" a new object
  { A B ... }      an array

and behind "--" all words are plain texts.
)";
constexpr std::string_view describeUsage = R"(vlgs describe [--json] CLASS[.MEMBER]
vlgs describe --markdown [CLASS]
)";
constexpr std::string_view describeHelp =
    "Tells what a class or a member does; --markdown writes the reference pages.\n";

constexpr std::string_view statusHelp =
    R"(0 done; 1 the library raised an error, printed as "error NUMBER SOURCE: DESCRIPTION", or a comparison
found something; 2 misuse.
)";

template <auto run>
int withoutArguments(std::span<const std::string_view> words) {
    if (!words.empty())
        throw Misuse("this command takes no arguments");
    run();
    return 0;
}

int version(std::span<const std::string_view> given) {
    const Words words("version", given, {"--json"});
    words.need(0, 0, "no arguments");
    if (!words.has("--json")) {
        std::cout << "vlgs " << VLGS_VERSION_TEXT << '\n';
        return 0;
    }
    Json json(std::cout);
    json.object([&] { json.field("version", VLGS_VERSION_TEXT); });
    json.end();
    return 0;
}

int listClassesCommand(std::span<const std::string_view> given) {
    const Words words("classes", given, {"--json"});
    words.need(0, 0, "no arguments");
    words.has("--json") ? listClassesAsJson(std::cout) : listClasses(std::cout);
    return 0;
}

int help(std::span<const std::string_view> words);
int completion(std::span<const std::string_view> words);
void printManual();

constexpr Command commands[] = {
    {"call", "calls a member of a class", callUsage, callHelp,
     [](auto words) {
         call(words);
         return 0;
     }},
    {"run", "carries out the lines of a script, or typed ones", runUsage, runHelp, runScript},
    {"ini", "reads and changes INI documents", iniUsage, iniHelp, ini},
    {"reg", "reads and changes the registry", regUsage, regHelp, reg},
    {"explain", "explains the connection string of a project", explainUsage, explainHelp, explain},
    {"lock", "takes, lists and ends the locks of projects", lockUsage, lockHelp, lock},
    {"classes", "lists the classes", "vlgs classes [--json]\n", "", listClassesCommand},
    {"describe", "tells what a class or a member does", describeUsage, describeHelp,
     [](auto words) {
         describe(std::cout, words);
         return 0;
     }},
    {"idl", "prints the interface definition of the COM server", "vlgs idl\n", "",
     withoutArguments<[] { std::cout << interfaceDefinition(); }>},
    {"completion", "prints the completion script of a shell", "vlgs completion bash|zsh|fish\n", "",
     completion},
    {"manual", "prints the manual page", "vlgs manual\n", "", withoutArguments<printManual>},
    {"version", "prints the version", "vlgs version [--json]\n", "", version},
    {"help", "tells how a command is used", "vlgs help [--json] [COMMAND]\n", "", help},
};

const Command& commandNamed(std::string_view name) {
    if (name == "--version")
        name = "version";
    else if (name == "--help" || name == "-h")
        name = "help";
    std::vector<std::string_view> names;
    for (const auto& command : commands) {
        if (command.name == name)
            return command;
        names.push_back(command.name);
    }
    std::string known;
    for (const auto known_ : names)
        known += " " + std::string(known_);
    throw Misuse("there is no command \"" + std::string(name) + "\"" + nearest(name, names) +
                 "\nthe commands are" + known);
}

int completion(std::span<const std::string_view> words) {
    writeCompletion(std::cout, words, commands);
    return 0;
}

void printManual() {
    writeManual(std::cout, commands, statusHelp);
}

void writeUsage(std::ostream& out, std::string_view usage) {
    const char* before = "usage: ";
    while (!usage.empty()) {
        const auto end = usage.find('\n') + 1;
        out << std::exchange(before, "       ") << usage.substr(0, end);
        usage.remove_prefix(end);
    }
}

void writeCommand(Json& json, const Command& command) {
    json.object([&] {
        json.field("name", command.name);
        json.field("brief", command.brief);
        json.name("usage");
        json.array([&] {
            for (const auto& form : formsOf(command))
                json.value(form);
        });
        json.field("help", command.help);
    });
}

int helpAsJson(std::span<const std::string_view> wanted) {
    Json json(std::cout, wanted.empty() ? Json::Layout::Entries : Json::Layout::Line);
    if (wanted.empty())
        json.array([&] {
            for (const auto& command : commands)
                writeCommand(json, command);
        });
    else
        writeCommand(json, commandNamed(wanted.front()));
    json.end();
    return 0;
}

int help(std::span<const std::string_view> given) {
    const Words words("help", given, {"--json"});
    words.need(0, 1, "the name of one command");
    if (words.has("--json"))
        return helpAsJson(words.plain());
    if (words.count() == 1) {
        const auto& command = commandNamed(words[0]);
        writeUsage(std::cout, command.usage);
        std::cout << '\n';
        if (command.help.empty())
            std::cout << "vlgs " << command.name << ' ' << command.brief << ".\n";
        std::cout << command.help;
        return 0;
    }
    std::cout << "usage: vlgs COMMAND [WORD...]\n\n";
    for (const auto& command : commands)
        std::cout << "  " << command.name << std::string(12 - command.name.size(), ' ') << command.brief
                  << '\n';
    std::cout << "\nvlgs help COMMAND and vlgs COMMAND --help tell more.\n\nStatus: " << statusHelp;
    return 0;
}

/// The program's exit status.
int run(std::span<const std::string_view> words) {
    if (words.empty())
        throw Misuse("a command is missing\nusage: vlgs COMMAND [WORD...]; vlgs help lists the commands");
    const auto& command = commandNamed(words.front());
    const auto rest = words.subspan(1);
    const bool asksHelp = !rest.empty() && rest.back() == "--help";
    if (asksHelp && std::ranges::find(rest, std::string_view("--")) == rest.end())
        return help(words.first(1));
    return command.run(rest);
}

void writeUsageOf(std::span<const std::string_view> words) {
    const auto known =
        std::ranges::find(commands, words.empty() ? std::string_view() : words.front(), &Command::name);
    if (known != std::end(commands))
        writeUsage(std::cerr, known->usage);
}

int guardedRun(std::span<const std::string_view> words) {
    try {
        const int status = run(words);
        if (!std::cout.flush())
            raise(RunTimeError::DeviceIoError);
        return status;
    } catch (const Misuse&) {
        const int status = reportFailure();
        writeUsageOf(words);
        return status;
    } catch (const std::exception&) {
        std::cout.flush();
        return reportFailure();
    }
}

void tellUnknownSettings() {
    const auto lines = unknownSettings();
    for (const auto line : split(lines, u"\n"))
        if (!line.empty())
            std::cerr << "vlgs: " << oneLine(line) << '\n';
}

} // namespace
} // namespace vlgs::cli

int main(int count, char** words) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string_view> arguments(words + (count > 0), words + count);
    vlgs::cli::tellUnknownSettings();
    return vlgs::cli::guardedRun(arguments);
}
