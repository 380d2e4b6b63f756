// SPDX-License-Identifier: MIT
// Completion for shells, `vlgs completion bash|zsh|fish`.
#pragma once

#include "Command.h"

#include <iosfwd>

namespace vlgs::cli {

/// Writes the script of the shell that the first word names; with "--" and words behind it, what the last of
/// those can become, a line each. Misuse for another shell.
void writeCompletion(std::ostream& out, std::span<const std::string_view> words,
                     std::span<const Command> commands);

} // namespace vlgs::cli
