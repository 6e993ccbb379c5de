#pragma once

// What a run has to say at its end.

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "Column.h"
#include "Options.h"

namespace messwerk {

/// Minimum, maximum and mean of a column.
class Statistics {
  public:
    void add(double value);

    double minimum() const { return minimum_; }
    double maximum() const { return maximum_; }
    double mean() const { return (sum_ + lost_) / static_cast<double>(count_); }

    /// Values other than 0 that six decimals show as 0.
    long vanishing() const { return vanishing_; }

  private:
    long count_ = 0;
    long vanishing_ = 0;
    double minimum_ = 0.0;
    double maximum_ = 0.0;
    double sum_ = 0.0;
    double lost_ = 0.0;  ///< what rounding took from the sum
};

/// The dates of a column.
class Dates {
  public:
    void add(double days);

    double first() const { return first_; }
    double last() const { return last_; }

    /// Days from the first to the last date.
    long span() const { return static_cast<long>(last_ - first_); }

    /// Steps ahead from a row to the next one that are at least twice the smallest: where a series
    /// lacks dates.
    long gaps() const;

  private:
    long count_ = 0;
    double first_ = 0.0;
    double last_ = 0.0;
    double previous_ = 0.0;
    std::map<long, long> steps_;  ///< how often there was a step of so many days ahead
};

class Summary {
  public:
    explicit Summary(Options const &options);

    /// Counts a row of the result, with a cell for each of resultColumns(options).
    void add(Row const &row);

    /// Counts a row that was left out and keeps its line number and the reason for the list, which
    /// has the first 20.
    void refuse(long line, std::string const &reason);

    /// The rows read so far, refused ones included.
    long rows() const { return written_ + refused_; }
    long refused() const { return refused_; }

    /// Prints the summary; `blankLines` were passed over.
    void print(std::FILE *out, long blankLines) const;

  private:
    struct Refusal {
        long line;
        std::string reason;
    };

    void printColumns(std::FILE *out) const;
    void printDates(std::FILE *out) const;
    void printTimes(std::FILE *out) const;
    bool has(ColumnKind kind) const;
    void printVanishing(std::FILE *out) const;
    void printRefusals(std::FILE *out) const;

    std::string input_, output_;
    std::vector<Column> columns_;
    std::vector<Statistics> statistics_;  ///< one for each column, used for numbers and times
    std::vector<Dates> dates_;            ///< one for each column, used for dates
    int nameWidth_;
    std::vector<Refusal> refusals_;
    long written_ = 0;
    long refused_ = 0;
};

}  // namespace messwerk
