#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

namespace tqlib::detail {

/// Room for the text of every number that is formed without the C runtime, its NUL included.
inline constexpr std::size_t plainNumberRoom = 32;

/// Writes `value` in decimals to `target`, which has room for plainNumberRoom characters; those
/// behind the text may be changed. No NUL is added. The result is the place behind the text.
char *formatWhole(char *target, std::uint64_t value);

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
/// is set: the point stays. Characters behind
/// the text may be changed, and no NUL is added. The result is the place behind the text, or null
/// where only the C runtime can tell the text; the target is undefined then.
char *formatPlainNumber(char *target, double value, char point, bool trim);

/// Writes `value` to `target` exactly as sprintf does with "%lf" in the locale in force and the
/// default rounding mode, cut to `size` - 1 characters and ended with a NUL. The result is the
/// number of characters.
std::size_t formatSixDecimals(char *target, std::size_t size, double value);

}  // namespace tqlib::detail
