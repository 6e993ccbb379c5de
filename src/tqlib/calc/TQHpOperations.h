#pragma once

class TQHpBefehl;
class TQHpCalculator;

/// What the calculator's commands do to its stack and registers.
struct TQHpOperations {
    /// Carries out `command`. Throws TQException::EMPTY_LIST where the stack has too few values;
    /// those already taken are gone then.
    static void run(TQHpCalculator &calculator, TQHpBefehl const &command);
};
