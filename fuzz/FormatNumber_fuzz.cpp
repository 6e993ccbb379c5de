// The texts of numbers against the C runtime. The first byte of an input is a comma for a locale
// with a decimal comma. Records follow: a byte for the form of the number, a byte for the size of
// the target, eight bytes for the number.

#include "tqlib/foundation/FormatNumber.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"
#include "support/NumberLocale.h"
#include "tqlib/foundation/ScanNumber.h"

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

void tryReal(double value, std::size_t size) {
    std::vector<char> library(size, 'x'), model(size, 'x');
    std::size_t const length = tqlib::detail::formatSixDecimals(library.data(), size, value);
    std::snprintf(model.data(), size, "%lf", value);
    expectSame("text", library.data(), model.data());
    expectSame("length", length, std::strlen(model.data()));
}

void tryTrimmedReal(double value) {
    std::vector<char> library(tqlib::detail::plainNumberRoom);
    char const point = tqlib::detail::decimalPoint();
    char const *const end = tqlib::detail::formatPlainNumber(library.data(), value, point, true);
    if (end == nullptr) return;
    char model[400];
    std::snprintf(model, sizeof model, "%lf", value);
    std::string text = model;
    text.resize(text.find_last_not_of('0') + 1);
    expectSame("trimmed text", {library.data(), end}, text);
}

template <typename Whole>
void tryWhole(Whole value) {
    std::vector<char> library(tqlib::detail::plainNumberRoom);
    char const *const end = tqlib::detail::formatNumber(library.data(), value);
    expectSame("whole number", {library.data(), end}, std::to_string(value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    NumberLocale const locale(input.take() == ',');
    while (!input.atEnd()) {
        unsigned const form = input.pick(6);
        std::size_t const room = input.pick(250) + 1;
        if (form == 5) {
            auto const bits = input.raw<std::int64_t>();
            tryWhole(bits);
            tryWhole(static_cast<std::uint64_t>(bits));
            tryWhole(static_cast<int>(bits));
            tryWhole(static_cast<unsigned short>(bits));
        } else {
            double const value = takeNumber(form, input);
            tryReal(value, room);
            tryTrimmedReal(value);
        }
    }
    return 0;
}
