// The command line. A failure that the library raises ends it with status 1, a command line that cannot be
// carried out with status 2.
#include "Call.h"
#include "Describe.h"
#include "HostText.h"
#include "Lock.h"
#include "Misuse.h"
#include "base/Error.h"
#include "base/Text.h"
#include "library/Idl.h"
#include "platform/Environment.h"

#include <iostream>
#include <new>
#include <string>
#include <vector>

namespace vlgs::cli {
namespace {

constexpr std::string_view usage =
    R"(usage: vlgs call [--json] CLASS.MEMBER [ARG...] [NAME=VALUE...]
       vlgs call CLASS.MEMBER=VALUE [ARG...]
       vlgs classes
       vlgs describe CLASS[.MEMBER]
       vlgs describe --markdown [CLASS]
       vlgs idl
       vlgs --version | --help
)";

constexpr std::string_view help = R"(
call      creates an object of the class, calls the member, and prints the result: a text as it is, an
          array an item a line, a document as its text. The arguments are texts, which the library converts
          to what the member takes. NAME=VALUE gives the parameter NAME its value; behind "--" all
          arguments are plain texts. CLASS.MEMBER=VALUE writes a property. --json prints type and value.
classes   lists the classes.
describe  tells what a class or a member does; --markdown writes the reference pages.
idl       prints the interface definition of the COM server.
)";

constexpr std::string_view statusHelp = R"(
Status: 0 done; 1 the library raised an error, printed as "error NUMBER SOURCE: DESCRIPTION"; 2 misuse.
)";

/// The program's exit status.
int run(std::span<const std::string_view> words) {
    if (words.empty())
        throw Misuse("a command is missing");
    const auto command = words.front();
    const auto rest = words.subspan(1);
    if (command == "lock")
        return lock(rest);
    if (command == "call") {
        call(rest);
        return 0;
    }
    if (command == "describe") {
        describe(std::cout, rest);
        return 0;
    }
    const bool known = command == "classes" || command == "idl" || command == "--version" ||
                       command == "--help" || command == "-h";
    if (!known)
        throw Misuse("there is no command \"" + std::string(command) + "\"");
    if (!rest.empty())
        throw Misuse(std::string(command) + " takes no arguments");
    if (command == "classes")
        listClasses(std::cout);
    else if (command == "idl")
        std::cout << interfaceDefinition();
    else if (command == "--version")
        std::cout << "vlgs " << VLGS_VERSION_TEXT << '\n';
    else
        std::cout << usage << lockUsage << help << lockHelp << statusHelp;
    return 0;
}

// The description may have several lines, the report has one.
std::string oneLine(std::u16string_view text) {
    std::u16string line;
    for (const char16_t c : text) {
        if (c >= u' ' && c != 0x7F)
            line += c;
        else if (!line.ends_with(u' '))
            line += u' ';
    }
    while (line.ends_with(u' '))
        line.pop_back();
    return toHost(line);
}

int report(const Error& error) {
    std::cerr << "error " << error.number();
    if (!error.source().empty())
        std::cerr << ' ' << oneLine(error.source());
    std::cerr << ": " << oneLine(error.description()) << '\n';
    return 1;
}

int guardedRun(std::span<const std::string_view> words) {
    try {
        const int status = run(words);
        if (std::cout.flush())
            return status;
        return report(Error(RunTimeError::DeviceIoError));
    } catch (const Misuse& misuse) {
        std::cerr << "vlgs: " << misuse.what() << '\n' << usage << lockUsage;
        return 2;
    } catch (const Error& error) {
        std::cout.flush();
        return report(error);
    } catch (const std::bad_alloc&) {
        return report(Error(RunTimeError::OutOfMemory));
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
