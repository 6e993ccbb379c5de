#pragma once

// Dates and times in columns.

#include <optional>
#include <string>
#include <string_view>

#include "tqlib/tqlib.h"

namespace messwerk {

enum class ColumnKind;

/// A way in which a date or a time is written in a file.
struct MomentForm {
    std::string_view name;     ///< on the command line
    ColumnKind kind;           ///< date or time
    std::string_view pattern;  ///< 9 for a digit, anything else for any character but a digit
    int format;                ///< the library's number of the form
};

/// The form named `name`, or null. It lives as long as the program.
MomentForm const *findMomentForm(std::string_view name);

/// The names of all forms, for a message.
std::string momentFormNames();

/// What a field of that form is, for a message.
std::string describe(MomentForm const &form);

/// What `text` in that form stands for, blanks around it allowed: a date for its day count (1 is 1
/// January of year 1), a time for its seconds since midnight with their fraction. Nothing if the
/// text has another shape or there is no such date from 1900 to 2100, or no such time.
std::optional<double> momentOf(MomentForm const &form, TQString text);

/// The date of a day count as DD.MM.YYYY; the time of that many seconds as HH:MM:SS.
TQString dateText(double days);
TQString timeText(double seconds);

}  // namespace messwerk
