#pragma once

// Draws columns of the result as lines over another column.

#include <string>
#include <vector>

#include "Canvas.h"
#include "Column.h"
#include "Options.h"

namespace messwerk {

/// Gathers rows and draws them in the end. Without a file to plot to it does nothing.
class Plot {
  public:
    /// The columns are those of resultColumns(options).
    explicit Plot(Options const &options);

    /// Takes up a row that is part of the result.
    void add(Row const &row);

    /// Draws the rows into the file, a BMP picture, which is replaced when it is complete. Throws
    /// RunError if it can't be written.
    void finish() const;

  private:
    struct Series {
        std::size_t column;
        std::string name;            ///< Windows-1252
        std::vector<double> values;  ///< one for each row
    };

    void drawLegend(Canvas &canvas) const;

    PlotOptions options_;
    Series across_;
    bool acrossIsDate_ = false;
    std::vector<Series> up_;
};

/// Throws UsageError unless the plot's columns are in `columns` and hold numbers.
void checkPlot(PlotOptions const &plot, std::vector<Column> const &columns);

}  // namespace messwerk
