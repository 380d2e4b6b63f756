// SPDX-License-Identifier: MIT
// Several calls that keep what they made: `vlgs run`.
#pragma once

#include <span>
#include <string_view>

namespace vlgs::cli {

inline constexpr std::string_view runUsage = "vlgs run [--json] [FILE [ARG...]]\n";
inline constexpr std::string_view runHelp =
    R"(Carries out the lines of a file, or of standard input (FILE absent or -), in one process. At a terminal it
asks for them and goes on after a failure; where libedit or libreadline is installed, Tab completes names, and
the lines are kept in ~/.vlgs_history but for those that begin with a blank. A line is one of

  CHAIN            a call as for vlgs call, without "vlgs call"; its result is printed
  NAME = CHAIN     keeps the result, an object or a value, under a name; "_ = CHAIN" prints nothing
  NAME = CLASS     keeps a new object
  describe NAME    as vlgs describe; likewise classes
  exit [STATUS]    ends, with that status
  # COMMENT

NAME and NAME.MEMBER begin a chain, $NAME is an argument; a parameter by reference writes to it. $1, $2 … are
the ARGs. Blanks separate words; a word in '…' or "…" is a text whatever it looks like, with \" and \\ in the
latter. A name belongs to one value at a time, case makes no difference.

  file = Files.RetrieveINIFile demo.VLS
  file.CreateKey ODBC DSN 'my data'
  file.Save

A failure ends a script with its place (FILE:LINE:) and the status of vlgs call. --json prints each result as
a line of JSON.
)";

/// Carries out a command line behind `run`; the program's exit status.
int runScript(std::span<const std::string_view> words);

} // namespace vlgs::cli
