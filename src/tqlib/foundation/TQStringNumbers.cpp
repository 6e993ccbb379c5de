#include <cmath>
#include <cstdint>

#include "tqlib/foundation/Resources.h"
#include "tqlib/foundation/ScanNumber.h"
#include "tqlib/foundation/TQString.h"

namespace {

using tqlib::detail::isDigit;

/// A run of digits as a signed 32-bit number that wraps.
struct Digits {
    std::uint32_t value = 0;
    unsigned long count = 0;

    double number() const { return static_cast<double>(static_cast<std::int32_t>(value)); }
};

Digits takeDigits(char const *text, unsigned long length, unsigned long &pos) {
    Digits digits;
    for (; pos < length && isDigit(text[pos]); ++pos, ++digits.count)
        digits.value = digits.value * 10 + static_cast<std::uint32_t>(text[pos] - '0');
    return digits;
}

double powerOfTen(double exponent) {
    auto const &exact = tqlib::detail::powersOfTen;
    bool const known = exponent >= 0 && exponent < static_cast<double>(exact.size()) &&
                       exponent == std::floor(exponent);
    return known ? exact[static_cast<unsigned>(exponent)] : std::pow(10.0, exponent);
}

/// True if a number begins at `text`, of which `length` characters are left.
bool startsNumber(char const *text, unsigned long length) {
    if (isDigit(*text)) return true;
    if (*text == '.') return isDigit(text[1]);
    if (*text != '+' && *text != '-') return false;
    if (length > 1 && isDigit(text[1])) return true;
    return length > 2 && text[1] == '.' && isDigit(text[2]);
}

}  // namespace

int TQString::DoubleFormat(double value) {
    if (!std::isfinite(value)) {
        Format("%.2lfE0", value);
        return 1;
    }
    double const exponent = value == 0.0 ? 0.0 : std::floor(std::log10(std::fabs(value)));
    double const mantissa = value == 0.0 ? 0.0 : value / std::pow(10.0, exponent);
    Format("%.2lfE%d", mantissa, static_cast<int>(exponent));
    return 1;
}

int TQString::BoolFormat(int value) {
    LoadStringA(value != 0 ? tqlib::detail::yes : tqlib::detail::no);
    return 1;
}

double TQString::GetDouble() const {
    return ToDouble(*this, static_cast<unsigned long>(GetLength()));
}

int TQString::Scanf(double &value) const {
    return tqlib::detail::scanNumber(*this, value) == 0 ? 0 : 1;
}

int TQString::Scanf(int &value) const {
    return tqlib::detail::scanNumber(*this, value) == 0 ? 0 : 1;
}

void TQString::RemoveLastDigits() {
    int length = GetLength();
    while (length > 0 && isDigit((*this)[length - 1]))
        --length;
    GetBuffer(length)[length] = '\0';
    ReleaseBuffer(-1);
}

double TQString::ToDouble(char const *text, unsigned long length) {
    while (length > 0 && !startsNumber(text, length)) {
        ++text;
        --length;
    }
    unsigned long pos = 0;
    double const mantissa = __ToDouble(text, length, pos);
    if (text[pos] != 'e' && text[pos] != 'E') return mantissa;
    ++pos;
    double const exponent = __ToDouble(text, length, pos);
    return exponent == 0.0 ? mantissa : mantissa * powerOfTen(exponent);
}

double TQString::__ToDouble(char const *text, unsigned long length, unsigned long &pos) {
    if (length == 0) return 0.0;
    double const sign = text[pos] == '-' ? -1.0 : 1.0;
    if (text[pos] == '-' || text[pos] == '+') ++pos;
    Digits const whole = takeDigits(text, length, pos);
    if (pos >= length || text[pos] != '.') return sign * whole.number();
    ++pos;
    Digits const decimals = takeDigits(text, length, pos);
    double const fraction = decimals.number() / powerOfTen(static_cast<double>(decimals.count));
    return sign * (whole.number() + fraction);
}
