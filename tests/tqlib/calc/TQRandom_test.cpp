#include "tqlib/calc/TQRandom.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tqlib/calc/TQComplex.h"

namespace {

TEST(Random, NumbersAreThePlatformsBetweenTheBounds) {
    // The first numbers of the seed 1, as the platform's documentation of its generator gives them.
    TQRandom random(1u);
    for (int const number : {41, 18467, 6334, 26500, 19169})
        EXPECT_EQ(random.random(), number * (1.0 - 0.0) * 3.051850947599719e-05 + 0.0);

    random.minimum(10);
    random.maximum(-5);
    std::uint32_t state = 77;
    random.seed(77);
    bool smallest = false, largest = false;
    for (int i = 0; i < 400000; ++i) {
        state = static_cast<std::uint32_t>((state * 214013ULL + 2531011ULL) % 0x100000000ULL);
        int const number = static_cast<int>(state / 65536 % 32768);
        ASSERT_EQ(random.random(), number * (-5.0 - 10.0) * 3.051850947599719e-05 + 10.0);
        smallest |= number == 0;
        largest |= number == 32767;
    }
    EXPECT_TRUE(smallest && largest);
}

TEST(Random, AllObjectsShareOneSequence) {
    TQRandom five(5.0);
    five.seed(9);
    TQRandom one;
    one.seed(9);
    double const first = one.random(), second = one.random();
    TQRandom seeded(9u);
    EXPECT_EQ(five.random(), 5 * first);
    five = one;
    EXPECT_EQ(five.random(), second);
    TQComplex number(1.5, 2);
    number = TQComplex(3);
}

}  // namespace
