#pragma once

// A time of day, to the thousandth of a second.
//
//     TQTime time(23, 59, 59, 0);
//     time = time + 2;
//     time.overflow();             // 1: it is 00:00:01 of the following day
//     TQString text = time;        // 00:00:01
//
// Arithmetic counts whole seconds and wraps at midnight; the days that it ran over or under stand
// in overflow(). Times become texts and back in numbered forms; : is the separator of the time:
//
//     0  HH:MM
//     1  HH:MM:SS
//     2  HH:MM:SS:TTT
//     3  HHMMSSTTT
//     4  HHMM          as a TQString only
//     5  HHMMSS        written only, as a TQString
//
// Reading takes fixed columns and never looks at what stands between them. Nothing here fails: a
// text that is no time gives 0 where it has no digits, and no number is checked.

#include <compare>
#include <cstdint>
#include <istream>
#include <ostream>
#include <tuple>

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/streams/istream.h"
#include "tqplatform/streams/ostream.h"

/// The time. Hour 0 to 23, minute and second 0 to 59 after arithmetic; other values may be set and
/// stay as they are.
class TQLIB_API TQTime {
  public:
    /// The present time of the local zone, in form 1 with the separator `:`.
    TQTime();

    /// The given time, in form 1 with the separator `:`.
    TQTime(int hour, int minute, int second, int thousands);

    /// The time that many seconds after midnight, whose sign is dropped; days are in overflow().
    /// The conversions to int and long give all of the seconds until the time changes or is copied.
    TQTime(long seconds);

    /// Reads `text` in the form `format` with the separator `:`. What the text doesn't set is 0.
    TQTime(char const *text, int format);

    /// Copy every field; the seconds are worked out from the fields.
    TQTime(TQTime const &other);
    TQTime &operator=(TQTime const &other);

    int hour() const { return hour_; }
    int minute() const { return minute_; }
    int second() const { return second_; }

    /// Thousandths of a second.
    int thousands() const { return thousands_; }

    /// Days that the last arithmetic ran past midnight: forward above 0, backward below. Days
    /// beyond an int keep their low bits.
    int overflow() const { return overflow_; }

    /// Writes the four values.
    void split(int *hour, int *minute, int *second, int *thousands) const;

    /// Sets the time; overflow becomes 0. Form and separator stay.
    void set(int hour, int minute, int second, int thousands);

    /// Sets the time to the present second of the local zone. Overflow, form and separator stay.
    void now();

    /// The seconds since midnight, worked out from hour, minute and second.
    long getSeconds() const { return static_cast<long>(secondsOfFields()); }

    /// The seconds as kept beside the fields; see TQTime(long).
    operator int() const { return static_cast<int>(seconds_); }
    operator long() const { return seconds_; }

    /// The number of the text form, and the separator in it.
    int getFormat() const { return format_; }
    char getSeparator() const { return separator_; }

    /// Replace form or separator and give the one before. A number without a form gives empty
    /// texts.
    int setFormat(int format);
    char setSeparator(char separator);

    /// Always 1: times are not checked.
    int CheckValid() const { return 1; }

    /// Adds hours, minutes and seconds as operator+ does, with the overflow of this addition. The
    /// thousandths become the remainder of their sum divided by 1000, with the sign of the sum;
    /// nothing carries into the seconds.
    void add(int hours, int minutes, int seconds, int thousands);

    /// The text in the current form, empty if there is none. The pointer is good until the next
    /// such conversion of any time in the process; one thread at a time may use it.
    operator char *() const;
    operator TQString() const;

    /// Read a text in the current form. Null counts as empty. A form without seconds or thousandths
    /// sets them to 0, and overflow stays. In a form that isn't read hour and minute become 0, and
    /// seconds and thousandths stay.
    TQTime &operator=(char const *text);
    TQTime &operator=(CString const &text);

    /// Compare hour, minute, second and thousandths; 1 or 0.
    int operator==(TQTime const &other) const { return std::is_eq(compare(other)); }
    int operator!=(TQTime const &other) const { return std::is_neq(compare(other)); }
    int operator<(TQTime const &other) const { return std::is_lt(compare(other)); }
    int operator>(TQTime const &other) const { return std::is_gt(compare(other)); }
    int operator<=(TQTime const &other) const { return std::is_lteq(compare(other)); }
    int operator>=(TQTime const &other) const { return std::is_gteq(compare(other)); }

    /// Add or subtract seconds: those of the other time, all of them after TQTime(long), or a
    /// number. The result has the thousandths, form and separator of this time, and the overflow of
    /// this operation alone.
    TQTime operator+(TQTime const &other) const;
    TQTime operator-(TQTime const &other) const;
    TQTime operator+(long seconds) const;
    TQTime operator-(long seconds) const;
    TQTime operator+(int seconds) const { return *this + static_cast<long>(seconds); }
    TQTime operator-(int seconds) const { return *this - static_cast<long>(seconds); }

    /// Writes the text of the time; empty in the forms 4 and 5 on a classic stream.
    friend TQLIB_API classic::ostream &operator<<(classic::ostream &stream, TQTime const &time);
    friend std::ostream &operator<<(std::ostream &stream, TQTime const &time) {
        return stream << time.operator TQString();
    }

    /// Reads one word of at most 19 characters in the current form of `time`, which stays as it is
    /// if there is no word.
    friend TQLIB_API classic::istream &operator>>(classic::istream &stream, TQTime &time);
    friend std::istream &operator>>(std::istream &stream, TQTime &time) {
        char word[20];
        if (stream >> word) time = word;
        return stream;
    }

  private:
    TQLIB_INTERNAL void read(char const *text, bool isString);
    TQLIB_INTERNAL void setSecond(int second, std::int64_t days);
    TQLIB_INTERNAL void setTotal(std::int64_t seconds);
    TQLIB_INTERNAL TQTime moved(std::int64_t seconds) const;

    std::int64_t secondsOfFields() const {
        return 3600 * std::int64_t{hour_} + 60 * std::int64_t{minute_} + second_;
    }

    std::strong_ordering compare(TQTime const &other) const {
        return std::tie(hour_, minute_, second_, thousands_) <=>
               std::tie(other.hour_, other.minute_, other.second_, other.thousands_);
    }

    int hour_;
    int minute_;
    int second_;
    int thousands_;
    int overflow_;
    int format_;
    long seconds_;
    char separator_;
};
