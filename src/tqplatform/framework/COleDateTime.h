#pragma once

#include "tqplatform/runtime/Export.h"

/// A moment of the calendar, held as a number of days since 30 December 1899 and a status. The
/// fraction is the time of the day, counted forward within the day also before that date: -1.25 is
/// 29 December 1899, 6 o'clock. Years go from 100 to 9999; whole seconds are kept exactly.
class TQPLATFORM_API COleDateTime {
  public:
    enum DateTimeStatus { valid = 0, invalid = 1, null = 2 };

    /// 30 December 1899, midnight.
    COleDateTime() = default;

    /// Sets the moment. The result is 0, or 1 if a value is out of range: the status is invalid
    /// then, and the value 0.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);

    /// Whether the value counts.
    DateTimeStatus GetStatus() const { return m_status; }

    /// The parts of the moment; -1 if the status isn't valid.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;

    double m_dt = 0.0;                ///< days since 30 December 1899
    DateTimeStatus m_status = valid;  ///< whether m_dt counts
};
