#pragma once

// Computes the columns that the user asks for, row by row.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "Column.h"
#include "Options.h"

namespace messwerk {

/// The expressions of a run, which have passed checkFormula(). They see the columns as variables.
/// The calculator's registers last from row to row; a row that is refused leaves no trace in them.
/// Not for copying: the calculator points at what this object and the row hold.
class Expressions {
  public:
    /// `row` has a cell for each of resultColumns(options) and must outlive this object.
    Expressions(Options const &options, Row &row);
    Expressions(Expressions const &) = delete;
    Expressions &operator=(Expressions const &) = delete;

    /// Computes the results of the row at hand and puts them into their cells. The result is the
    /// reason why that can't be, or nothing. accept() or refuse() has to follow.
    std::optional<std::string> evaluate();

    /// Keep what the row has left in the registers, or take it back.
    void accept();
    void refuse();

  private:
    struct Result {
        std::string name;
        std::string program;
        double *value;
    };

    std::vector<Result> results_;
    std::vector<std::string> variables_;  ///< names in capitals
    std::array<double, 4> registers_{};   ///< as the last row that wasn't refused left them
    TQHpCalculator calculator_;
};

}  // namespace messwerk
