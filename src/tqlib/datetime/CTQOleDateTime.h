#pragma once

#include "tqlib/datetime/TQDate.h"
#include "tqlib/datetime/TQDateTime.h"
#include "tqlib/datetime/TQTime.h"
#include "tqlib/foundation/Export.h"
#include "tqplatform/framework/COleDateTime.h"

/// The framework's moment, made from the library's dates and times and given back as these.
/// Thousandths are dropped on the way in and 0 on the way out. Values out of the framework's range,
/// such as a time without a date, make a moment that isn't valid, whose parts are all -1.
///
///     CTQOleDateTime moment(TQDate(5, 3, 2004), TQTime(7, 5, 9, 0));
///     moment.GetDate() == TQDate(5, 3, 2004);
class TQLIB_API CTQOleDateTime : public COleDateTime {
  public:
    /// The date at midnight; the time of no date; date and time.
    CTQOleDateTime(TQDate const &date);
    CTQOleDateTime(TQTime const &time);
    CTQOleDateTime(TQDate const &date, TQTime const &time);
    CTQOleDateTime(TQDateTime const &moment);
    CTQOleDateTime(int year, int month, int day, int hour, int minute, int second);

    /// The parts.
    TQDate GetDate() const { return TQDate(GetDay(), GetMonth(), GetYear()); }
    TQTime GetTime() const { return TQTime(GetHour(), GetMinute(), GetSecond(), 0); }
};
