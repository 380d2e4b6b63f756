// SPDX-License-Identifier: MIT
// The folders of the user whom the process runs for.
#pragma once

#include <optional>
#include <string>

namespace vlgs::posix {

/// A variable of the environment; nothing in a process that has rights which whoever started it lacks, since
/// the environment is that one's.
std::optional<std::string> trustedVariable(const char* name);

std::string homeFolder();

/// Where the library keeps what must outlive a process: $XDG_STATE_HOME/vlgs, else ~/.local/state/vlgs.
std::string stateFolder();

/// Makes a folder for the user alone, and those above it that are missing; 0, or the value of errno.
int makeFolders(const std::string& folder);

} // namespace vlgs::posix
