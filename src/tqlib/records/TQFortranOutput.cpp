#include "tqlib/records/TQFortranOutput.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/records/ColumnNumber.h"

namespace {

using tqlib::detail::columnReach;
using tqlib::detail::SignedMagnitude;
using tqlib::detail::writeColumn;

constexpr char blank = ' ';

/// Decimals of the smallest double: every decimal behind them is 0.
constexpr int mostDecimals = 1074;

/// Characters of the longest number: a sign, its digits and a point.
constexpr std::size_t longestNumber =
    1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + mostDecimals;

}  // namespace

TQFortranOutput::TQFortranOutput() = default;

TQFortranOutput::TQFortranOutput(char const *name) : classic::ofstream(name, out), name_(name) {}

TQFortranOutput::~TQFortranOutput() = default;

void TQFortranOutput::fill(std::size_t count, char c) {
    char piece[256];
    std::memset(piece, c, std::min(count, sizeof piece));
    while (count > 0 && !fail()) {
        std::size_t const part = std::min(count, sizeof piece);
        write({piece, part});
        count -= part;
    }
}

void TQFortranOutput::A(unsigned int width, char const *text) {
    std::string_view const field = text == nullptr ? "" : text;
    if (field.size() > width) return fill(width, '*');
    write(field);
    fill(width - field.size(), blank);
}

// Forms a field where it is going to be written. False, with nothing written, if `form` gives up.
template <typename Form>
[[gnu::always_inline]] inline bool TQFortranOutput::writeInPlace(unsigned int width, Form form) {
    constexpr unsigned int widest = 1000;
    classic::streambuf *const buffer = fail() || width > widest ? nullptr : ios::rdbuf();
    char *const field = buffer == nullptr ? nullptr : buffer->room(width + columnReach);
    if (field == nullptr || !form(field)) return false;
    buffer->taken(width);
    return true;
}

void TQFortranOutput::I(unsigned int width, int value) {
    std::int64_t const wide = value;
    SignedMagnitude const number{static_cast<std::uint64_t>(std::abs(wide)), value < 0};
    auto const form = [=](char *field) { return writeColumn(field, width, number); };
    if (!writeInPlace(width, form)) writeAnyWhole(width, value);
}

[[gnu::noinline]] void TQFortranOutput::writeAnyWhole(unsigned int width, int value) {
    char digits[tqlib::detail::plainNumberRoom];
    auto const length =
        static_cast<std::size_t>(tqlib::detail::formatNumber(digits, value) - digits);
    if (length > width) return fill(width, '*');
    fill(width - length, blank);
    write({digits, length});
}

void TQFortranOutput::F(unsigned int width, int decimals, double value) {
    auto const form = [=](char *field) {
        return writeColumn(field, width, static_cast<unsigned int>(decimals), value);
    };
    if (!writeInPlace(width, form)) writeAnyReal(width, std::max(decimals, 0), value);
}

[[gnu::noinline]] void TQFortranOutput::writeAnyReal(unsigned int width, int decimals,
                                                     double value) {
    int const formed = std::min(decimals, mostDecimals);
    char digits[longestNumber];
    char const *const end =
        std::to_chars(digits, std::end(digits), value, std::chars_format::fixed, formed).ptr;
    std::string_view const text(digits, static_cast<std::size_t>(end - digits));
    auto const zeros = static_cast<std::size_t>(std::isfinite(value) ? decimals - formed : 0);
    std::size_t const length = text.size() + zeros;
    if (length < width) fill(width - length, blank);
    write(text.substr(0, width));
    if (text.size() < width) fill(std::min(zeros, width - text.size()), '0');
}

void TQFortranOutput::X(unsigned int count) {
    fill(count, blank);
}

void TQFortranOutput::NL() {
    write("\n", 1);
}
