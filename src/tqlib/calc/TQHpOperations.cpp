#include "tqlib/calc/TQHpOperations.h"

#include <array>
#include <cmath>

#include "tqlib/calc/TQHpCalculator.h"
#include "tqlib/calc/TQHpKeywords.h"

namespace {

using Stack = TQHpList<double>;
using Registers = double (&)[4];
using Operation = void (*)(Stack &stack, Registers registers);

constexpr double pi = 2.0 * 1.5707963267948966;
constexpr double e = 2.71;  // the vocabulary's constant has two decimals

// Below, `a` is the top of the stack and `b` the value under it.

template <double (*result)(double a, double b)>
void binary(Stack &stack, Registers /*registers*/) {
    double const a = stack.remove();
    double &b = stack.current();
    b = result(a, b);
}

template <double (*result)(double a)>
void unary(Stack &stack, Registers /*registers*/) {
    double &a = stack.current();
    a = result(a);
}

template <double const &value>
void constant(Stack &stack, Registers /*registers*/) {
    stack.add(value);
}

template <int number>
void store(Stack &stack, Registers registers) {
    registers[number] = stack.current();
}

template <int number>
void recall(Stack &stack, Registers registers) {
    stack.add(registers[number]);
}

void clearTop(Stack &stack, Registers /*registers*/) {
    stack.remove();
    if (stack.count() == 0) stack.add(0.0);
}

void clearAll(Stack &stack, Registers /*registers*/) {
    stack.empty();
    stack.add(0.0);
}

void swapTop(Stack &stack, Registers /*registers*/) {
    double const a = stack.remove();
    double const b = stack.remove();
    stack.add(a);
    stack.add(b);
}

void doNothing(Stack & /*stack*/, Registers /*registers*/) {}

double sum(double a, double b) {
    return b + a;
}
double difference(double a, double b) {
    return b - a;
}
double product(double a, double b) {
    return b * a;
}
double quotient(double a, double b) {
    return b / a;
}
double power(double a, double b) {
    return std::pow(b, b < 0.0 ? std::floor(a) : a);
}
double remainderOfTop(double a, double b) {
    return std::fmod(a, b);
}
double square(double a) {
    return a * a;
}

// clang-format off
constexpr std::array<Operation, tqlib::detail::commandCount> operations = {
    nullptr,                    // 0: number
    nullptr,                    // 1: variable
    doNothing,                  // 2
    binary<sum>,                // 3: +
    binary<difference>,         // 4: -
    binary<product>,            // 5: *
    binary<quotient>,           // 6: /
    binary<power>,              // 7: POW
    binary<remainderOfTop>,     // 8: MOD
    unary<std::exp>,            // 9: EXP
    unary<std::log>,            // 10: LN
    unary<std::log10>,          // 11: LOG10
    unary<std::sin>,            // 12: SIN
    unary<std::cos>,            // 13: COS
    unary<std::tan>,            // 14: TAN
    unary<std::atan>,           // 15: ARCTAN
    unary<std::acos>,           // 16: ARCCOS
    unary<std::asin>,           // 17: ARCSIN
    unary<std::fabs>,           // 18: ABS
    unary<std::floor>,          // 19: FLOOR
    unary<std::ceil>,           // 20: CEIL
    unary<std::sqrt>,           // 21: SQRT
    unary<square>,              // 22: SQR
    clearTop,                   // 23: CLX
    clearAll,                   // 24: CLEAR
    swapTop,                    // 25: SWAP
    constant<pi>,          // 26: PI
    constant<e>,           // 27: E
    store<0>, store<1>, store<2>, store<3>,      // 28: STO_0 ... 31: STO_3
    recall<0>, recall<1>, recall<2>, recall<3>,  // 32: RCL_0 ... 35: RCL_3
};
// clang-format on

}  // namespace

void TQHpOperations::run(TQHpCalculator &calculator, TQHpBefehl const &command) {
    if (command.how() <= TQHpBefehl::pushVariable)
        calculator.stack_.add(command);
    else
        operations[static_cast<unsigned>(command.how())](calculator.stack_, calculator.registers_);
}
