// SPDX-License-Identifier: MIT
// Reads the lines of an INI text into a document.
//
// Once there is a current section, a line with "=" is a key: the name before the first "=", trimmed of
// blanks, and the value behind it as it stands. Otherwise a line with "[" and a later "]" makes the section
// between them, trimmed, the current one, created if need be. All other lines mean nothing; there are no
// comments.
#pragma once

#include "ini/INIFile.h"
#include "ini/TextArena.h"
#include "platform/CodePage.h"

#include <string_view>

namespace vlgs {

class LineParser {
  public:
    explicit LineParser(INIFile& document) : document_(document) {}
    LineParser(const LineParser&) = delete;
    ~LineParser() { arena_->fit(); }

    /// Raise what CreateSection and CreateKey raise: 11508 and 11510 for empty names.
    void parse(std::u16string_view line);
    /// A line still in its bytes.
    void parse(std::string_view line, const CodePage& page);

  private:
    void parseHeader(std::u16string_view line);
    void setKey(StoredText name, StoredText value);

    INIFile& document_;
    FreshKeys* fresh_ = nullptr; // the current section's keys while they stay as they are read
    INIFile::KeyPlace current_;  // else where they go
    Ref<TextArena> arena_ = make<TextArena>();
    bool hasSection_ = false;
};

} // namespace vlgs
