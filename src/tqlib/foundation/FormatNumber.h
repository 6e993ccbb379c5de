#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tqlib::detail {

/// Room for the text of every number that is formed without the C runtime, its NUL included.
inline constexpr std::size_t plainNumberRoom = 32;

inline constexpr std::uint32_t eightDigits = 100000000;

/// The eight digits of a number below 10^8, leading zeros included, each in a byte, the first one
/// lowest. Halves are split into pairs and pairs into digits, all at once in one word; the products
/// are divisions by 100 and by 10 that are exact for what stands there.
[[gnu::always_inline]] inline std::uint64_t toDigits(std::uint32_t value) {
    std::uint64_t const high = value / 10000;
    std::uint64_t const halves = high | (value - high * 10000) << 32;
    std::uint64_t const hundreds = (halves * 10486 >> 20) & 0x0000007F0000007F;
    std::uint64_t const pairs = hundreds | (halves - 100 * hundreds) << 16;
    std::uint64_t const tens = (pairs * 103 >> 10) & 0x000F000F000F000F;
    return tens | (pairs - 10 * tens) << 8;
}

/// Writes eight digits as characters, of which the caller counts those that belong to the number.
inline void putDigits(char *target, std::uint64_t digits) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t const text = digits | 0x3030303030303030;
    std::memcpy(target, &text, sizeof text);
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

/// Writes `value` to `target`, which has room for plainNumberRoom characters, exactly as sprintf
/// does with "%lf" in a locale with the decimal point `point`, without its trailing zeros if `trim`
/// is set: the point stays. Characters behind the text may be changed, and no NUL is added. The
/// result is the place behind the text, or null where only the C runtime can tell the text; the
/// target is undefined then.
char *formatPlainNumber(char *target, double value, char point, bool trim);

/// Writes `value` to `target` exactly as sprintf does with "%lf" in the locale in force and the
/// default rounding mode, cut to `size` - 1 characters and ended with a NUL. The result is the
/// number of characters.
std::size_t formatSixDecimals(char *target, std::size_t size, double value);

}  // namespace tqlib::detail
