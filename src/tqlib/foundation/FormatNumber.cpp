#include "tqlib/foundation/FormatNumber.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "tqlib/foundation/ScanNumber.h"

namespace tqlib::detail {
namespace {

constexpr unsigned sixDecimals = 6;
static_assert(1 + 16 + 1 + 8 <= plainNumberRoom && 1 + 20 + 7 <= plainNumberRoom);

// formatFixed(), without zeros at the end if `trim` is set.
[[gnu::always_inline]] inline char *formatDecimals(char *target, double value, unsigned decimals,
                                                   char point, bool trim) {
    double const magnitude = std::fabs(value);
    if (!FixedPoint::holds(magnitude) || point == '\0') return nullptr;
    *target = '-';
    target += std::signbit(value) ? 1 : 0;
    auto const partsOfOne = static_cast<std::uint32_t>(wholePowersOfTen[decimals]);
    auto const [whole, parts] = FixedPoint::of(magnitude, partsOfOne);
    target = formatWhole(target, whole);
    *target++ = point;
    std::uint64_t const digits =
        toDigits(parts * static_cast<std::uint32_t>(wholePowersOfTen[8 - decimals]));
    putDigits(target, digits);
    unsigned const zeros = static_cast<unsigned>(std::countl_zero(digits)) / 8;
    return target + (trim ? 8 - zeros : decimals);
}

}  // namespace

char *formatLongWhole(char *target, std::uint64_t value) {
    target = formatWhole(target, value / eightDigits);
    putDigits(target, toDigits(static_cast<std::uint32_t>(value % eightDigits)));
    return target + 8;
}

char *formatPlainNumber(char *target, double value, char point, bool trim) {
    return formatDecimals(target, value, sixDecimals, point, trim);
}

char *formatFixed(char *target, double value, unsigned decimals, char point) {
    if (decimals - 1 >= mostFixedDecimals) return nullptr;
    return formatDecimals(target, value, decimals, point, false);
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
