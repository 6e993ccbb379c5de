#pragma once

// A reverse-Polish calculator on doubles.
//
//     TQHpCalculator calculator;
//     double celsius = 21.5;
//     calculator.addVariable("CELSIUS", &celsius);
//     calculator.calculate("CELSIUS 1.8 * 32 +");    // 70.7
//
// A text is a row of tokens with blanks between them, in any case: keywords, names of variables in
// capitals, numbers. What is none of these is the number that atof makes of it, 0.0 if none:
// INF and NAN are words like others.
// Keywords (a is the top of the stack, b the value under it; angles in radians):
//
//     + - * /              b + a, b - a, b * a, b / a
//     POW                  b to the power a; for a negative b to the power floor(a)
//     MOD                  the remainder of a divided by b: note the order
//     EXP LN LOG10         exponential, natural and decimal logarithm of a
//     SIN COS TAN ARCSIN ARCCOS ARCTAN
//     SQRT SQR ABS FLOOR CEIL
//     PI E                 3.141592653589793 and 2.71: two decimals, not Euler's number
//     CLX CLEAR SWAP       drop a; empty the stack; change a and b
//     STO_0 ... STO_3      copy a into a register
//     RCL_0 ... RCL_3      push a register
//
// The stack lasts from one calculation to the next; it begins with the value 0.0, and CLEAR and
// dropping the last value leave it so.

#include <cstdint>
#include <vector>

#include "tqlib/calc/TQHpBefehl.h"
#include "tqlib/calc/TQHpList.h"
#include "tqlib/foundation/Export.h"

namespace tqlib::detail {
struct TQHpToken;
}

/// The calculator. Arithmetic that has no result gives an infinity or a not-a-number, which goes on
/// the stack like any value. Not for copying, and for one thread at a time.
class TQLIB_API TQHpCalculator {
  public:
    /// A calculator with the one value 0.0 on its stack, registers of 0.0 and no variables.
    TQHpCalculator();

    /// Names and doubles of variables stay the caller's.
    ~TQHpCalculator();

    /// Compiles `text` and appends its commands to those that wait. Null counts as empty. Every
    /// text compiles: the result is always 0.
    int syntaxCheck(char const *text);

    /// Compiles `text` and runs all waiting commands, those ahead of it first; see reCalculate().
    double calculate(char const *text);

    /// Runs all waiting commands, each of which is consumed, and gives the top of the stack, which
    /// stays there. Throws TQException::EMPTY_LIST where a command finds too few values or the
    /// stack is empty at the end: the failing command and the values that it took are gone then,
    /// and the commands behind it wait for the next run or for clear().
    double reCalculate();

    /// Drops the waiting commands. Stack, registers and variables stay.
    void clear();

    /// Binds `name` to `value`. Both stay the caller's and must outlive the entry and every command
    /// compiled from it. A name with small letters, or one that is a keyword, is never reached from
    /// a text; of two entries of the same name the first in the list counts.
    void addVariable(char const *name, double *value);

    /// Remove the first entry of that name, or bound to that double; nothing if there is none.
    void deleteVariable(char const *name);
    void deleteVariable(double *value);

    /// The number of values on the stack.
    int stackSize() const { return static_cast<int>(stack_.size()); }

    /// The value `index` places below the top, which has index 0; 0.0 beyond the bottom.
    double stackValue(unsigned int index) const;

    /// Always 0: failures are thrown.
    int error() const { return error_; }

  private:
    friend struct TQHpOperations;

    TQLIB_INTERNAL double result() const;
    TQLIB_INTERNAL TQHpBefehl compile(tqlib::detail::TQHpToken token, char point);

    std::vector<double> stack_;  ///< the last one is the top
    TQHpList<TQHpVariable> variables_;
    TQHpList<TQHpBefehl> commands_;  ///< the next one first
    double registers_[4];
    std::int32_t error_;
};
