#include "tqlib/foundation/ScanNumber.h"

#include <charconv>
#include <cstdio>

namespace tqlib::detail {
namespace {

/// An exponent behind a mantissa: its value and the place behind it, which is null where only the C
/// runtime can tell what stands there.
struct Exponent {
    int value;
    char const *behind;
};

/// Reads the exponent whose letter stands at `text`.
Exponent readExponent(char const *text) {
    constexpr unsigned mostDigits = 4;
    bool const negative = *++text == '-';
    text += isSign(*text);
    DigitRun const digits = BytewiseDigits::read(text);
    if (digits.count == 0 || digits.count > mostDigits) return {0, nullptr};
    int const exponent = static_cast<int>(digits.value);
    return {negative ? -exponent : exponent, text + digits.count};
}

/// `mantissa` times ten to the power -`scale`, correctly rounded because both factors are exact and
/// there is one operation; false where that isn't so.
template <std::floating_point Real>
bool scaleExactly(std::uint64_t mantissa, int scale, Real &value) {
    if (FLT_EVAL_METHOD != 0 || mantissa > exactWhole<Real>) return false;
    if (scale > exactPower<Real> || scale < -exactPower<Real>) return false;
    auto const whole = static_cast<Real>(mantissa);
    auto const power =
        static_cast<Real>(powersOfTen[static_cast<unsigned>(scale < 0 ? -scale : scale)]);
    value = scale < 0 ? whole * power : whole / power;
    return true;
}

template <typename Number>
int scan(char const *text, char const *format, Number &value) {
    char const *start = text;
    while (isWhiteSpace(*start))
        ++start;
    char const point = std::is_floating_point_v<Number> ? decimalPoint() : '\0';
    if (readPlainNumber<BytewiseDigits>(start, point, value) != nullptr) return 1;
    return std::sscanf(text, format, &value);
}

}  // namespace

DigitRun BlockwiseDigits::readRest(char const *text, DigitRun run) {
    DigitRun block;
    do {
        block = readBlock(text);
        text += block.count;
        run = run.followedBy(block);
    } while (block.count == 8);
    return run;
}

template <std::floating_point Real>
char const *readLongNumber(char const *first, char const *text, DigitRun digits, int scale,
                           char point, Real &magnitude) {
    if (digits.count > longestPlainNumber) return nullptr;
    if ((*text | 0x20) == 'e') {
        auto const [exponent, behind] = readExponent(text);
        if (behind == nullptr) return nullptr;
        scale -= exponent;
        text = behind;
    }
    if (digits.count <= wholeDigits && scaleExactly(digits.value, scale, magnitude)) return text;
    if (point != '.') return nullptr;
    auto const read = std::from_chars(first, text, magnitude);
    return read.ec == std::errc() && read.ptr == text ? text : nullptr;
}

template char const *readLongNumber(char const *, char const *, DigitRun, int, char, double &);
template char const *readLongNumber(char const *, char const *, DigitRun, int, char, float &);

int scanNumber(char const *text, double &value) {
    return scan(text, "%lf", value);
}
int scanNumber(char const *text, float &value) {
    return scan(text, "%f", value);
}
int scanNumber(char const *text, long &value) {
    return scan(text, "%ld", value);
}
int scanNumber(char const *text, int &value) {
    return scan(text, "%d", value);
}
int scanNumber(char const *text, unsigned long &value) {
    return scan(text, "%lu", value);
}
int scanNumber(char const *text, unsigned int &value) {
    return scan(text, "%u", value);
}

}  // namespace tqlib::detail
