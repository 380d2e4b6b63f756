// SPDX-License-Identifier: MIT
// Lines from a person at a terminal.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// What the last word of a line, the second argument, can become; the first is what stands before it.
using Completer = std::function<std::vector<std::string>(std::string_view before, std::string_view word)>;

/// Reads with editing, completion and history where libedit or libreadline is on the machine, else as the
/// terminal gives lines. The history is kept in the file ".vlgs_history" of the home folder; a line that
/// begins with a blank does not enter it.
class LineEditor {
  public:
    explicit LineEditor(Completer completer);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    /// The next line without its end; nothing at the end of input.
    std::optional<std::string> read(const char* prompt);
};

/// Whether standard input is a terminal.
bool isInteractive();

} // namespace vlgs::cli
