#pragma once

// Between which values the numbers of a column have to be.

#include <optional>
#include <string>
#include <vector>

#include "Column.h"
#include "Names.h"

namespace messwerk {

struct Limit {
    std::string column;                     ///< in capitals
    std::optional<double> lowest, highest;  ///< nothing where there is no limit
};

/// The limit that `text` means: NAME = LOWEST:HIGHEST, of which one may be missing. Throws
/// UsageError.
Limit parseLimit(std::string const &text);

/// Throws UsageError unless `names` has the limit's column, with numbers.
void checkLimit(Limit const &limit, Names const &names);

/// The limits of a run.
class Limits {
  public:
    Limits(std::vector<Limit> const &limits, std::vector<Column> const &columns);

    /// Why the values of `row` aren't within the limits; nothing if they are.
    std::optional<std::string> check(Row const &row) const;

  private:
    struct Check {
        std::size_t column;
        std::string name;
        double lowest, highest;
    };

    std::vector<Check> checks_;
};

}  // namespace messwerk
