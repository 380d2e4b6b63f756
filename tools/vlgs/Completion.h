// SPDX-License-Identifier: MIT
// Completion for shells, made from the descriptions: `vlgs completion bash|zsh|fish`.
#pragma once

#include <ostream>
#include <span>
#include <string_view>

namespace vlgs::cli {

/// Writes the script for a shell, which completes the commands, classes and members. Misuse for another
/// shell.
void writeCompletion(std::ostream& out, std::string_view shell, std::span<const std::string_view> commands);

} // namespace vlgs::cli
