#pragma once

// Numbers from text with exactly the results of the C runtime's sscanf: "%lf", "%f", "%ld", "%d",
// "%lu", "%u", in the locale in force. Plain decimal texts, which is nearly all there is, take a
// fast road; everything else (infinities, hexadecimal, overflow, odd locales) goes to sscanf
// itself.

#include <array>
#include <cfloat>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace tqlib::detail {

/// The decimal point of the locale in force if it is one byte, else NUL.
char decimalPoint();

/// The first byte of the decimal point text of the locale in force.
char decimalPointByte();

inline bool isDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}
inline bool isWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The powers of ten that a double holds exactly.
inline constexpr std::array<double, 23> powersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// `mantissa` times ten to the power -`scale`, correctly rounded because both factors are exact and
/// there is one operation; false where that isn't so.
template <std::floating_point Real>
bool scaleExactly(std::uint64_t mantissa, int scale, Real &value) {
    constexpr int exactPower = std::is_same_v<Real, double> ? 22 : 10;
    constexpr std::uint64_t exactWhole = std::uint64_t{1} << std::numeric_limits<Real>::digits;
    if (FLT_EVAL_METHOD != 0 || mantissa > exactWhole) return false;
    if (scale > exactPower || scale < -exactPower) return false;
    auto const whole = static_cast<Real>(mantissa);
    auto const power =
        static_cast<Real>(powersOfTen[static_cast<unsigned>(scale < 0 ? -scale : scale)]);
    value = scale < 0 ? whole * power : whole / power;
    return true;
}

/// Reads the decimal number at the start of `text`, with no white space ahead of it. The result is
/// the place behind it, or null where only the C runtime can tell what it is. `text` ends with a
/// NUL; `point` is decimalPoint().
template <std::floating_point Real>
char const *readPlainNumber(char const *text, char point, Real &value) {
    if (point == '\0') return nullptr;
    bool const negative = *text == '-';
    if (negative || *text == '+') ++text;
    char const *const first = text;
    std::uint64_t mantissa = 0;
    while (isDigit(*text))
        mantissa = mantissa * 10 + static_cast<unsigned>(*text++ - '0');
    auto digits = text - first;
    int scale = 0;
    if (*text == point) {
        char const *const decimals = ++text;
        while (isDigit(*text))
            mantissa = mantissa * 10 + static_cast<unsigned>(*text++ - '0');
        scale = static_cast<int>(text - decimals);
        digits += scale;
    }
    if (digits == 0 || digits > 199) return nullptr;
    if (*text == 'e' || *text == 'E') {
        bool const down = *++text == '-';
        if (down || *text == '+') ++text;
        if (!isDigit(*text)) return nullptr;
        int exponent = 0;
        while (isDigit(*text) && exponent < 1000)
            exponent = exponent * 10 + (*text++ - '0');
        if (isDigit(*text)) return nullptr;
        scale += down ? exponent : -exponent;
    } else if (*text == 'x' || *text == 'X') {
        return nullptr;
    }
    Real magnitude{};
    if (digits > 19 || !scaleExactly(mantissa, scale, magnitude)) {
        if (point != '.') return nullptr;
        auto const read = std::from_chars(first, text, magnitude);
        if (read.ec != std::errc() || read.ptr != text) return nullptr;
    }
    value = negative ? -magnitude : magnitude;
    return text;
}

/// The same for whole numbers, whose value wraps into the target as that of sscanf does.
template <std::integral Whole>
char const *readPlainNumber(char const *text, char /*point*/, Whole &value) {
    bool const negative = *text == '-';
    if (negative || *text == '+') ++text;
    char const *const first = text;
    unsigned long magnitude = 0;
    while (isDigit(*text))
        magnitude = magnitude * 10 + static_cast<unsigned>(*text++ - '0');
    auto const digits = text - first;
    if (digits == 0 || digits > std::numeric_limits<long>::digits10) return nullptr;
    value = static_cast<Whole>(negative ? 0 - magnitude : magnitude);
    return text;
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
