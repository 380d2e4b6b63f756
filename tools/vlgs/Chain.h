// SPDX-License-Identifier: MIT
// Calls as they are typed: a first word that names a class, a member of a class or a variable, its arguments,
// and members of what comes back.
#pragma once

#include "Print.h"
#include "automation/Object.h"
#include "automation/Variant.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// Words, of which those from `literal` on are texts, whatever they look like.
struct ChainWords {
    std::vector<std::string_view> words;
    std::size_t literal;

    /// Takes a "--" for the mark that it is.
    explicit ChainWords(std::span<const std::string_view> given);
};

struct ChainResult {
    Variant value;
    /// The arguments by reference of the last call, as it left them.
    std::vector<std::string> names;
    std::vector<Variant> written;

    std::vector<WrittenArgument> arguments() const;
};

/// Values by name, as a script keeps them.
using Variables = std::map<std::string, Variant, std::less<>>;

/// Carries out a chain. Raises Misuse for what it does not name, and what the calls raise.
ChainResult runChain(const ChainWords& words, const Variables& variables = {});

/// Whether a word can name a class, member, parameter or variable.
bool isIdentifier(std::string_view text);

} // namespace vlgs::cli
