// SPDX-License-Identifier: MIT
// What the words of a command line can be, from the commands' usage, the descriptions, and the documents and
// registry keys that the line names.
#pragma once

#include "Command.h"

#include <string>
#include <vector>

namespace vlgs::cli {

/// What the last of the words behind "vlgs" can become; nothing where it names a file. What cannot be read
/// adds nothing.
std::vector<std::string> commandWords(std::span<const Command> commands, std::span<const std::string> words);

} // namespace vlgs::cli
