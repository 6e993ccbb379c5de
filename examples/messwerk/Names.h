#pragma once

// The names that columns and results have. Names differ by more than the case of their letters: the
// calculator knows capitals only.

#include <map>
#include <optional>
#include <string>

#include "Column.h"

namespace messwerk {

class Names {
  public:
    /// Names for a file with this separator, which no name may hold.
    explicit Names(char separator) : separator_(separator) {}

    /// Takes up the name of a column. Throws UsageError for one that expressions couldn't use, or
    /// that the result's first line couldn't hold, or that is taken.
    void add(Column const &column);

    /// What the column named `word` holds, in any case; nothing if there is no such column.
    std::optional<ColumnKind> kindOf(std::string const &word) const;

    /// All names, in capitals.
    std::map<std::string, ColumnKind> const &all() const { return names_; }

  private:
    char separator_;
    std::map<std::string, ColumnKind> names_;
};

}  // namespace messwerk
