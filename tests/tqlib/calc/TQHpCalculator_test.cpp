#include "tqlib/calc/TQHpCalculator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/Locale.h"

namespace {

TEST(TQHpCalculator, EvaluatesOnANewStack) {
    struct Row {
        char const *text;
        double value;
        int size;
    } const rows[] = {
        {"", 0.0, 1},
        {"   ", 0.0, 1},
        {"1 2 +", 3.0, 2},
        {"5 +", 5.0, 1},
        {"7 2 -", 5.0, 2},
        {"7 2 *", 14.0, 2},
        {"7 2 /", 3.5, 2},
        {"2 3 POW", 8.0, 2},
        {"-8 0.5 POW", 1.0, 2},
        {"-2 1.5 POW", -2.0, 2},
        {"3 7 MOD", 1.0, 2},
        {"7 3 MOD", 3.0, 2},
        {"PI", 3.141592653589793, 2},
        {"PI E +", 3.141592653589793 + 2.71, 2},
        {"1 exp", std::exp(1.0), 2},
        {"2 Ln", std::log(2.0), 2},
        {"2 log10", std::log10(2.0), 2},
        {"1 sin", std::sin(1.0), 2},
        {"1 COS", std::cos(1.0), 2},
        {"1 TAN", std::tan(1.0), 2},
        {"0.5 ARCSIN", std::asin(0.5), 2},
        {"0.5 ARCCOS", std::acos(0.5), 2},
        {"2 ARCTAN", std::atan(2.0), 2},
        {"-3 ABS", 3.0, 2},
        {"-1.5 FLOOR", -2.0, 2},
        {"-1.5 CEIL", -1.0, 2},
        {"9 SQRT", 3.0, 2},
        {"-3 SQR", 9.0, 2},
        {"1 2 SWAP -", 1.0, 2},
        {"1 2 CLX", 1.0, 2},
        {"CLX", 0.0, 1},
        {"1 2 CLEAR", 0.0, 1},
        {"1 STO_2 CLEAR RCL_2", 1.0, 2},
        {"4 STO_0 STO_1 STO_3 CLX RCL_0 RCL_1 RCL_3 + +", 12.0, 2},
        {"1E3", 1000.0, 2},
        {"-5", -5.0, 2},
        {"SIN(", 0.0, 2},
        {"12ABC", 12.0, 2},
        {"1 \n 2 +", 2.0, 3},
        {"\t 7", 7.0, 3},
        {"1\t2", 1.0, 2},
        {"0x10", 16.0, 2},
        {"INF", 0.0, 2},
        {"-Nan", 0.0, 2},
        {"inflow", 0.0, 2},
        {"--5", 0.0, 2},
        {"1 0 /", INFINITY, 2},
    };
    for (auto const &row : rows) {
        TQHpCalculator calculator;
        EXPECT_DOUBLE_EQ(calculator.calculate(localized(row.text).c_str()), row.value) << row.text;
        EXPECT_EQ(calculator.stackSize(), row.size) << row.text;
    }
    TQHpCalculator calculator;
    EXPECT_TRUE(std::isnan(calculator.calculate("-1 LN")));
    calculator.calculate("3");
    EXPECT_DOUBLE_EQ(calculator.calculate(nullptr), 3.0);
}

TEST(TQHpCalculator, TooFewValuesThrowAndLeaveTheRest) {
    for (std::string const keyword :
         {"+",     "-",    "*",   "/",   "POW",    "MOD",    "SWAP",   "EXP",  "LN",
          "LOG10", "SIN",  "COS", "TAN", "ARCSIN", "ARCCOS", "ARCTAN", "ABS",  "FLOOR",
          "CEIL",  "SQRT", "SQR", "CLX", "STO_0",  "STO_1",  "STO_2",  "STO_3"}) {
        TQHpCalculator calculator;
        EXPECT_THROW(calculator.calculate("+"), TQException::EMPTY_LIST);
        EXPECT_EQ(calculator.stackSize(), 0);
        EXPECT_THROW(calculator.calculate((keyword + " 8 9 +").c_str()), TQException::EMPTY_LIST)
            << keyword;
        EXPECT_DOUBLE_EQ(calculator.reCalculate(), 17.0) << keyword;
    }
}

TEST(TQHpCalculator, TheStackOutlivesCalculations) {
    TQHpCalculator calculator;
    calculator.calculate("2 3");
    EXPECT_DOUBLE_EQ(calculator.calculate("*"), 6.0);
    EXPECT_DOUBLE_EQ(calculator.calculate("4 5"), 5.0);
    double const expected[] = {5.0, 4.0, 6.0, 0.0, 0.0};
    for (unsigned index = 0; index < 5; ++index)
        EXPECT_DOUBLE_EQ(calculator.stackValue(index), expected[index]);
    EXPECT_DOUBLE_EQ(calculator.stackValue(4294967295u), 0.0);
    EXPECT_DOUBLE_EQ(calculator.reCalculate(), 5.0);
}

TEST(TQHpCalculator, CommandsWaitUntilTheyRunOrAreCleared) {
    TQHpCalculator calculator;
    EXPECT_EQ(calculator.syntaxCheck("1"), 0);
    calculator.syntaxCheck("2");
    EXPECT_DOUBLE_EQ(calculator.calculate("+"), 3.0);
    calculator.syntaxCheck("9 9 9");
    calculator.clear();
    EXPECT_DOUBLE_EQ(calculator.reCalculate(), 3.0);
    EXPECT_EQ(calculator.error(), 0);
}

TEST(TQHpCalculator, VariablesAreReadWhenTheyRun) {
    TQHpCalculator calculator;
    double x = 1, y = 2, pi = 5, small = 7;
    calculator.addVariable("X", &x);
    calculator.addVariable("PI", &pi);
    calculator.addVariable("small", &small);
    calculator.addVariable("12", &y);
    calculator.addVariable(nullptr, nullptr);
    calculator.syntaxCheck("x 12 +");
    x = 10;
    EXPECT_DOUBLE_EQ(calculator.reCalculate(), 12.0);
    EXPECT_DOUBLE_EQ(calculator.calculate("PI"), 3.141592653589793);
    EXPECT_DOUBLE_EQ(calculator.calculate("small"), 0.0);
    calculator.deleteVariable(static_cast<char const *>(nullptr));
    calculator.deleteVariable("X");
    calculator.syntaxCheck("x");
    EXPECT_DOUBLE_EQ(calculator.reCalculate(), 0.0);
}

TEST(TQHpCalculator, DeletesTheFirstEntryThatFits) {
    TQHpCalculator calculator;
    double first = 1, second = 2;
    calculator.addVariable("X", &first);
    calculator.addVariable("X", &second);
    calculator.deleteVariable("Y");
    EXPECT_DOUBLE_EQ(calculator.calculate("X"), 1.0);
    calculator.deleteVariable("X");
    EXPECT_DOUBLE_EQ(calculator.calculate("X"), 2.0);
    double other = 0;
    calculator.deleteVariable(&other);
    EXPECT_DOUBLE_EQ(calculator.calculate("X"), 2.0);
    calculator.deleteVariable(&second);
    EXPECT_DOUBLE_EQ(calculator.calculate("X"), 0.0);
}

TEST(TQHpBefehl, IsANumberAVariableOrNothing) {
    double value = 4;
    TQHpVariable variable{"X", &value};
    EXPECT_EQ(TQHpBefehl().how(), 2);
    EXPECT_DOUBLE_EQ(TQHpBefehl(0, 2.5), 2.5);
    EXPECT_DOUBLE_EQ(TQHpBefehl(3, 2.5), 0.0);
    TQHpBefehl const command(1, &variable);
    value = 5;
    EXPECT_DOUBLE_EQ(command, 5.0);
    EXPECT_DOUBLE_EQ(TQHpBefehl(1), 0.0);
}

}  // namespace
