// SPDX-License-Identifier: MIT
// How a chain that is being typed can go on, from the descriptions.
#pragma once

#include "Chain.h"

namespace vlgs::cli {

/// The names that a word can become, behind those before it: classes, their members, members of what a call
/// gives, parameters, members of enumerations, variables.
std::vector<std::string> suggestions(std::span<const ChainWord> before, std::string_view word,
                                     const Variables& variables);

} // namespace vlgs::cli
