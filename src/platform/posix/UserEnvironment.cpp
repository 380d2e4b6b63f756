// SPDX-License-Identifier: MIT
#include "platform/posix/UserEnvironment.h"

#include <array>
#include <string_view>
#include <unistd.h>

namespace vlgs {

namespace {

struct Variable {
    std::string_view prefix;
    std::string UserEnvironment::*value;
};

constexpr std::array<Variable, 9> variables{{
    {"VLGS_CODEPAGE=", &UserEnvironment::codePage},
    {"VLGS_LOCALE=", &UserEnvironment::locale},
    {"LC_ALL=", &UserEnvironment::all},
    {"LC_CTYPE=", &UserEnvironment::characters},
    {"LC_TIME=", &UserEnvironment::time},
    {"LC_NUMERIC=", &UserEnvironment::numeric},
    {"LC_MESSAGES=", &UserEnvironment::messages},
    {"LANG=", &UserEnvironment::language},
    {"LANGUAGE=", &UserEnvironment::languages},
}};

using Values = std::array<std::string_view, variables.size()>;

bool startsWith(const char* entry, std::string_view prefix) {
    for (char character : prefix)
        if (*entry++ != character)
            return false;
    return true;
}

Values currentValues() {
    Values values;
    for (char** entry = environ; entry && *entry; ++entry) {
        if (**entry != 'V' && **entry != 'L')
            continue;
        for (std::size_t i = 0; i < variables.size(); ++i)
            if (startsWith(*entry, variables[i].prefix))
                values[i] = *entry + variables[i].prefix.size();
    }
    return values;
}

} // namespace

const UserEnvironment& userEnvironment() {
    thread_local UserEnvironment known;
    const Values values = currentValues();
    bool changed = known.generation == 0;
    for (std::size_t i = 0; i < variables.size(); ++i)
        changed = changed || known.*variables[i].value != values[i];
    if (changed) {
        for (std::size_t i = 0; i < variables.size(); ++i)
            known.*variables[i].value = values[i];
        ++known.generation;
    }
    return known;
}

} // namespace vlgs
