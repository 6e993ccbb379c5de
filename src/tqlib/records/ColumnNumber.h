#pragma once

// Numbers in fields of fixed width, at the right end and with blanks ahead, which is how formatted
// output writes them. The characters of a field are handled eight at a time, so that nothing waits
// for the length of a number. What has another form is refused, for the C runtime to tell.

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <concepts>
#include <cstdint>

#include "tqlib/foundation/CharacterBlock.h"
#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/foundation/ScanNumber.h"

namespace tqlib::detail {

/// Characters behind a field that must be there as well: reading looks at them, writing may change
/// them.
inline constexpr unsigned columnReach = 8;

/// True if numbers with so many decimals are read and written here, in a field of that width.
inline bool isColumn(unsigned width, unsigned decimals) {
    constexpr unsigned mostDecimals = 7;
    return decimals - 1 < mostDecimals && width >= decimals + 2;
}

/// A word of eight characters `c`.
constexpr std::uint64_t eightTimes(char c) {
    return 0x0101010101010101 * static_cast<unsigned char>(c);
}
inline constexpr std::uint64_t eightBlanks = eightTimes(' ');
inline constexpr std::uint64_t eightZeros = eightTimes('0');

/// What makes a blank a minus, and a digit of a blank.
inline constexpr char minusForBlank = ' ' ^ '-';
inline constexpr char zeroForBlank = ' ' ^ '0';

/// The last eight characters of a field, with blanks ahead of a shorter one. 0 for a longer field
/// that has anything but blanks ahead of them. The width is at least 1.
[[gnu::always_inline]] inline std::uint64_t loadColumn(char const *field, unsigned width) {
    if (width >= 8) {
        for (; width > 16; field += 8, width -= 8)
            if (loadWord(field) != eightBlanks) return 0;
        if (width > 8 && (loadWord(field) ^ eightBlanks) << 8 * (16 - width) != 0) return 0;
        return loadWord(field + width - 8);
    }
    unsigned const missing = 8 * (8 - width);
    std::uint64_t const ahead = (std::uint64_t{1} << missing) - 1;
    return loadWord(field) << missing | (eightBlanks & ahead);
}

/// The opposite: makes a field with blanks ahead of `word`, whose blanks go where it is shorter.
[[gnu::always_inline]] inline void storeColumn(char *field, unsigned width, std::uint64_t word) {
    if (width >= 8) {
        for (; width > 16; field += 8, width -= 8)
            storeWord(field, eightBlanks);
        storeWord(field, eightBlanks);
        storeWord(field + width - 8, word);
    } else {
        storeWord(field, word >> 8 * (8 - width));
    }
}

/// True if each of eight characters less '0' is a digit.
inline bool areDigits(std::uint64_t characters) {
    return (((characters + 0x7676767676767676) | characters) & 0x8080808080808080) == 0;
}

/// A whole number and its sign, which a 0 has as well.
struct SignedMagnitude {
    std::uint64_t magnitude;
    bool negative;
};

/// Reads a field of at most eight digits, or seven and a minus. False for any other form.
[[gnu::always_inline]] inline bool readColumn(char const *field, unsigned width,
                                              SignedMagnitude &value) {
    if (width == 0) return false;
    std::uint64_t const word = loadColumn(field, width);
    // Digits have a bit that neither blanks nor a minus have: bit 4 of their character. What is
    // ahead of the first character with that bit may be blank but for a minus at its end.
    std::uint64_t const digitBits = word & eightTimes(zeroForBlank);
    std::uint64_t const ahead = (digitBits ^ (digitBits - 1)) >> 5;
    std::uint64_t const notBlank = (word ^ eightBlanks) & ahead;
    std::uint64_t const minus = ahead & ~(ahead >> 8) & eightTimes(minusForBlank);
    std::uint64_t const digits = (word ^ eightZeros) & ~ahead;
    bool const plain = (notBlank == 0) | (notBlank == minus);
    if (!plain || !areDigits(digits)) return false;
    value = {joinDigits(digits), notBlank != 0};
    return true;
}

/// The same for a number of a type, as sscanf converts it.
template <std::integral Whole>
[[gnu::always_inline]] inline bool readColumn(char const *field, unsigned width, Whole &value) {
    SignedMagnitude number;
    if (!readColumn(field, width, number)) return false;
    std::uint64_t const flip = 0 - std::uint64_t{number.negative};
    value = static_cast<Whole>((number.magnitude ^ flip) - flip);
    return true;
}

/// Reads a number with `decimals` digits behind a point at the end of its field. False for any
/// other form.
[[gnu::always_inline]] inline bool readColumn(char const *field, unsigned width, unsigned decimals,
                                              double &value) {
    if (FLT_EVAL_METHOD != 0 || !isColumn(width, decimals)) return false;
    unsigned const wholeWidth = width - decimals - 1;
    std::uint64_t const digits = (loadWord(field + wholeWidth + 1) ^ eightZeros)
                                 << 8 * (8 - decimals);
    SignedMagnitude whole;
    bool const plain = field[wholeWidth] == '.' && areDigits(digits);
    if (!plain || !readColumn(field, wholeWidth, whole)) return false;
    // One operation on two exact numbers, so that the result is correctly rounded.
    std::uint64_t const magnitude =
        whole.magnitude * wholePowersOfTen[decimals] + joinDigits(digits);
    static constexpr double signs[] = {1, -1};
    value = static_cast<double>(static_cast<std::int64_t>(magnitude)) / powersOfTen[decimals] *
            signs[whole.negative];
    return true;
}

/// Writes a field as sprintf does. False, with the field undefined, if that takes more characters
/// than the field has, or more than eight.
[[gnu::always_inline]] inline bool writeColumn(char *field, unsigned width, SignedMagnitude value) {
    if (value.magnitude >= eightDigits) return false;
    std::uint64_t const digits = toDigits(static_cast<std::uint32_t>(value.magnitude));
    constexpr std::uint64_t lastDigit = std::uint64_t{1} << 56;  // stays even if it is 0
    unsigned const zeros = static_cast<unsigned>(std::countr_zero(digits | lastDigit)) / 8;
    unsigned const negative = value.negative;
    if (8 - zeros + negative > std::min(width, 8u)) return false;
    std::uint64_t const ahead = (std::uint64_t{1} << 8 * zeros) - 1;
    std::uint64_t const blanks = eightTimes(zeroForBlank) & ahead;
    std::uint64_t const minus = std::uint64_t{minusForBlank * negative} << 8 * zeros >> 8;
    storeColumn(field, width, (digits | eightZeros) ^ blanks ^ minus);
    return true;
}

/// The same for a number with decimals.
[[gnu::always_inline]] inline bool writeColumn(char *field, unsigned width, unsigned decimals,
                                               double value) {
    double const magnitude = std::fabs(value);
    if (!isColumn(width, decimals) || !FixedPoint::holds(magnitude)) return false;
    unsigned const wholeWidth = width - decimals - 1;
    auto const partsOfOne = static_cast<std::uint32_t>(wholePowersOfTen[decimals]);
    auto const [whole, parts] = FixedPoint::of(magnitude, partsOfOne);
    if (!writeColumn(field, wholeWidth, {whole, std::signbit(value)})) return false;
    field[wholeWidth] = '.';
    std::uint64_t const digits = parts * wholePowersOfTen[8 - decimals];  // zeros behind
    putDigits(field + wholeWidth + 1, toDigits(static_cast<std::uint32_t>(digits)));
    return true;
}

}  // namespace tqlib::detail
