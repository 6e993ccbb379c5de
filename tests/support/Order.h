#pragma once

#include <gtest/gtest.h>

#include <cstddef>

/// All six comparisons of `values`, which are in ascending order.
template <typename Value, std::size_t count>
void expectAscending(Value const (&values)[count]) {
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = 0; j < count; ++j) {
            Value const &a = values[i], &b = values[j];
            EXPECT_EQ(a < b, i < j) << i << ' ' << j;
            EXPECT_EQ(a > b, i > j) << i << ' ' << j;
            EXPECT_EQ(a <= b, i <= j) << i << ' ' << j;
            EXPECT_EQ(a >= b, i >= j) << i << ' ' << j;
            EXPECT_EQ(a == b, i == j) << i << ' ' << j;
            EXPECT_EQ(a != b, i != j) << i << ' ' << j;
        }
}
