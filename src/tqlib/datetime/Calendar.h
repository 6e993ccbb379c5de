#pragma once

// The Gregorian calendar, carried backward without a limit: years, months and days as numbers, and
// a running day count whose day 1 is 1 January of year 1. Everything is computed in 64 bits, so
// that no field of 32 bits overflows; where it can't, in 32, which is faster.

#include <array>
#include <concepts>
#include <cstdint>

namespace tqlib::detail {

/// The days of a common year before a month, and those of the month; month 1 has index 1.
inline constexpr std::array<std::int32_t, 13> daysBeforeMonth = {0,   0,   31,  59,  90,  120, 151,
                                                                 181, 212, 243, 273, 304, 334};

/// What has no day of the year and no weekday: a date with a month outside 1 to 12.
inline constexpr int noDay = -1;

/// Without a jump, like all of the way of common dates: which of them are in a leap year or before
/// March is hard to guess.
template <std::signed_integral Year>
constexpr bool isLeapYear(Year year) {
    return (year % 4 == 0) & ((year % 25 != 0) | (year % 16 == 0));
}

/// The day of the year, 1 for 1 January, or noDay. The day of the month isn't limited.
constexpr std::int64_t dayInYearOf(std::int64_t year, int month, std::int64_t day) {
    if (month < 1 || month > 12) return noDay;
    std::int64_t const leapDay = month > 2 && isLeapYear(year) ? 1 : 0;
    return daysBeforeMonth[static_cast<unsigned>(month)] + leapDay + day;
}

/// The weekday, 0 for Sunday to 6, or noDay.
constexpr int weekdayOf(std::int64_t year, int month, std::int64_t day) {
    if (month < 1 || month > 12) return noDay;
    std::int64_t const leapDay = month <= 2 && isLeapYear(year) ? 1 : 0;
    std::int64_t const sum = year + year / 4 - year / 100 + year / 400 +
                             daysBeforeMonth[static_cast<unsigned>(month)] + day + 6 - leapDay;
    return static_cast<int>((sum % 7 + 7) % 7);
}

/// What is worked out of a date.
struct DerivedFields {
    std::int32_t dayInYear;
    std::int32_t weekday;
    std::int32_t weekInYear;
};

/// The number of the week of day `dayInYear` of `year`, whose 1 January has the weekday `first`.
/// Weeks begin on Monday, and the first one has four days of the year at least, as in ISO 8601. A
/// Sunday on 1 January has week 1, though.
template <std::signed_integral Number>
constexpr Number weekInYearOf(Number year, Number dayInYear, int first) {
    Number const week = (dayInYear + first - 2) / 7 + (first <= 4 ? 1 : 0);
    if (week == 0) return first == 5 || (first == 6 && isLeapYear(year - 1)) ? 53 : 52;
    return week == 53 && weekdayOf(year, 12, 31) < 4 ? 1 : week;
}

/// A seventh of a small number, below 13107: days of a year and a little more.
constexpr int seventhOf(int small) {
    return static_cast<int>(static_cast<std::uint32_t>(small) * 9363 >> 16);
}

/// What the days of a year have in common.
struct YearTraits {
    std::uint8_t first;    // weekday of 1 January
    std::uint8_t leapDay;  // 1 in a leap year
    std::uint8_t shift;    // a day of the year and this make seven times its week and a rest
};

/// The traits of the years of an era: 400 years, after which the weekdays return.
inline constexpr auto traitsOfEra = [] {
    std::array<YearTraits, 401> traits{};
    for (int year = 0; year <= 400; ++year) {
        auto const first = static_cast<std::uint8_t>(weekdayOf(400 + year, 1, 1));
        auto const shift = static_cast<std::uint8_t>(first <= 4 ? first + 5 : first - 2);
        traits[static_cast<unsigned>(year)] = {first, isLeapYear(year), shift};
    }
    return traits;
}();

/// weekInYearOf() for a year from year 1 on with the traits `traits`. All but the first and last
/// days of a year go without a jump.
constexpr std::int32_t weekOfDay(std::int32_t year, std::int32_t dayInYear,
                                 YearTraits const &traits) {
    int const week = seventhOf(dayInYear + traits.shift);
    if (static_cast<std::uint32_t>(week) - 1 < 52) return week;
    return weekInYearOf(year, dayInYear, traits.first);
}

/// The derived fields of any date.
[[gnu::noinline]] constexpr DerivedFields deriveAnyFields(std::int64_t year, int month,
                                                          std::int64_t day) {
    std::int64_t const dayInYear = dayInYearOf(year, month, day);
    return {static_cast<std::int32_t>(dayInYear), weekdayOf(year, month, day),
            static_cast<std::int32_t>(weekInYearOf(year, dayInYear, weekdayOf(year, 1, 1)))};
}

/// The same; a date of a calendar, as nearly all are, takes a shorter way in 32 bits. It is put
/// into its caller, because results that go by memory cost more than the calculation.
[[gnu::always_inline]] constexpr DerivedFields deriveFields(std::int32_t year, int month, int day) {
    bool const isDate = (year >= 1) & (static_cast<unsigned>(month) - 1 < 12) &
                        (static_cast<unsigned>(day) - 1 < 31);
    if (!isDate) return deriveAnyFields(year, month, day);
    YearTraits const &traits = traitsOfEra[static_cast<std::uint32_t>(year) % 400];
    int const leapDay = traits.leapDay & static_cast<int>(month > 2);
    int const dayInYear = daysBeforeMonth[static_cast<unsigned>(month)] + leapDay + day;
    int const days = traits.first + dayInYear - 1;
    return {dayInYear, days - 7 * seventhOf(days), weekOfDay(year, dayInYear, traits)};
}

/// The day count of a date.
constexpr std::int64_t dayCountOf(std::int64_t year, int month, std::int64_t day) {
    if (year >= 1 && year <= INT32_MAX && month >= 1 && month <= 12) {
        // Years that begin in March have their leap day at the end.
        constexpr std::array<std::int16_t, 13> beforeMonth = {
            0, 0, 31, -306, -275, -245, -214, -184, -153, -122, -92, -61, -31};
        auto const years = static_cast<std::uint32_t>(year) - (month <= 2 ? 1 : 0);
        std::uint32_t const centuries = years / 100;
        return std::int64_t{365} * years + years / 4 - centuries + centuries / 4 +
               beforeMonth[static_cast<unsigned>(month)] + day;
    }
    std::int64_t const before = year - 1;
    return 365 * before + before / 4 - before / 100 + before / 400 + dayInYearOf(year, month, day);
}

/// A date of the calendar, its day of the year and the index of its year in traitsOfEra.
struct CivilDate {
    std::int64_t year;
    int month;
    std::int64_t day;
    int dayInYear;
    std::uint32_t yearOfEra;
};

/// The date of the day `count`. Count 0 is 31 December of year 0; a count below 0 is that day of
/// January of year 1, without a day of the year.
[[gnu::always_inline]] constexpr CivilDate dateOf(std::int64_t count) {
    if (count < 0) return {1, 1, count, noDay, 1};
    // Years that begin in March have their leap day at the end, and 400 of them are all alike.
    constexpr unsigned daysOfEra = 146097, daysFromMarch = 306;
    std::uint64_t const days = static_cast<std::uint64_t>(count) + daysFromMarch - 1;
    auto const era = static_cast<std::int64_t>(days / daysOfEra);
    std::uint32_t const quarters = 4 * static_cast<std::uint32_t>(days % daysOfEra) + 3;
    std::uint32_t const century = quarters / daysOfEra;
    // Products in place of divisions by 1461 quarters of a day in a year, and by 30.6 days in a
    // month: C. Neri, L. Schneider, Euclidean affine functions, 2022.
    constexpr std::uint32_t perYear = 2939745, perMonth = 2141, beforeMarch = 197913;
    std::uint64_t const years = std::uint64_t{perYear} * (quarters % daysOfEra | 3);
    std::uint32_t const dayOfYear = static_cast<std::uint32_t>(years) / perYear / 4;
    std::uint32_t const months = perMonth * dayOfYear + beforeMarch;
    // January and February belong to the next year.
    auto const next = static_cast<std::uint32_t>(dayOfYear >= daysFromMarch);
    std::uint32_t const year = 100 * century + static_cast<std::uint32_t>(years >> 32) + next;
    unsigned const leapDay = traitsOfEra[year].leapDay;
    auto const dayInYear = static_cast<int>(dayOfYear + 60 + leapDay - next * (365 + leapDay));
    return {400 * era + year, static_cast<int>((months >> 16) - 12 * next),
            (months & 0xFFFF) / perMonth + 1, dayInYear, year};
}

}  // namespace tqlib::detail
