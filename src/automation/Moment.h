// SPDX-License-Identifier: MIT
// What a text says of a moment, as far as it says it: the readers of dates have this in common.
#pragma once

#include "automation/DateNames.h"
#include "base/Dates.h"

#include <optional>

namespace vlgs {

struct CalendarDay {
    int year, month, day;
};
struct TimeOfDay {
    int hour = 0, minute = 0, second = 0;
};
struct Moment {
    std::optional<CalendarDay> day;
    std::optional<TimeOfDay> time;
};

/// The day, where there is such a day; a year below 100 lies in 1930 to 2029.
inline std::optional<CalendarDay> validDay(int year, int month, int day) {
    const int full = year < 100 ? fullYear(year) : year;
    return isDay(full, month, day) ? std::optional(CalendarDay{full, month, day}) : std::nullopt;
}

/// The time, where there is such a time; a designator counts for the hours to 12.
inline std::optional<TimeOfDay> validTime(HalfOfDay half, int hour, int minute, int second) {
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    if (half == HalfOfDay::Morning && hour == 12)
        hour = 0;
    if (half == HalfOfDay::Afternoon && hour < 12)
        hour += 12;
    return TimeOfDay{hour, minute, second};
}

} // namespace vlgs
