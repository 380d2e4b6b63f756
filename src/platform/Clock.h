// The present moment in the user's time zone.
#pragma once

namespace vlgs {

/// A moment of the Gregorian calendar, month and day from 1, in whole seconds.
struct LocalTime {
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;
};

/// The present local date and time. Read it once per operation and pass it on.
LocalTime localNow();

/// A moment as automation counts it: days since 30 December 1899, the time of day as fraction. Before that
/// day the fraction still counts forward from midnight, away from zero (-1.25 is 6 o'clock on 29 December).
double toDayCount(const LocalTime& moment) noexcept;

} // namespace vlgs
