#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>

#include "tqlib/foundation/CharacterBlock.h"

namespace tqlib::detail {

/// Room for the text of every number that is formed without the C runtime, its NUL included.
inline constexpr std::size_t plainNumberRoom = 32;

inline constexpr std::uint32_t eightDigits = 100000000;

/// The eight digits of a number below 10^8, leading zeros included, each in a byte, the first one
/// lowest. Halves are split into pairs and pairs into digits, all at once in one word. The first
/// product of each step is a division by 100 or by 10 that is exact for what stands there; the
/// difference then is quotient + 2^16 * (number - 100 * quotient), and the same with 2^8 and 10.
[[gnu::always_inline]] inline std::uint64_t toDigits(std::uint32_t value) {
    std::uint64_t const high = value / 10000;
    std::uint64_t const halves = high | (value - high * 10000) << 32;
    std::uint64_t const hundreds = (halves * 10486 >> 20) & 0x0000007F0000007F;
    std::uint64_t const pairs = (halves << 16) - hundreds * ((100 << 16) - 1);
    std::uint64_t const tens = (pairs * 103 >> 10) & 0x000F000F000F000F;
    return (pairs << 8) - tens * ((10 << 8) - 1);
}

/// Writes eight digits as characters, of which the caller counts those that belong to the number.
inline void putDigits(char *target, std::uint64_t digits) {
    storeWord(target, digits | 0x3030303030303030);
}

/// formatWhole() for a number of more than eight digits.
char *formatLongWhole(char *target, std::uint64_t value);

/// Writes `value` in decimals to `target`, which has room for plainNumberRoom characters; those
/// behind the text may be changed. No NUL is added. The result is the place behind the text.
inline char *formatWhole(char *target, std::uint64_t value) {
    if (value >= eightDigits) return formatLongWhole(target, value);
    // The last digit stays even if it is 0.
    std::uint64_t const digits = toDigits(static_cast<std::uint32_t>(value));
    constexpr std::uint64_t lastDigit = std::uint64_t{1} << 56;
    auto const zeros = static_cast<unsigned>(std::countr_zero(digits | lastDigit)) / 8;
    putDigits(target, (digits | 0x3030303030303030) >> 8 * zeros);
    return target + 8 - zeros;
}

/// The same for a number of any type.
template <std::integral Whole>
char *formatNumber(char *target, Whole value) {
    bool const negative = value < Whole{0};
    auto const bits = static_cast<std::uint64_t>(value);
    std::uint64_t const flip = 0 - std::uint64_t{negative};
    *target = '-';  // without a jump, since signs of data are hard to guess
    return formatWhole(target + negative, (bits ^ flip) - flip);
}

/// A number that isn't negative, rounded to decimals.
struct FixedPoint {
    std::uint64_t whole;
    std::uint32_t parts;  ///< behind the point, in the unit that was asked for

    /// True if of() takes `magnitude`.
    static bool holds(double magnitude) {
        return (magnitude >= smallestExact && magnitude < largestWhole) || magnitude == 0;
    }

    /// `magnitude` rounded to a unit of 1/`parts`, a power of ten from 10 to 10^8: to nearest, ties
    /// to even, as the C runtime does.
    [[gnu::always_inline]] static FixedPoint of(double magnitude, std::uint32_t parts) {
        auto const whole = static_cast<std::uint64_t>(static_cast<std::int64_t>(magnitude));
        double const rest = magnitude - static_cast<double>(static_cast<std::int64_t>(whole));
        auto const bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(rest * 0x1p63));

        // bits * parts / 2^63, in two halves of 32 bits so that nothing overflows.
        std::uint64_t const low = (bits & 0xFFFFFFFF) * parts;
        std::uint64_t const high = (bits >> 32) * parts + (low >> 32);
        auto rounded = static_cast<std::uint32_t>(high >> 31);
        std::uint64_t const remainder = (high & 0x7FFFFFFF) << 32 | (low & 0xFFFFFFFF);
        constexpr std::uint64_t half = std::uint64_t{1} << 62;
        // Up for more than a half, or for a half of an odd one; without a jump, since decimals in
        // binary lie as often above their value as below it.
        rounded += static_cast<std::uint32_t>((remainder + (rounded & 1) + (half - 1)) >> 63);
        if (rounded == parts) return {whole + 1, 0};
        return {whole, rounded};
    }

  private:
    // What is behind the point is held as a binary fraction of 63 bits. That is exact for
    // magnitudes from 2^-11 on, whose last bit weighs 2^-63 or more. Below 2^53 the whole part
    // fits.
    static constexpr double smallestExact = 0x1p-11;
    static constexpr double largestWhole = 0x1p53;
};

/// Writes `value` to `target`, which has room for plainNumberRoom characters, exactly as sprintf
/// does with "%lf" in a locale with the decimal point `point`, without its trailing zeros if `trim`
/// is set: the point stays. Characters behind the text may be changed, and no NUL is added. The
/// result is the place behind the text, or null where only the C runtime can tell the text; the
/// target is undefined then.
char *formatPlainNumber(char *target, double value, char point, bool trim);

/// The same for "%.Nf", where N is `decimals`: null for other than 1 to mostFixedDecimals of them.
inline constexpr unsigned mostFixedDecimals = 8;
char *formatFixed(char *target, double value, unsigned decimals, char point);

/// Writes `value` to `target` exactly as sprintf does with "%lf" in the locale in force and the
/// default rounding mode, cut to `size` - 1 characters and ended with a NUL. The result is the
/// number of characters.
std::size_t formatSixDecimals(char *target, std::size_t size, double value);

}  // namespace tqlib::detail
