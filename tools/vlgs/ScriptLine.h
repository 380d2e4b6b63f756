// SPDX-License-Identifier: MIT
// A line of a script, split into words.
#pragma once

#include "Chain.h"

#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// Words are separated by blanks, "#" before a word makes the rest a comment. '…' and "…" keep blanks, the
/// latter with \" and \\ for those two characters. A word that begins with a quote is a text, whatever it
/// looks like, and so are all words behind "--".
class ScriptLine {
  public:
    /// Raises Misuse for a quote that is not closed.
    explicit ScriptLine(std::string_view line);

    std::vector<ChainWord> words() const;

  private:
    struct Word {
        std::string text;
        bool isLiteral = false;
    };
    std::vector<Word> words_;
};

} // namespace vlgs::cli
