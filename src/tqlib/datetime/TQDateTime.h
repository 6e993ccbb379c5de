#pragma once

// A date and a time of day in one value.
//
//     TQDateTime moment("5.3.2004 07:05");
//     TQString text = moment;                        // 05.03.2004 07:05
//     moment = moment + TQTime(20, 0, 0, 0);
//     text = moment;                                 // 06.03.2004 03:05
//
// Texts are those of the two parts. setFormat(int) sets both forms at once; - is the character
// between date and time, a blank unless set:
//
//     0      DD.MM.YYYY-HH:MM
//     1      YYMMDDHHMM
//     2      DDMMYYYY    HHMMSS    four blanks, whatever the character
//     other  DD.MM.YYYY-HH:MM:SS   and so before any setFormat()

#include <ctime>
#include <ostream>

#include "tqlib/datetime/TQDate.h"
#include "tqlib/datetime/TQTime.h"
#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"

/// The moment. It is valid once it was set from something, whatever that held. Nothing here fails.
class TQLIB_API TQDateTime {
  public:
    /// The present moment of the local zone, but not valid.
    TQDateTime();

    /// The local date and time of the time_t value `moment`; the present moment, not valid, if the
    /// system can't tell it.
    TQDateTime(long moment);

    /// The date and time of `*moment`; null gives what TQDateTime() gives.
    TQDateTime(std::tm const *moment);

    /// That date at midnight; today at that time; that date at that time.
    TQDateTime(TQDate const &date);
    TQDateTime(TQTime const &time);
    TQDateTime(TQDate const &date, TQTime const &time);

    /// Reads a date in its free form and, behind blanks, a time HH:MM, which is 00:00 if the text
    /// ends with the date. A blank ahead of the date makes it empty. Date and time are in form 0.
    TQDateTime(TQString const &text);

    /// Copies date and time with their forms. Form and character between them aren't taken over,
    /// and a copy of a moment that isn't valid is the present one.
    TQDateTime(TQDateTime const &other);

    /// Assigns date, time, their forms and the validity. Form and character between them stay.
    TQDateTime &operator=(TQDateTime const &other);

    /// Sets the present moment, which is valid.
    void now();

    /// See TQDate and TQTime.
    int year() const { return date_.year(); }
    int month() const { return date_.month(); }
    int day() const { return date_.day(); }
    int weekday() const { return date_.weekday(); }
    int hour() const { return time_.hour(); }
    int minute() const { return time_.minute(); }

    /// Copies of the parts.
    TQDate GetDate() const { return date_; }
    TQTime GetTime() const { return time_; }

    /// Assign a part with its form. The moment is valid then.
    void SetDate(TQDate const &date);
    void SetTime(TQTime const &time);

    /// 1 if the moment was set from something, else 0.
    int isValid() const { return valid_; }

    /// Always 1: nothing is checked.
    int CheckValid() const { return 1; }

    /// Set the joint form, or those of the parts alone.
    void setFormat(int format);
    void setFormat(int dateFormat, int timeFormat);

    /// Sets the character between date and time; 0 is none. (Trenner is German for separator.)
    void setTrenner(char trenner) { trenner_ = trenner; }

    /// The text in the current form.
    operator TQString() const;

    /// Compare dates, then times; 1 or 0. Validity and forms play no part.
    int operator==(TQDateTime const &other) const {
        return date_ == other.date_ && time_ == other.time_;
    }
    int operator!=(TQDateTime const &other) const { return !(*this == other); }
    int operator<(TQDateTime const &other) const {
        return date_ < other.date_ || (date_ == other.date_ && time_ < other.time_);
    }
    int operator>(TQDateTime const &other) const { return other < *this; }
    int operator<=(TQDateTime const &other) const { return *this == other || *this < other; }
    int operator>=(TQDateTime const &other) const { return *this == other || *this > other; }

    /// Add or subtract the parts. A sum of two moments carries the days that the time runs over
    /// into the date; a difference leaves them in the time's overflow. The result is not valid,
    /// with the present moment in it, if an operand isn't.
    TQDateTime operator+(TQDateTime const &other) const;
    TQDateTime operator-(TQDateTime const &other) const;

    /// Add or subtract the day count of a date; the time stays.
    TQDateTime operator+(TQDate const &date) const;
    TQDateTime operator-(TQDate const &date) const;

    /// Add or subtract the seconds of a time; the date moves with the days that this runs over or
    /// under.
    TQDateTime operator+(TQTime const &time) const;
    TQDateTime operator-(TQTime const &time) const;

    /// Writes the text of the moment.
    friend TQLIB_API classic::ostream &operator<<(classic::ostream &stream,
                                                  TQDateTime const &moment);
    friend std::ostream &operator<<(std::ostream &stream, TQDateTime const &moment) {
        return stream << moment.operator TQString();
    }

  private:
    TQDate date_;
    TQTime time_;
    int valid_;
    char trenner_;
    int format_;
};
