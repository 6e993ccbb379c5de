#pragma once

// The file of results: a line of names, then the rows.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Column.h"
#include "Options.h"
#include "ResultForm.h"
#include "SafeFile.h"

namespace messwerk {

/// Writes the result. All but the destructor throw RunError when the file can't take it; the file
/// that was there before stays as it was unless finish() succeeds. A row has a cell for each of
/// resultColumns(options).
class ResultFile {
  public:
    /// Opens the output and writes the names of the columns.
    explicit ResultFile(Options const &options);

    /// Why the form of the result can't hold `row`, or nothing.
    std::optional<std::string> fault(Row const &row) const;

    void write(Row const &row);

    /// Closes the file and puts it in its place.
    void finish();

  private:
    template <typename WriteField>
    void writeLine(WriteField writeField);
    void check() const;

    std::vector<Column> columns_;
    std::string path_;
    SafeFile place_;
    std::unique_ptr<ResultForm> form_;
};

}  // namespace messwerk
