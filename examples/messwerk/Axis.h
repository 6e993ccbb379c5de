#pragma once

// Axes of charts: which part of the numbers they show, and where they have marks.

#include <string>
#include <vector>

namespace messwerk {

/// A mark on an axis, with what is written beside it.
struct Mark {
    double value;
    std::string label;
};

/// The values between which an axis runs; the second one is greater.
struct Range {
    double lowest, highest;

    /// The part of the way from the lowest value to the highest one, 0 to 1 within the range.
    double part(double value) const { return (value - lowest) / (highest - lowest); }
};

/// A range that shows all values from `lowest` to `highest`, with some room for a single one.
Range rangeOf(double lowest, double highest);

/// About `count` marks at round numbers within `range`.
std::vector<Mark> numberMarks(Range const &range, int count);

/// The same at the beginnings of years, months or days, where the numbers are counts of days.
std::vector<Mark> dateMarks(Range const &range, int count);

}  // namespace messwerk
