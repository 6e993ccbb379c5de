#pragma once

// Reads the rows of the input, strictly: a number may have nothing behind it, and a field of
// numbers may not be empty. A line that isn't so is refused with a reason.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Column.h"
#include "Options.h"
#include "RowSource.h"

namespace messwerk {

class RowReader {
  public:
    /// Opens the input and passes over its header. The rows go into `row`, which must have a cell
    /// for each column of the input and must outlive the reader. Throws RunError.
    RowReader(Options const &options, Row &row);

    /// Goes to the next line that isn't blank; false at the end of the file. Throws RunError.
    bool fetch();

    /// Takes the line at hand into the row. The result is the reason why that can't be, after which
    /// the row's values mean nothing, or nothing.
    std::optional<std::string> readRow();

    long lineNumber() const { return source_->number(); }
    long blankLines() const { return blankLines_; }

    /// What part of the file has been read, 0 to 1; nothing if its size isn't known.
    std::optional<double> partRead();

  private:
    std::string formFault();
    std::string readField(std::size_t index);

    std::vector<Column> columns_;
    Row &row_;
    std::unique_ptr<RowSource> source_;
    LineKind kind_ = LineKind::End;
    long blankLines_ = 0;
};

}  // namespace messwerk
