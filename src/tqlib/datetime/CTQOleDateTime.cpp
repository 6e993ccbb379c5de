#include "tqlib/datetime/CTQOleDateTime.h"

CTQOleDateTime::CTQOleDateTime(TQDate const &date)
    : CTQOleDateTime(date.year(), date.month(), date.day(), 0, 0, 0) {}

CTQOleDateTime::CTQOleDateTime(TQTime const &time)
    : CTQOleDateTime(0, 0, 0, time.hour(), time.minute(), time.second()) {}

CTQOleDateTime::CTQOleDateTime(TQDate const &date, TQTime const &time)
    : CTQOleDateTime(date.year(), date.month(), date.day(), time.hour(), time.minute(),
                     time.second()) {}

CTQOleDateTime::CTQOleDateTime(TQDateTime const &moment)
    : CTQOleDateTime(moment.GetDate(), moment.GetTime()) {}

CTQOleDateTime::CTQOleDateTime(int year, int month, int day, int hour, int minute, int second) {
    SetDateTime(year, month, day, hour, minute, second);
}
