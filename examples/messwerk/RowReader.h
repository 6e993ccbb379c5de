#pragma once

// Reads the rows of the input, strictly. The library's reads are lenient: a number may have
// anything behind it, an empty field is 0, an empty first field isn't seen, quotes protect nothing.
// A line on which that would matter is refused with a reason.

#include <optional>
#include <string>
#include <vector>

#include "Column.h"
#include "LineReader.h"
#include "Options.h"

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

    long lineNumber() const { return lines_.number(); }
    long blankLines() const { return blankLines_; }

    /// What part of the file has been read, 0 to 1; nothing if its size isn't known.
    std::optional<double> partRead();

  private:
    std::string formFault(char const *line);
    std::string countFault(char const *line);
    std::string readField(std::size_t index);

    std::vector<Column> columns_;
    char separator_;
    Row &row_;
    LineReader lines_;
    LineKind kind_ = LineKind::End;
    bool lastIsEmpty_ = false;  ///< the line ends with the separator of a last field without text
    long blankLines_ = 0;
};

}  // namespace messwerk
