#pragma once

// Columns of the file that is read and of the one that is written, and a row of their values.

#include <string>
#include <string_view>
#include <vector>

#include "Moments.h"
#include "tqlib/tqlib.h"

namespace messwerk {

/// What a column holds.
enum class ColumnKind {
    Number,
    Date,  ///< in expressions its day count
    Time,  ///< in expressions its seconds since midnight
    Text,
    Omitted,  ///< read over and not written
};

/// True for what expressions can use.
constexpr bool hasNumber(ColumnKind kind) {
    return kind == ColumnKind::Number || kind == ColumnKind::Date || kind == ColumnKind::Time;
}

struct Column {
    std::string name;  ///< as the user wrote it; empty if it is omitted
    ColumnKind kind = ColumnKind::Number;
    MomentForm const *form = nullptr;  ///< of a date or time
};

/// A column to compute.
struct Formula {
    std::string name;
    std::string text;  ///< in the calculator's language
};

/// The value of one column in the row at hand.
struct Cell {
    double number = 0.0;  ///< of a column of numbers, dates or times
    TQString text;        ///< what the file has
};

/// A cell for each column. A row is made once and filled again and again: expressions hold the
/// addresses of its numbers.
using Row = std::vector<Cell>;

/// The column that `description` means: `name` and `name:number` are numbers, `name:text` is a
/// text, `-` is left out; the forms of dates and times have names of their own. Throws UsageError
/// for another kind.
Column parseColumn(std::string_view description);

}  // namespace messwerk
