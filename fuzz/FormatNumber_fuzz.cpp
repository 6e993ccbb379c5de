// Numbers with six decimals against the C runtime. The first byte of an input is a comma for a
// locale with a decimal comma. Records follow: a byte for the form of the number, a byte for the
// size of the target, eight bytes for the number.

#include "tqlib/foundation/FormatNumber.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"
#include "support/NumberLocale.h"

namespace {

/// Any double, or one of those that lie on or beside the border between two texts.
double takeNumber(unsigned form, Input &input) {
    if (form == 0) return input.raw<double>();
    auto const whole = static_cast<double>(input.raw<std::int32_t>());
    auto const more = input.raw<std::int32_t>();
    if (form == 1) return std::ldexp(whole, more % 70);
    double const value = (whole * 1e6 + more) / 1e6;
    if (form == 2) return value;
    return std::nextafter((whole * 1e7 + more * 10.0 + 5) / 1e7, form == 3 ? HUGE_VAL : -HUGE_VAL);
}

void agreesWithTheRuntime(double value, std::size_t size) {
    std::vector<char> library(size, 'x'), model(size, 'x');
    std::size_t const length = tqlib::detail::formatSixDecimals(library.data(), size, value);
    std::snprintf(model.data(), size, "%lf", value);
    expectSame("text", library.data(), model.data());
    expectSame("length", length, std::strlen(model.data()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    NumberLocale const locale(input.take() == ',');
    while (!input.atEnd()) {
        unsigned const form = input.pick(5);
        std::size_t const room = input.pick(250) + 1;
        agreesWithTheRuntime(takeNumber(form, input), room);
    }
    return 0;
}
