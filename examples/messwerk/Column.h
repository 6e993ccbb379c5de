#pragma once

// Columns of the file that is read and of the one that is written, and a row of their values.

#include <string>
#include <string_view>
#include <vector>

#include "tqlib/tqlib.h"

namespace messwerk {

/// What a column holds. A new kind needs a row in columnKind(), a way in (RowReader), a way out
/// (ResultFile) and, if expressions are to use it, a number (Expressions).
enum class ColumnKind {
    Number,
    Text,
    Omitted,  ///< read over and not written
};

struct Column {
    std::string name;  ///< as the user wrote it; empty if it is omitted
    ColumnKind kind = ColumnKind::Number;
};

/// A column to compute.
struct Formula {
    std::string name;
    std::string text;  ///< in the calculator's language
};

/// The value of one column in the row at hand.
struct Cell {
    double number = 0.0;  ///< of a number column
    TQString text;        ///< what the file has
};

/// A cell for each column. A row is made once and filled again and again: expressions hold the
/// addresses of its numbers.
using Row = std::vector<Cell>;

/// The column that `description` means: `name` and `name:number` are numbers, `name:text` is a
/// text, `-` is left out. Throws UsageError for another kind.
Column parseColumn(std::string_view description);

}  // namespace messwerk
