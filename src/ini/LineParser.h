// Reads the lines of an INI text into a document.
//
// Once there is a current section, a line with "=" is a key: the name before the first "=", trimmed of
// blanks, and the value behind it as it stands. Otherwise a line with "[" and a later "]" makes the section
// between them, trimmed, the current one, created if need be. All other lines mean nothing; there are no
// comments.
#pragma once

#include "ini/INIFile.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace vlgs {

/// Gives texts that occur again and again one block of memory, as key names do from section to section.
class SharedTexts {
  public:
    SharedTexts() : recent_(slots) {}

    /// `text`, as `make()` gives it unless a recent text is the same; a byte stands for itself below 128.
    template <class Unit, class Make>
    const String& share(std::basic_string_view<Unit> text, Make&& make) {
        String& slot = recent_[slotOf(text)];
        if (!isSame(slot, text))
            slot = make();
        return slot;
    }

  private:
    static constexpr std::size_t slots = 1024;

    // Names that follow one another mostly differ in their last few characters.
    template <class Unit>
    static std::size_t slotOf(std::basic_string_view<Unit> text) {
        std::size_t hash = text.size();
        for (const Unit unit : text.substr(text.size() - std::min<std::size_t>(text.size(), 8)))
            hash = hash * 31 + static_cast<std::size_t>(unit);
        return hash % slots;
    }

    template <class Unit>
    static bool isSame(const String& known, std::basic_string_view<Unit> text) {
        const auto same = [](char16_t a, Unit b) {
            if constexpr (sizeof(Unit) == 1)
                return a == static_cast<unsigned char>(b) && a < 0x80;
            else
                return a == b;
        };
        return known.length() == text.size() && std::equal(known.begin(), known.end(), text.begin(), same);
    }

    std::vector<String> recent_;
};

class LineParser {
  public:
    explicit LineParser(INIFile& document) : document_(document) {}

    /// Raise what CreateSection and CreateKey raise: 11508 and 11510 for empty names.
    void parse(std::u16string_view line);
    /// A line still in its bytes. REQUIRES: the page is `bytewise`.
    void parse(std::string_view line, const CodePage& page);

    /// Whether no byte below 128 is ever part of another character in the page.
    static bool bytewise(const CodePage& page) noexcept;

  private:
    void parseHeader(std::u16string_view line);

    INIFile& document_;
    INIFile::KeyPlace current_;
    SharedTexts names_;
    bool hasSection_ = false;
};

} // namespace vlgs
