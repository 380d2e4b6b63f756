// SPDX-License-Identifier: MIT
#include "base/Dates.h"

#include "base/Error.h"

#include <cmath>

namespace vlgs {

namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::int64_t firstDay = -657434; // 1 January 100
constexpr std::int64_t lastDay = 2958465;  // 31 December 9999

constexpr bool isLeap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}
constexpr int lengthOf(int year, int month) {
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[month - 1] + (month == 2 && isLeap(year));
}

// Day counts by way of years that begin in March, so that the leap day is the last of its year.
constexpr std::int64_t dayCount(int year, int month, int day) {
    const int shifted = month > 2 ? year : year - 1;
    const int era = (shifted >= 0 ? shifted : shifted - 399) / 400;
    const int yearOfEra = shifted - era * 400;
    const int dayInYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayInYear;
    return std::int64_t{era} * 146097 + dayOfEra - 693899;
}
static_assert(dayCount(1899, 12, 30) == 0 && dayCount(100, 1, 1) == firstDay &&
              dayCount(9999, 12, 31) == lastDay && dayCount(2000, 3, 1) == 36586);

// The day of a moment and its second of that day, rounded.
struct DayAndSecond {
    std::int64_t day;
    unsigned second;
};

DayAndSecond split(Date date) {
    if (!(date.days > firstDay - 1 && date.days < lastDay + 1))
        raise(RunTimeError::Overflow);
    const auto day = static_cast<std::int32_t>(date.days);
    const double seconds = std::abs(date.days - day) * secondsPerDay;
    const auto whole = static_cast<std::int32_t>(seconds); // the rest is exact: halves are seen as such
    const auto rounded = static_cast<unsigned>(whole + (seconds - whole >= 0.5));
    return rounded < secondsPerDay ? DayAndSecond{day, rounded} : DayAndSecond{day + 1, 0};
}

// Years begin in March here too. A century has 36524 1/4 days and a year 365 1/4, so the quarters are
// counted.
DateParts partsOf(DayAndSecond moment) noexcept {
    const auto day = static_cast<unsigned>(moment.day + 693899);
    const unsigned century = (4 * day + 3) / 146097;
    const unsigned dayOfCentury = day - 146097 * century / 4;
    const unsigned yearOfCentury = (4 * dayOfCentury + 3) / 1461;
    const unsigned dayInYear = dayOfCentury - 1461 * yearOfCentury / 4;
    const unsigned shiftedMonth = (5 * dayInYear + 2) / 153;
    const bool inNextYear = shiftedMonth >= 10;
    const unsigned minutes = moment.second / 60;
    return {static_cast<int>(century * 100 + yearOfCentury + inNextYear),
            static_cast<int>(inNextYear ? shiftedMonth - 9 : shiftedMonth + 3),
            static_cast<int>(dayInYear - (153 * shiftedMonth + 2) / 5 + 1),
            static_cast<int>(moment.second / 3600),
            static_cast<int>(minutes % 60),
            static_cast<int>(moment.second - minutes * 60)};
}

// Seconds from midnight of day 0, so that neighbouring moments are neighbouring numbers also before it.
std::int64_t secondsOf(Date date) {
    const auto [day, second] = split(date);
    return day * secondsPerDay + second;
}

Date dateOfSeconds(std::int64_t seconds) {
    std::int64_t day = seconds / secondsPerDay;
    std::int64_t rest = seconds % secondsPerDay;
    if (rest < 0) {
        rest += secondsPerDay;
        --day;
    }
    if (day < firstDay || day > lastDay)
        raise(RunTimeError::InvalidProcedureCall);
    const double time = static_cast<double>(rest) / secondsPerDay;
    return {day < 0 ? static_cast<double>(day) - time : static_cast<double>(day) + time};
}

std::int64_t checkedSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        raise(RunTimeError::InvalidProcedureCall);
    return sum;
}

std::int64_t dayNumber(Date date) {
    return split(date).day;
}

} // namespace

bool isDay(int year, int month, int day) noexcept {
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= lengthOf(year, month);
}

DateParts partsOf(Date date) {
    const auto moment = split(date);
    if (moment.day > lastDay) // the last half second rounds up into the year 10000
        raise(RunTimeError::Overflow);
    return partsOf(moment);
}

Date dateOf(const DateParts& parts) noexcept {
    const auto day = dayCount(parts.year, parts.month, parts.day);
    const double time = (parts.hour * 3600 + parts.minute * 60 + parts.second) / double{secondsPerDay};
    return {day < 0 ? static_cast<double>(day) - time : static_cast<double>(day) + time};
}

Date dayOf(Date date) {
    return {static_cast<double>(dayNumber(date))};
}

Date timeOf(Date date) {
    return {split(date).second / double{secondsPerDay}};
}

int weekdayOf(Date date) { // day 0 was a Saturday
    return static_cast<int>(((dayNumber(date) + 6) % 7 + 7) % 7 + 1);
}

int dayOfYear(const DateParts& parts) noexcept {
    return static_cast<int>(dayCount(parts.year, parts.month, parts.day) - dayCount(parts.year, 1, 1)) + 1;
}

Date addSeconds(Date date, std::int64_t seconds) {
    return dateOfSeconds(checkedSum(secondsOf(date), seconds));
}

Date addDays(Date date, std::int64_t days) {
    std::int64_t seconds = 0;
    if (__builtin_mul_overflow(days, secondsPerDay, &seconds))
        raise(RunTimeError::InvalidProcedureCall);
    return addSeconds(date, seconds);
}

std::int64_t secondsBetween(Date from, Date to) {
    return secondsOf(to) - secondsOf(from);
}
std::int64_t daysBetween(Date from, Date to) {
    return dayNumber(to) - dayNumber(from);
}

} // namespace vlgs
