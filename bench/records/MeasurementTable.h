#pragma once

#include <string>
#include <vector>

/// One line of the table that the benchmarks of records read and write: four whole numbers, then
/// four measurements with six decimals, separated by commas.
struct Measurement {
    int counts[4];
    double values[4];

    bool operator==(Measurement const &) const = default;
};

/// 400,000 random lines. In every tenth the measurements are whole.
std::vector<Measurement> const &measurements();

/// The path of a file with these lines, as sprintf writes them with "%d" and "%lf".
std::string const &measurementFile();

/// The same in columns, as sprintf writes them with "%10d" and "%10.3f".
std::string const &columnFile();

/// The path of a file with the measurements alone, as sprintf writes them with "%lf", separated by
/// blanks.
std::string const &blankSeparatedFile();
