// SPDX-License-Identifier: MIT
// Completion for shells, made from the commands' usage and the descriptions: `vlgs completion bash|zsh|fish`.
#pragma once

#include "Command.h"

#include <iosfwd>

namespace vlgs::cli {

/// Writes the script for a shell. It completes commands, what stands behind them, options, classes and
/// members, and files elsewhere. Misuse for another shell.
void writeCompletion(std::ostream& out, std::string_view shell, std::span<const Command> commands);

} // namespace vlgs::cli
