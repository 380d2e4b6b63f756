// SPDX-License-Identifier: MIT
// Locks from the shell: `vlgs lock take`, `vlgs lock status`, `vlgs lock release`.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::cli {

inline constexpr std::string_view lockUsage =
    R"(vlgs lock take [--json] [--exclusive | --read-only] [--fallback] [--document GUID] [--session ID] PATH
     [-- COMMAND [ARG...]]
vlgs lock status [--json] FOLDER
vlgs lock release FILE
)";

inline constexpr std::string_view lockHelp =
    R"(take locks the project in whose folder PATH lies, or one of its documents: for reading and
writing, or as the options say; --fallback makes a conflict a read-only lock. With a COMMAND the
lock lasts as long as that runs, which finds "ReadWrite", "ReadOnly" or "Exclusive" in
VLGS_LOCK_ACCESS, and the status is the command's. Without one the lock lasts until it is
released, or the machine stops; printed are what was granted and the lock's file. status lists the
lock files of a project, by its folder or a file in it: live ones, and stale ones, which hold nothing
and are deleted. A line has state, access, document, machine, session, time and file, with tabs
between them. release ends a lock that take has left behind.
)";

/// Carries out a command line behind `lock`; the program's exit status.
int lock(std::span<const std::string_view> words);

} // namespace vlgs::cli
