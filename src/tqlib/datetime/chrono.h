#pragma once

// Dates of the library and of the standard library.
//
//     TQDate date = fromSysDays(2004y / March / 5);
//     std::chrono::year_month_day ymd = toSysDays(date + 30);

#include <chrono>

#include "tqlib/datetime/TQDate.h"

/// The day of `date`, which is one of the calendar with a year from -32767 to 32767. A
/// std::chrono::year_month_day can be made of it.
inline std::chrono::sys_days toSysDays(TQDate const &date) {
    return std::chrono::year(date.year()) / date.month() / date.day();
}

/// The date of `days`, with a year from -32767 to 32767, which a std::chrono::year_month_day
/// converts to, in form 0 with the separator `.`.
inline TQDate fromSysDays(std::chrono::sys_days days) {
    std::chrono::year_month_day const date = days;
    return TQDate(static_cast<int>(static_cast<unsigned>(date.day())),
                  static_cast<int>(static_cast<unsigned>(date.month())),
                  static_cast<int>(date.year()));
}
