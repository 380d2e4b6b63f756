// SPDX-License-Identifier: MIT
// The system's 8-bit code page: the bytes in which files and 8-bit streams keep text, and the codes that the
// run time's character functions give.
//
// Invariant: the first 128 codes of every page are the characters U+0000 to U+007F.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vlgs {

/// One code page. A small value: copy it freely, and fetch it once before a loop over characters.
class CodePage {
  public:
    /// The page in force at this moment. On Windows the system's (ANSI) page; on other hosts the one that
    /// VLGS_CODEPAGE names, else the usual page of the system's locale (Locale.h).
    static CodePage system();

    /// The page of a number or name as users write it, without regard to case, "-", "_" and blanks: "1252",
    /// "cp1252", "windows-1252", "ISO 8859-1", "KOI8-R", "UTF-8".
    static std::optional<CodePage> named(std::string_view name);

    /// The page of a number (1252, 932, 65001 for UTF-8 …), nothing when this host does not know it.
    static std::optional<CodePage> find(unsigned number);

    unsigned number() const noexcept;

    /// The bytes of a text; a character that the page cannot hold becomes "?" (in UTF-8, where only a lone
    /// surrogate is such a character, the bytes of U+FFFD). No look-alike is ever put in its place.
    std::string encode(std::u16string_view text) const;

    /// The bytes of a text, nothing when the page cannot hold every character of it.
    std::optional<std::string> encodeExactly(std::u16string_view text) const;

    /// Appends the bytes of a text, as `encode` makes them; false when a character was replaced.
    bool append(std::string& bytes, std::u16string_view text) const;

    /// The text of the bytes. In a single-byte page every byte is a character and `encodeExactly` gives the
    /// same bytes again. Bytes that are no character of a double-byte page give the page's substitute ("?",
    /// in 932 U+30FB), those of UTF-8 U+FFFD.
    String decode(std::string_view bytes) const;

    /// Whether `decode` puts no substitute into the text of the bytes. Always so in a single-byte page.
    bool isText(std::string_view bytes) const noexcept;

    /// Whether a byte begins a character of two bytes (False throughout in single-byte pages and in UTF-8).
    bool isLeadByte(unsigned char byte) const noexcept;

    /// The code of a character as the run time counts it: 0 to 255 for one byte; for two bytes lead × 256 +
    /// trail as a signed 16-bit number, hence negative; 63 ("?") when the page does not hold the character.
    /// In UTF-8 the characters up to U+00FF are their own codes and all others 63.
    std::int16_t codeOf(char16_t character) const noexcept;

    /// The character of such a code, the substitute of `decode` for a code that is no character.
    char16_t characterOf(std::int16_t code) const noexcept;

  private:
    struct Data;
    explicit CodePage(const Data& data) noexcept : data_(&data) {}

    // `append`, `decode` and `isText` in any page but UTF-8.
    bool appendInPage(std::string& bytes, std::u16string_view text) const;
    String decodeInPage(std::string_view bytes) const;
    bool isTextInPage(std::string_view bytes) const noexcept;

    const Data* data_;
};

} // namespace vlgs
