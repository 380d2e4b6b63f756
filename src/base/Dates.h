// SPDX-License-Identifier: MIT
// Calendar arithmetic on automation dates: day counts from 30 December 1899 in the proleptic Gregorian
// calendar, years 100 to 9999, moments in whole seconds.
#pragma once

#include "base/Export.h"

#include <cstdint>

namespace vlgs {

/// A moment as automation holds it: days since 30 December 1899. The fraction is the time of day, also for a
/// negative day count (-1.25 is 29 December 1899, 06:00).
struct Date {
    double days = 0;
    friend bool operator==(Date, Date) = default;
};

struct DateParts {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    friend bool operator==(const DateParts&, const DateParts&) = default;
};

/// Whether such a day exists: year 100 to 9999, month 1 to 12, day 1 to the month's length.
VLGS_API bool isDay(int year, int month, int day) noexcept;

/// The parts of a moment, rounded to the second. Raises 6 for a day count outside the years 100 to 9999.
VLGS_API DateParts partsOf(Date date);

/// The moment of the parts. REQUIRES: the day exists, the time lies between 00:00:00 and 23:59:59.
VLGS_API Date dateOf(const DateParts& parts) noexcept;

/// The day, without its time, and the time of day alone, as a moment of day 0.
VLGS_API Date dayOf(Date date);
VLGS_API Date timeOf(Date date);

/// 1 (Sunday) to 7 (Saturday).
VLGS_API int weekdayOf(Date date);
/// 1 to 366.
VLGS_API int dayOfYear(const DateParts& parts) noexcept;

/// Moves by whole seconds or days. Raise 5 when the result lies outside the years 100 to 9999.
VLGS_API Date addSeconds(Date date, std::int64_t seconds);
VLGS_API Date addDays(Date date, std::int64_t days);

/// Whole seconds, and midnights, from `from` to `to`.
VLGS_API std::int64_t secondsBetween(Date from, Date to);
VLGS_API std::int64_t daysBetween(Date from, Date to);

/// The year of a two-digit one: 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999.
constexpr int fullYear(int twoDigits) noexcept {
    return twoDigits + (twoDigits < 30 ? 2000 : 1900);
}

} // namespace vlgs
