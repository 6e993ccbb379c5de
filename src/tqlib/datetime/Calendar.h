#pragma once

// The Gregorian calendar, carried backward without a limit: years, months and days as numbers, and
// a running day count whose day 1 is 1 January of year 1. Everything is computed in 64 bits, so
// that no field of 32 bits overflows.

#include <array>
#include <cstdint>

namespace tqlib::detail {

/// The days of a common year before a month, and those of the month; month 1 has index 1.
inline constexpr std::array<std::int32_t, 13> daysBeforeMonth = {0,   0,   31,  59,  90,  120, 151,
                                                                 181, 212, 243, 273, 304, 334};

/// What has no day of the year and no weekday: a date with a month outside 1 to 12.
inline constexpr int noDay = -1;

constexpr bool isLeapYear(std::int64_t year) {
    return year % 100 == 0 ? year % 400 == 0 : year % 4 == 0;
}

/// The day of the year, 1 for 1 January, or noDay. The day of the month isn't limited.
constexpr std::int64_t dayInYearOf(std::int64_t year, int month, std::int64_t day) {
    if (month < 1 || month > 12) return noDay;
    std::int64_t const leapDay = month > 2 && isLeapYear(year) ? 1 : 0;
    return daysBeforeMonth[static_cast<unsigned>(month)] + leapDay + day;
}

/// The weekday, 0 for Sunday, or noDay. It is the remainder of a division that truncates, so that
/// it is below 0 where the sum behind it is.
constexpr int weekdayOf(std::int64_t year, int month, std::int64_t day) {
    if (month < 1 || month > 12) return noDay;
    std::int64_t const leapDay = month <= 2 && isLeapYear(year) ? 1 : 0;
    std::int64_t const sum = year + year / 4 - year / 100 + year / 400 +
                             daysBeforeMonth[static_cast<unsigned>(month)] + day + 6 - leapDay;
    return static_cast<int>(sum % 7);
}

/// The number of the week of day `dayInYear` of `year`. Weeks begin on Monday, and the first one
/// has four days of the year at least, as in ISO 8601. A Sunday on 1 January has week 1, though.
constexpr std::int64_t weekInYearOf(std::int64_t year, std::int64_t dayInYear) {
    int const first = weekdayOf(year, 1, 1);
    std::int64_t const week = (dayInYear + first - 2) / 7 + (first <= 4 ? 1 : 0);
    if (week == 0) return first == 5 || (first == 6 && isLeapYear(year - 1)) ? 53 : 52;
    if (week == 53 && weekdayOf(year, 12, 31) < 4) return 1;
    return week;
}

/// The day count of a date.
constexpr std::int64_t dayCountOf(std::int64_t year, int month, std::int64_t day) {
    std::int64_t const before = year - 1;
    return 365 * before + before / 4 - before / 100 + before / 400 + dayInYearOf(year, month, day);
}

/// A date of the calendar.
struct CivilDate {
    std::int64_t year;
    int month;
    std::int64_t day;
};

/// The date of the day `count`. Count 0 is 31 December of year 0; a count below 0 is that day of
/// January of year 1.
constexpr CivilDate dateOf(std::int64_t count) {
    if (count < 0) return {1, 1, count};
    // Years that begin in March have their leap day at the end, and 400 of them are all alike.
    constexpr unsigned daysOfEra = 146097;
    std::uint64_t const days = static_cast<std::uint64_t>(count) + 305;
    auto const day = static_cast<unsigned>(days % daysOfEra);
    unsigned const year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    unsigned const dayOfYear = day - (365 * year + year / 4 - year / 100);
    unsigned const month = (5 * dayOfYear + 2) / 153;  // 0 for March
    bool const next = month >= 10;                     // January and February
    return {static_cast<std::int64_t>(days / daysOfEra * 400 + year + (next ? 1 : 0)),
            static_cast<int>(next ? month - 9 : month + 3), dayOfYear - (153 * month + 2) / 5 + 1};
}

}  // namespace tqlib::detail
