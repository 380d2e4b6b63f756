// SPDX-License-Identifier: MIT
#include "Completion.h"

#include "Misuse.h"
#include "library/Classes.h"

#include <set>
#include <string>

namespace vlgs::cli {

namespace {

std::string memberNames() {
    std::set<std::string> names;
    for (const auto* info : classes())
        for (const auto& member : info->members())
            if (!member.hidden)
                names.insert(std::string(info->name()) + "." + std::string(member.name));
    std::string list;
    for (const auto& name : names)
        list += (list.empty() ? "" : " ") + name;
    return list;
}

} // namespace

void writeCompletion(std::ostream& out, std::string_view shell, std::span<const std::string_view> commands) {
    std::string list;
    for (const auto command : commands)
        list += (list.empty() ? "" : " ") + std::string(command);
    if (shell == "fish") {
        out << "complete -c vlgs -n __fish_use_subcommand -f -a '" << list
            << "'\ncomplete -c vlgs -n '__fish_seen_subcommand_from call describe' -a '" << memberNames()
            << "'\n";
        return;
    }
    if (shell != "bash" && shell != "zsh")
        throw Misuse("completion is made for bash, zsh and fish");
    if (shell == "zsh")
        out << "autoload -U +X bashcompinit && bashcompinit\n";
    out << "_vlgs() {\n    local words=\n    case $COMP_CWORD:${COMP_WORDS[1]} in\n    1:*) words='" << list
        << "' ;;\n    2:call | 2:describe) words='" << memberNames()
        << "' ;;\n    esac\n    COMPREPLY=($(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\"))\n}\n"
           "complete -o default -F _vlgs vlgs\n";
}

} // namespace vlgs::cli
