#pragma once

// A calendar date with its weekday, week number and day of the year.
//
//     TQDate date(5, 3, 2004);          // day, month, year
//     date.weekday();                   // 5: a Friday
//     TQString text = date;             // 05.03.2004
//     date.setFormat(6);
//     text = date;                      // 20040305
//     text = date + 30;                 // 20040404
//
// Dates become texts and back in numbered forms; . is the separator of the date, YY the year modulo
// 100 with a blank in front in the forms 1, 3, 4 and 5:
//
//     0  DD.MM.YYYY
//     1  DD.MM.YY    read as 19YY
//     2  MM.DD.YYYY
//     3  DD.MM.YY    read as 20YY below 20, else as 19YY
//     4  MM.DD.YY    read as 19YY
//     5  MM.DD.YY    read as 20YY below 20, else as 19YY
//     6  YYYYMMDD
//     8  YYMMDD      read as 20YY below 20, else as 19YY; as a TQString only
//     9  DDMMYYYY    written only, as a TQString
//
// Reading takes fixed columns and never looks at what stands between them; a year of two digits in
// four columns stays so. A CString or TQString in the forms 0 and 1 is read freely instead: three
// numbers with one of ",./" after the first and the second, 20 characters further at most. A year
// up to 30 counts from 2000 then, one up to 99 from 1900, also if it is the one that was there
// before.
//
// Nothing here fails: a text that is no date gives fields of 0 or unchanged ones, and CheckValid()
// tells. Days are counted from 1 January of year 1, which is day 1; day 0 is the one before it, and
// days below that are days of January of year 1 below 1. Numbers beyond an int keep their low bits.

#include <compare>
#include <cstdint>
#include <istream>
#include <ostream>
#include <tuple>

#include "tqlib/datetime/Calendar.h"
#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/framework/COleDateTime.h"
#include "tqplatform/streams/istream.h"
#include "tqplatform/streams/ostream.h"

/// The date. Its values aren't checked, and every change works out weekday, week and day of the
/// year anew; a month outside 1 to 12 has the weekday -1 and the day of the year -1.
class TQLIB_API TQDate {
  public:
    /// Today in the local zone, in form 0 with the separator `.`.
    TQDate();

    /// The given date, in form 0 with the separator `.`.
    TQDate(int day, int month, int year);

    /// Read `text` in the form `format`; see operator=. What the text doesn't set is 0.
    TQDate(char const *text, int format, char separator);
    TQDate(CString const &text, int format, char separator);

    int year() const { return year_; }
    int month() const { return month_; }
    int day() const { return day_; }

    /// 0 for Sunday to 6 for Saturday.
    int weekday() const { return weekday_; }

    /// The number of the week, as ISO 8601 has it but for 1 January on a Sunday: that has week 1.
    int weekInYear() const { return weekInYear_; }

    /// 1 for 1 January to 366; days that the month doesn't have count on.
    int dayInYear() const { return dayInYear_; }

    /// Writes day, month and year, in this order.
    void split(int *day, int *month, int *year) const;

    /// Sets the date. Form and separator stay.
    void set(int day, int month, int year);

    /// Sets the date to today in the local zone. Form and separator stay.
    void now();

    /// The number of the text form, and the separator in it.
    int getFormat() const { return format_; }
    char getSeparator() const { return separator_; }

    /// Replace form or separator and give the one before. A number without a form gives empty
    /// texts.
    int setFormat(int format);
    char setSeparator(char separator);

    /// 1 for a year from 1900 to 2100, a month from 1 to 12 and a day that this month has; February
    /// has 29 in every year. Else 0.
    int CheckValid() const;

    /// 366 in a leap year, else 365.
    int daysInYear() const { return tqlib::detail::isLeapYear(year_) ? 366 : 365; }

    /// The day count of a date, of which the year comes first, or of this date. A month outside 1
    /// to 12 gives the count of 30 December of the year before.
    static long numberofdays(int year, int month, int day) {
        return static_cast<long>(tqlib::detail::dayCountOf(year, month, day));
    }
    long numberofdays() const { return numberofdays(year_, month_, day_); }
    operator int() const { return static_cast<int>(numberofdays()); }
    operator long() const { return numberofdays(); }

    /// The date of the day count `days`. If `*month` holds more than 12 only the year is written.
    /// Day 0 is 31 December of year 0; a count below 0 gives that day of January of year 1.
    static void daysToVariables(long days, int *year, int *month, int *day);

    /// Moves the date by months and years, then by days. A day that the new month doesn't have
    /// counts on into the following one: 31 January and a month make 3 March, or 2 March.
    void add(int days, int months, int years);

    /// The text in the current form, empty if there is none. The pointer is good until the next
    /// such conversion of any date in the process; one thread at a time may use it.
    operator char *() const;
    operator TQString() const;

    /// Read a text in the current form; see above. Null counts as empty. In a form that isn't read
    /// the text sets all three values to 0, a TQString none.
    TQDate &operator=(char const *text);
    TQDate &operator=(CString const &text);

    /// Takes the date over; the separator becomes a point, the form stays. A moment that isn't
    /// valid gives -1 for year, month and day.
    TQDate &operator=(COleDateTime const &moment);

    TQDate(TQDate const &) = default;
    TQDate &operator=(TQDate const &) = default;

    /// Compare year, month and day; 1 or 0.
    int operator==(TQDate const &other) const { return std::is_eq(compare(other)); }
    int operator!=(TQDate const &other) const { return std::is_neq(compare(other)); }
    int operator<(TQDate const &other) const { return std::is_lt(compare(other)); }
    int operator>(TQDate const &other) const { return std::is_gt(compare(other)); }
    int operator<=(TQDate const &other) const { return std::is_lteq(compare(other)); }
    int operator>=(TQDate const &other) const { return std::is_gteq(compare(other)); }

    /// The date of the sum or difference of two day counts. A difference of two dates converts to
    /// the number of days between them; that of equal dates is 31 December of year 0 and converts
    /// to 1. Compare it as a long. The result has the form and separator of this date, but a sum of
    /// two dates form 0 and `.`. Day and month stay if the month is above 12.
    TQDate operator+(TQDate const &other) const;
    TQDate operator-(TQDate const &other) const;
    TQDate operator+(long days) const;
    TQDate operator-(long days) const;
    TQDate operator+(int days) const { return *this + static_cast<long>(days); }
    TQDate operator-(int days) const { return *this - static_cast<long>(days); }

    /// Writes the text of the date; empty in the forms 8 and 9 on a classic stream.
    friend TQLIB_API classic::ostream &operator<<(classic::ostream &stream, TQDate const &date);
    friend std::ostream &operator<<(std::ostream &stream, TQDate const &date) {
        return stream << date.operator TQString();
    }

    /// Reads one word of at most 11 characters in the current form of `date`, which stays as it is
    /// if there is no word.
    friend TQLIB_API classic::istream &operator>>(classic::istream &stream, TQDate &date);
    friend std::istream &operator>>(std::istream &stream, TQDate &date) {
        char word[12];
        if (stream >> word) date = word;
        return stream;
    }

  private:
    TQLIB_INTERNAL TQDate(int format, char separator);
    TQLIB_INTERNAL void readFreely(char const *text);
    TQLIB_INTERNAL void setDayCount(std::int64_t days);
    TQLIB_INTERNAL void setDerived();

    std::strong_ordering compare(TQDate const &other) const {
        return std::tie(year_, month_, day_) <=> std::tie(other.year_, other.month_, other.day_);
    }

    int year_;
    int month_;
    int day_;
    int weekday_;
    int weekInYear_;
    int dayInYear_;
    int format_;
    char separator_;
};
