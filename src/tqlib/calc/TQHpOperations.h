#pragma once

#include <vector>

#include "tqlib/calc/TQHpCalculator.h"
#include "tqlib/calc/TQHpKeywords.h"

/// What the calculator's commands do to its stack and registers.
struct TQHpOperations {
    using Stack = std::vector<double>;
    using Registers = double (&)[4];

    /// Carries out the command of a keyword. False if the stack has too few values; those already
    /// taken are gone then.
    using Operation = bool (*)(Stack &stack, Registers registers);

    /// The operations by command number; null for numbers and variables.
    static Operation const table[tqlib::detail::commandCount];

    /// Carries out any command, with the result of an operation.
    static bool run(TQHpCalculator &calculator, TQHpBefehl const &command) {
        if (command.how() > TQHpBefehl::pushVariable)
            return table[command.how()](calculator.stack_, calculator.registers_);
        calculator.stack_.push_back(command);
        return true;
    }
};
