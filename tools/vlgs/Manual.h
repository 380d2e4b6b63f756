// SPDX-License-Identifier: MIT
// The manual page, made from the commands and the descriptions: `vlgs manual`.
#pragma once

#include "Command.h"

#include <iosfwd>

namespace vlgs::cli {

/// Writes it as man reads it (roff).
void writeManual(std::ostream& out, std::span<const Command> commands, std::string_view status);

} // namespace vlgs::cli
