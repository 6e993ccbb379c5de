#pragma once

// Numbers from text with exactly the results of the C runtime's sscanf: "%lf", "%f", "%ld", "%d",
// "%lu", "%u", in the locale in force and the default rounding mode. Plain decimal texts, which is
// nearly all there is, take a fast road; everything else (infinities, hexadecimal, overflow, odd
// locales) goes to sscanf itself.

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "tqlib/foundation/CharacterBlock.h"

namespace tqlib::detail {

/// The decimal point of the locale in force if it is one byte, else NUL.
inline char decimalPoint() {
    char const *const point = nl_langinfo(RADIXCHAR);
    return point[0] != '\0' && point[1] == '\0' ? point[0] : '\0';
}

/// The first byte of the decimal point text of the locale in force.
inline char decimalPointByte() {
    return *nl_langinfo(RADIXCHAR);
}

inline bool isDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}
inline bool isWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Digits of the longest number that the fast road takes.
inline constexpr unsigned longestPlainNumber = 199;

/// The powers of ten that a double holds exactly.
inline constexpr std::array<double, 23> powersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Digits that a whole number of 64 bits holds whatever they are.
inline constexpr unsigned wholeDigits = 19;

inline constexpr auto wholePowersOfTen = [] {
    std::array<std::uint64_t, wholeDigits + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// The largest power of ten and the largest whole number up to which `Real` holds all exactly.
template <std::floating_point Real>
inline constexpr int exactPower = std::is_same_v<Real, double> ? 22 : 10;
template <std::floating_point Real>
inline constexpr std::uint64_t exactWhole = std::uint64_t{1} << std::numeric_limits<Real>::digits;

// What follows passes values instead of references, so that nothing on the way of a number through
// the processor has to go by memory.

/// A run of digits: their number, and the value, which is right up to 19 of them.
struct DigitRun {
    std::uint64_t value = 0;
    unsigned count = 0;

    DigitRun followedBy(DigitRun more) const {
        std::uint64_t const shifted = value * wholePowersOfTen[std::min(more.count, wholeDigits)];
        return {shifted + more.value, count + more.count};
    }
};

/// Reads the digits at the start of a text, which ends with a NUL, one by one, and adds them to
/// those before.
struct BytewiseDigits {
    static DigitRun read(char const *text, DigitRun before = {}) {
        for (; isDigit(*text); ++text, ++before.count)
            before.value = before.value * 10 + static_cast<unsigned>(*text - '0');
        return before;
    }
};

/// The same for a text behind whose NUL at least seven more bytes can be read, eight at a time.
struct BlockwiseDigits {
    static constexpr int padding = 8;

    [[gnu::always_inline]] static DigitRun read(char const *text, DigitRun before = {}) {
        DigitRun const block = readBlock(text);
        DigitRun const run = before.followedBy(block);
        if (block.count == 8) [[unlikely]]
            return readRest(text + 8, run);
        return run;
    }

  private:
    static DigitRun readRest(char const *text, DigitRun run);

    [[gnu::always_inline]] static DigitRun readBlock(char const *text) {
        CharacterBlock const block = CharacterBlock::load(text);
        unsigned const count = block.digitCount();
        return {block.others == 0 ? joinDigits(block.characters) : block.wholeNumber(), count};
    }
};

/// Reads a number as readPlainNumber() does that has an exponent, or more digits than its value can
/// be computed from in one step. [`first`, `text`) is its mantissa, with the digits `digits`, of
/// which `scale` are decimals. A null result is that of readPlainNumber().
template <std::floating_point Real>
char const *readLongNumber(char const *first, char const *text, DigitRun digits, int scale,
                           char point, Real &magnitude);
extern template char const *readLongNumber(char const *, char const *, DigitRun, int, char,
                                           double &);
extern template char const *readLongNumber(char const *, char const *, DigitRun, int, char,
                                           float &);

/// True for a minus or a plus: without a jump, since signs of data are hard to guess.
inline bool isSign(char c) {
    return ((c - '+') & ~2) == 0;
}

/// Reads the decimal number at the start of `text`, with no white space ahead of it. The result is
/// the place behind it, or null where only the C runtime can tell what it is. `Digits` says how the
/// text may be read; `point` is decimalPoint().
template <typename Digits, std::floating_point Real>
[[gnu::always_inline]] inline char const *readPlainNumber(char const *text, char point,
                                                          Real &value) {
    if (point == '\0') return nullptr;
    bool const negative = *text == '-';
    char const *const first = text + isSign(*text);
    DigitRun digits = Digits::read(first);
    text = first + digits.count;
    int scale = 0;
    if (*text == point) {
        DigitRun const all = Digits::read(++text, digits);
        scale = static_cast<int>(all.count - digits.count);
        text += scale;
        digits = all;
    }
    if (digits.count == 0) return nullptr;
    char const follower = static_cast<char>(*text | 0x20);
    if (follower == 'x') return nullptr;
    Real magnitude{};
    bool const exact = FLT_EVAL_METHOD == 0 && digits.count <= wholeDigits &&
                       digits.value <= exactWhole<Real> && scale <= exactPower<Real>;
    if (exact && follower != 'e') [[likely]] {
        // One operation on two exact numbers, so that the result is correctly rounded.
        magnitude = static_cast<Real>(static_cast<std::int64_t>(digits.value)) /
                    static_cast<Real>(powersOfTen[static_cast<unsigned>(scale)]);
    } else {
        text = readLongNumber(first, text, digits, scale, point, magnitude);
        if (text == nullptr) return nullptr;
    }
    static constexpr Real signs[] = {1, -1};
    value = magnitude * signs[negative];
    return text;
}

/// The same for whole numbers, whose value wraps into the target as that of sscanf does.
template <typename Digits, std::integral Whole>
[[gnu::always_inline]] inline char const *readPlainNumber(char const *text, char /*point*/,
                                                          Whole &value) {
    bool const negative = *text == '-';
    text += isSign(*text);
    DigitRun const digits = Digits::read(text);
    if (digits.count == 0 || digits.count > std::numeric_limits<long>::digits10) return nullptr;
    auto const magnitude = static_cast<unsigned long>(digits.value);
    unsigned long const flip = 0UL - static_cast<unsigned long>(negative);
    value = static_cast<Whole>((magnitude ^ flip) - flip);
    return text + digits.count;
}

inline constexpr int shortNumberReach = 17;

/// Reads `text` as readPlainNumber<BlockwiseDigits>() does, if it is nothing but a short number: at
/// most seven digits before its point and seven behind it, less one before it if there is a sign.
/// `ends` tells of a place whether the text ends there. Null for every other text. Looks at less
/// than shortNumberReach characters. For doubles and whole numbers.
template <typename Number, typename Ends>
[[gnu::always_inline]] inline char const *readShortNumber(char const *text, char point, Ends ends,
                                                          Number &value) {
    bool const negative = *text == '-';
    bool const sign = isSign(*text);
    CharacterBlock block = CharacterBlock::load(text);
    if (!block.startsWithDigit(sign)) return nullptr;
    block = block.withFirstDigit(sign);
    if (block.others == 0) return nullptr;
    unsigned count = block.digitCount();
    std::uint64_t magnitude = block.wholeNumber();
    text += count;
    if constexpr (std::is_integral_v<Number>) {
        std::uint64_t const flip = 0 - std::uint64_t{negative};
        value = static_cast<Number>((magnitude ^ flip) - flip);
    } else {
        if (FLT_EVAL_METHOD != 0) return nullptr;
        constexpr int unit = 8;
        magnitude *= wholePowersOfTen[unit];
        if (*text == point) {
            ++text;
            block = CharacterBlock::load(text);
            if (block.others == 0) return nullptr;
            text += block.digitCount();
            count += block.digitCount();
            magnitude += block.decimals();
        }
        static constexpr Number units[] = {powersOfTen[unit], -powersOfTen[unit]};
        value = static_cast<Number>(static_cast<std::int64_t>(magnitude)) / units[negative];
    }
    return ends(text) && count != static_cast<unsigned>(sign) ? text : nullptr;
}

/// Converts the beginning of `text` as sscanf does with the format of the target's type. The result
/// is that of sscanf: 1, 0 if no number stands there, -1 if the text is empty or blank. The target
/// is changed only for 1.
int scanNumber(char const *text, double &value);
int scanNumber(char const *text, float &value);
int scanNumber(char const *text, long &value);
int scanNumber(char const *text, int &value);
int scanNumber(char const *text, unsigned long &value);
int scanNumber(char const *text, unsigned int &value);

}  // namespace tqlib::detail
