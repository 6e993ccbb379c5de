#include "tqlib/foundation/FormatNumber.h"

#include <algorithm>
#include <bit>
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
    if (remainder > half || (remainder == half && (millionths & 1) != 0)) ++millionths;
    if (millionths == million) return {whole + 1, 0};
    return {whole, millionths};
}

constexpr std::uint32_t eightDigits = 100000000;

// The eight digits of a number below 10^8, leading zeros included, each in a byte, the first one
// lowest. Halves are split into pairs and pairs into digits, all at once in one word; the products
// are divisions by 100 and by 10 that are exact for what stands there.
std::uint64_t toDigits(std::uint32_t value) {
    std::uint64_t const high = value / 10000;
    std::uint64_t const halves = high | (value - high * 10000) << 32;
    std::uint64_t const hundreds = (halves * 10486 >> 20) & 0x0000007F0000007F;
    std::uint64_t const pairs = hundreds | (halves - 100 * hundreds) << 16;
    std::uint64_t const tens = (pairs * 103 >> 10) & 0x000F000F000F000F;
    return tens | (pairs - 10 * tens) << 8;
}

// Writes eight characters, of which the caller counts those that belong to the number.
void putDigits(char *target, std::uint64_t digits) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t const text = digits | 0x3030303030303030;
    std::memcpy(target, &text, sizeof text);
}

}  // namespace

char *formatWhole(char *target, std::uint64_t value) {
    if (value >= eightDigits) {
        target = formatWhole(target, value / eightDigits);
        putDigits(target, toDigits(static_cast<std::uint32_t>(value % eightDigits)));
        return target + 8;
    }
    // The last digit stays even if it is 0.
    std::uint64_t const digits = toDigits(static_cast<std::uint32_t>(value));
    constexpr std::uint64_t lastDigit = std::uint64_t{1} << 56;
    int const zeros = std::countr_zero(digits | lastDigit) / 8;
    putDigits(target, (digits | 0x3030303030303030) >> 8 * zeros);
    return target + 8 - zeros;
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
    return target + (trim ? 8 - std::countl_zero(digits) / 8 : decimals);
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
