#pragma once

#include <cmath>

/// True if two results agree but for their last bits. For contenders that round more than once on
/// the way to a result, where the other rounds once.
inline bool nearly(double a, double b) {
    constexpr double relative = 1e-12;
    return std::fabs(a - b) <= relative * std::fabs(b);
}
