// SPDX-License-Identifier: MIT
// Calls as they are typed: a first word that names a class, a member of a class or a variable, its arguments,
// and members of what comes back.
#pragma once

#include "Print.h"
#include "automation/Object.h"
#include "automation/Variant.h"
#include "base/CaseFold.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// A word; a literal one is a text, whatever it looks like.
struct ChainWord {
    std::string_view text;
    bool isLiteral = false;
};

/// The words of a command line, where those behind a "--" are literal.
std::vector<ChainWord> chainWords(std::span<const std::string_view> given);

struct ChainResult {
    Variant value;
    /// The arguments by reference of the last call, as it left them.
    std::vector<std::string> names;
    std::vector<Variant> written;

    std::vector<WrittenArgument> arguments() const;
};

struct IgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return compareIgnoringCase(String::fromUtf8(a), String::fromUtf8(b)) < 0;
    }
};

/// Values by name, as a script keeps them.
using Variables = std::map<std::string, Variant, IgnoringCase>;

/// Carries out a chain; null for no variables, where "$NAME" is a text. What a member writes to a parameter
/// by reference that was given as "$NAME" is the variable's from then on. Raises Misuse for what the chain
/// does not name, and what the calls raise.
ChainResult runChain(std::span<const ChainWord> words, Variables* variables = nullptr);

/// Whether a word can name a class, member, parameter or variable.
bool isIdentifier(std::string_view text);

} // namespace vlgs::cli
