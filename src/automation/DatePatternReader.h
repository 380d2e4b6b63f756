// SPDX-License-Identifier: MIT
// Texts in the form of one of a locale's own patterns, units and all: "2009年3月7日".
#pragma once

#include "automation/Moment.h"

#include <string_view>
#include <vector>

namespace vlgs {

class DatePatternReader {
  public:
    /// Whether the weekday names of the pattern are wanted in the text, or must not stand there.
    enum class Weekdays { Drop, Keep };

    /// REQUIRES: pattern and names outlive the reader.
    DatePatternReader(std::u16string_view pattern, const DateNames& names,
                      Weekdays weekdays = Weekdays::Drop);

    /// The same without the seconds and what stands before them.
    void dropSeconds();

    /// The same without a year in front and its unit, for this year's days: "3月7日". False for a pattern
    /// that begins otherwise.
    bool dropYear(int thisYear);

    /// Reads the beginning of the text, which then begins behind the moment.
    std::optional<Moment> read(std::u16string_view& text) const;

  private:
    struct Piece {
        char16_t letter; // NUL or ' for literal text
        std::size_t size;
        std::u16string_view literal;
    };
    struct Fields {
        std::optional<int> year, month, day, hour, minute, second;
    };
    void add(Piece piece);
    bool readPiece(const Piece& piece, std::u16string_view& rest, Fields& fields) const;
    HalfOfDay takeHalfBehind(std::u16string_view& text) const;

    const DateNames& names_;
    std::vector<Piece> pieces_;
    std::optional<int> year_; // of days without one
};

} // namespace vlgs
