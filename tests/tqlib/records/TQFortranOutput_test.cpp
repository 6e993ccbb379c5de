#include "tqlib/records/TQFortranOutput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "support/Files.h"
#include "support/FortranColumns.h"

namespace {

class ColumnWriting : public testing::Test {
  protected:
    // What `action` writes.
    template <typename Action>
    std::string written(Action action) {
        {
            TQFortranOutput file(folder_.file("a").c_str());
            action(file);
        }
        return folder_.read("a");
    }

    TemporaryFolder folder_;
};

// The first `width` characters of a number with decimals, as the C runtime gives it.
std::string formatted(unsigned width, int decimals, double value) {
    std::vector<char> text(width + 2000);
    std::snprintf(text.data(), text.size(), "%*.*f", static_cast<int>(width), decimals, value);
    std::string field(text.data(), width);
    std::ranges::replace(field, ',', '.');
    return field;
}

TEST_F(ColumnWriting, FieldsHaveTheirWidth) {
    using File = TQFortranOutput;
    struct Row {
        void (*action)(File &);
        std::string text;
    } const rows[] = {
        {[](File &file) { file.A(6, "abc"), file.X(2), file.I(5, 42), file.F(10, 3, 3.14159); },
         "abc        42     3.142"},
        {[](File &file) { file.A(3, "abc"), file.A(2, "abc"), file.A(2, ""); }, "abc**  "},
        {[](File &file) { file.A(2, nullptr); }, "  "},
        {[](File &file) { file.I(3, 12345), file.I(3, -12), file.I(2, -12); }, "***-12**"},
        {[](File &file) { file.I(1, 7), file.I(1, 10); }, "7*"},
        {[](File &file) { file.I(11, INT_MIN), file.I(10, INT_MIN); }, "-2147483648**********"},
        {[](File &file) { file.F(5, 2, 1234.5), file.F(3, 1, 1234.5); }, "1234.123"},
        {[](File &file) { file.F(10, 3, -3.14159), file.F(6, 0, 2.5); }, "    -3.142     2"},
        {[](File &file) { file.F(4, -3, 2.6), file.F(6, 2, -0.001); }, "   3 -0.00"},
        {[](File &file) { file.F(5, 2, NAN), file.F(2, 1, -INFINITY); }, "  nan-i"},
        {[](File &file) { file.A(0, "x"), file.I(0, 5), file.F(0, 2, 1), file.X(0); }, ""},
        {[](File &file) { file.NL(), file.A(300, "\xE4"), file.NL(); },
         "\n\xE4" + std::string(299, ' ') + "\n"},
        {[](File &file) { file.F(4000, 3000, 0.5); },
         std::string(998, ' ') + "0.5" + std::string(2999, '0')},
        {[](File &file) { file.F(5, INT_MAX, 0.5), file.I(3, 1); }, "0.500  1"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(written(row.action), row.text);
}

TEST_F(ColumnWriting, NumbersAreWrittenAsTheRuntimeFormatsThem) {
    std::mt19937 random(7);
    auto const anyWhole = [&] { return static_cast<int>(random()) >> random() % 32; };
    auto const anyReal = [&] {
        double const value = std::ldexp(anyWhole(), static_cast<int>(random() % 40) - 25);
        return random() % 4 == 0 ? std::round(value * 1000) / 2000 : value;
    };
    std::string expected;
    auto const fields = [&](TQFortranOutput &file) {
        for (int i = 0; i < 50000; ++i) {
            auto const width = static_cast<unsigned>(random() % 28);
            auto const decimals = static_cast<int>(random() % 11);
            int const whole = anyWhole();
            double const real = anyReal();
            file.I(width, whole);
            file.F(width, decimals, real);
            std::string const digits = std::to_string(whole);
            expected += digits.size() > width ? std::string(width, '*')
                                              : std::string(width - digits.size(), ' ') + digits;
            expected += formatted(width, decimals, real);
        }
    };
    EXPECT_TRUE(written(fields) == expected);
}

TEST_F(ColumnWriting, LinesAreThoseThatAFortranProgramWritesAndReads) {
    std::string expected;
    EXPECT_EQ(written([&](TQFortranOutput &file) {
                  for (FortranLine const &line : fortranLines) {
                      file.A(6, line.name);
                      file.X(2);
                      file.I(6, line.count);
                      file.F(10, 3, line.written);
                      file.NL();
                      expected += std::string(line.text) + '\n';
                  }
              }),
              expected);
}

TEST_F(ColumnWriting, WhatCantBeWrittenShowsInTheState) {
    TQFortranOutput missing(folder_.file("no/file").c_str());
    missing.F(10, 3, 1);
    missing.I(5, 1);
    missing.NL();
    EXPECT_TRUE(missing.fail());
    TQFortranOutput full("/dev/full");
    full.A(5, "abc");
    full.flush();
    EXPECT_TRUE(full.fail());
    EXPECT_EQ(full.getName(), "/dev/full");
}

}  // namespace
