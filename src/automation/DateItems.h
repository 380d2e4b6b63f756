// SPDX-License-Identifier: MIT
// A text that may be a date or a time, cut into its numbers and words.
#pragma once

#include "automation/Moment.h"

#include <string_view>
#include <vector>

namespace vlgs {

/// What stands between two items, blanks apart.
enum class DateGap : std::uint8_t { Nothing, Blank, Mark, Colon };

struct DateItem {
    enum Kind : std::uint8_t { Number, Month, Morning, Afternoon } kind;
    DateGap before;
    int value; // of a number or month

    bool isHalf() const { return kind == Morning || kind == Afternoon; }
};

using DateItems = std::vector<DateItem>;

/// The items of a text; nothing for a text with anything that no date or time holds.
///
/// Between items stand blanks, commas and at most one mark: "/", "-" or the locale's date separator. A "."
/// is one where the separator begins with it, and elsewhere parts hours from minutes as ":" does.
std::optional<DateItems> dateItems(std::u16string_view text, const Locale& locale, const DateNames& names);

/// Finds the time of day at either end of the items and takes it out of them: hour, minute and second with
/// colons between them, or an hour alone beside a designator. `time` stays as it is when there is none. False
/// when the items hold more than one time, one inside a date, or one that there is not.
bool takeTime(DateItems& items, std::optional<TimeOfDay>& time);

} // namespace vlgs
