#include "tqlib/foundation/FormatNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "tqlib/foundation/ScanNumber.h"

namespace tqlib::detail {
namespace {

constexpr int decimals = 6;
constexpr std::uint32_t million = 1000000;

// The fast road holds the part behind the point as a binary fraction of 63 bits. That is exact for
// magnitudes from 2^-11 on, whose last bit weighs 2^-63 or more. Below 2^53 the whole part fits.
constexpr double smallestExact = 0x1p-11;
constexpr double largestWhole = 0x1p53;
constexpr std::size_t fastSize = 1 + 16 + 1 + decimals + 1;

struct Fixed {
    std::uint64_t whole;
    std::uint32_t millionths;
};

// `magnitude` rounded to six decimals: to nearest, ties to even, as the C runtime does.
Fixed toMillionths(double magnitude) {
    auto const whole = static_cast<std::uint64_t>(static_cast<std::int64_t>(magnitude));
    double const rest = magnitude - static_cast<double>(static_cast<std::int64_t>(whole));
    auto const bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(rest * 0x1p63));

    // bits * million / 2^63, in two halves of 32 bits so that nothing overflows.
    std::uint64_t const low = (bits & 0xFFFFFFFF) * million;
    std::uint64_t const high = (bits >> 32) * million + (low >> 32);
    auto millionths = static_cast<std::uint32_t>(high >> 31);
    std::uint64_t const remainder = (high & 0x7FFFFFFF) << 32 | (low & 0xFFFFFFFF);
    constexpr std::uint64_t half = std::uint64_t{1} << 62;
    if (remainder > half || (remainder == half && (millionths & 1) != 0)) ++millionths;
    if (millionths == million) return {whole + 1, 0};
    return {whole, millionths};
}

std::size_t formatFixed(char *target, double value, char point) {
    char *end = target;
    if (std::signbit(value)) *end++ = '-';
    Fixed const fixed = toMillionths(std::fabs(value));
    end = std::to_chars(end, target + fastSize, fixed.whole).ptr;
    *end++ = point;
    std::uint32_t rest = fixed.millionths;
    for (char *digit = end + decimals; digit != end; rest /= 10)
        *--digit = static_cast<char>('0' + rest % 10);
    end += decimals;
    *end = '\0';
    return static_cast<std::size_t>(end - target);
}

}  // namespace

std::size_t formatSixDecimals(char *target, std::size_t size, double value) {
    double const magnitude = std::fabs(value);
    bool const exact = (magnitude >= smallestExact && magnitude < largestWhole) || magnitude == 0;
    char const point = decimalPoint();
    if (exact && point != '\0' && size >= fastSize) return formatFixed(target, value, point);
    int const length = std::snprintf(target, size, "%lf", value);
    return std::min(static_cast<std::size_t>(std::max(length, 0)), size - 1);
}

}  // namespace tqlib::detail
