#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Locale.h"
#include "tqlib/foundation/TQString.h"

namespace {

TEST(TQStringNumbers, FormatsScientifically) {
    double const infinity = std::numeric_limits<double>::infinity();
    struct Row {
        double value;
        char const *text;
    } const rows[] = {
        {0.0, "0.00E0"},      {1234.5, "1.23E3"},    {-0.05, "-5.00E-2"},     {1.0, "1.00E0"},
        {999.999, "10.00E2"}, {1e300, "1.00E300"},   {-1e-300, "-1.00E-300"}, {0.1, "1.00E-1"},
        {infinity, "infE0"},  {-infinity, "-infE0"},
    };
    for (auto const &row : rows) {
        TQString text;
        EXPECT_EQ(text.DoubleFormat(row.value), 1);
        EXPECT_EQ(text, localized(row.text).c_str());
    }
}

TEST(TQStringNumbers, GetDoubleFindsTheFirstNumberInEveryLocale) {
    struct Row {
        char const *text;
        double value;
    } const rows[] = {
        {"12.5", 12.5},
        {"Wert: -3.75 kg", -3.75},
        {".5", 0.5},
        {"-.5", -0.5},
        {"+7", 7.0},
        {"3,14", 3.0},
        {"- 5", 5.0},
        {"--5", -5.0},
        {"5-3", 5.0},
        {"abc", 0.0},
        {"", 0.0},
        {".", 0.0},
        {"-", 0.0},
        {"2e3", 2000.0},
        {"2E-1", 2.0 * std::pow(10.0, -1)},
        {"2e", 2.0},
        {"2e+", 2.0},
        {"2e0", 2.0},
        {"e5", 5.0},
        {"12.5.7", 12.5},
        {"1e0.5", std::pow(10.0, 0.5)},
        {"2147483647", 2147483647.0},
        {"2147483648", -2147483648.0},
        {"4294967297", 1.0},
        {"0.123456789", 0.123456789},
        {"0.4294967297", 1e-10},
        {"-.x.-.25", -0.25},
        {"+.", 0.0},
        {"1e-", 1.0},
        {"7.", 7.0},
        {"1e9999", std::numeric_limits<double>::infinity()},
    };
    for (auto const &row : rows)
        EXPECT_DOUBLE_EQ(TQString(row.text).GetDouble(), row.value) << row.text;
}

TEST(TQStringNumbers, ScanfFollowsTheRuntime) {
    struct Row {
        char const *text;
        int result;
        double real;
        int whole;
    } const rows[] = {
        {"3.5abc", 1, 3.5, 3}, {"abc", 0, -1.0, -1}, {"", 1, -1.0, -1},
        {"  ", 1, -1.0, -1},   {" 7", 1, 7.0, 7},
    };
    for (auto const &row : rows) {
        TQString const text = localized(row.text).c_str();
        double real = -1.0;
        int whole = -1;
        EXPECT_EQ(text.Scanf(real), row.result) << row.text;
        EXPECT_EQ(text.Scanf(whole), row.result) << row.text;
        EXPECT_EQ(real, row.real) << row.text;
        EXPECT_EQ(whole, row.whole) << row.text;
    }
}

TEST(TQStringNumbers, RemovesLastDigits) {
    struct Row {
        char const *text, *left;
    } const rows[] = {{"abc123", "abc"}, {"a1b2", "a1b"}, {"123", ""}, {"abc", "abc"}, {"", ""}};
    for (auto const &row : rows) {
        TQString text = row.text;
        text.RemoveLastDigits();
        EXPECT_EQ(text, row.left);
    }
}

TEST(TQStringNumbers, FormatsYesAndNo) {
    TQString text;
    EXPECT_EQ(text.BoolFormat(-1), 1);
    EXPECT_EQ(text, "Ja");
    EXPECT_EQ(text.BoolFormat(0), 1);
    EXPECT_EQ(text, "Nein");
}

}  // namespace
