#include "tqlib/foundation/FormatNumber.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "tqlib/foundation/ScanNumber.h"

namespace tqlib::detail {
namespace {

constexpr unsigned decimals = 6;
constexpr std::uint32_t million = 1000000;

// The fast road holds the part behind the point as a binary fraction of 63 bits. That is exact for
// magnitudes from 2^-11 on, whose last bit weighs 2^-63 or more. Below 2^53 the whole part fits.
constexpr double smallestExact = 0x1p-11;
constexpr double largestWhole = 0x1p53;
static_assert(1 + 16 + 1 + 8 <= plainNumberRoom && 1 + 20 + 7 <= plainNumberRoom);

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
    // Up for more than a half, or for a half of an odd one; without a jump, since decimals in
    // binary lie as often above their value as below it.
    millionths += static_cast<std::uint32_t>((remainder + (millionths & 1) + (half - 1)) >> 63);
    if (millionths == million) return {whole + 1, 0};
    return {whole, millionths};
}

}  // namespace

char *formatLongWhole(char *target, std::uint64_t value) {
    target = formatWhole(target, value / eightDigits);
    putDigits(target, toDigits(static_cast<std::uint32_t>(value % eightDigits)));
    return target + 8;
}

char *formatPlainNumber(char *target, double value, char point, bool trim) {
    double const magnitude = std::fabs(value);
    bool const exact = (magnitude >= smallestExact && magnitude < largestWhole) || magnitude == 0;
    if (!exact || point == '\0') return nullptr;
    *target = '-';
    target += std::signbit(value) ? 1 : 0;
    auto const [whole, millionths] = toMillionths(magnitude);
    target = formatWhole(target, whole);
    *target++ = point;
    std::uint64_t const digits = toDigits(millionths * 100);
    putDigits(target, digits);
    unsigned const zeros = static_cast<unsigned>(std::countl_zero(digits)) / 8;
    return target + (trim ? 8 - zeros : decimals);
}

std::size_t formatSixDecimals(char *target, std::size_t size, double value) {
    char *const end =
        size < plainNumberRoom ? nullptr : formatPlainNumber(target, value, decimalPoint(), false);
    if (end != nullptr) {
        *end = '\0';
        return static_cast<std::size_t>(end - target);
    }
    int const length = std::snprintf(target, size, "%lf", value);
    return std::min(static_cast<std::size_t>(std::max(length, 0)), size - 1);
}

}  // namespace tqlib::detail
