#include "tqlib/foundation/FormatNumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

namespace {

void agreesWithTheRuntime(double value) {
    char ours[200], theirs[200];
    std::size_t const length = tqlib::detail::formatSixDecimals(ours, sizeof ours, value);
    std::snprintf(theirs, sizeof theirs, "%lf", value);
    ASSERT_STREQ(ours, theirs) << value;
    ASSERT_EQ(length, std::strlen(ours));
}

TEST(FormatNumber, AgreesWithTheRuntimeAtTheEdges) {
    using Limits = std::numeric_limits<double>;
    for (double const value : {0.0,
                               1.0,
                               0.5,
                               0.0000005,
                               0.0000015,
                               0.00048828125,
                               0.999999499999,
                               0.9999995,
                               999999.9999995,
                               0x1p53,
                               0x1p53 - 1,
                               0x1.fffffffffffffp52,
                               1e15,
                               1e22,
                               1e300,
                               Limits::max(),
                               Limits::min(),
                               Limits::denorm_min(),
                               Limits::infinity(),
                               Limits::quiet_NaN()}) {
        for (double const near :
             {value, std::nextafter(value, 0.0), std::nextafter(value, 1e308)}) {
            agreesWithTheRuntime(near);
            agreesWithTheRuntime(-near);
        }
    }
}

TEST(FormatNumber, RoundsTiesToEvenAsTheRuntimeDoes) {
    // Odd multiples of 2^-7 have seven decimals, the last of them a 5.
    for (int i = 1; i < 20000; i += 2)
        agreesWithTheRuntime(i / 128.0);
}

TEST(FormatNumber, AgreesWithTheRuntimeOnRandomNumbers) {
    std::mt19937_64 random(4);
    for (int round = 0; round < 200000; ++round) {
        std::uint64_t const bits = random();
        double any;
        std::memcpy(&any, &bits, sizeof any);
        agreesWithTheRuntime(any);
        agreesWithTheRuntime(
            std::ldexp(static_cast<double>(bits >> 11), -static_cast<int>(bits % 70)));
        agreesWithTheRuntime(static_cast<double>(bits % 2000000000) / 1e6);
        agreesWithTheRuntime(static_cast<double>(bits % 2000000000) / 2e6);
    }
}

}  // namespace
