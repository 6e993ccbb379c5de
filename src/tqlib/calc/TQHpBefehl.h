#pragma once

#include <cstdint>

#include "tqlib/foundation/Export.h"

/// A variable that a calculator knows: the caller's name and the caller's double. Neither is copied
/// or freed.
struct TQHpVariable {
    char const *name;
    double *value;
};

/// One compiled command of the calculator (Befehl is the German word for command).
class TQLIB_API TQHpBefehl {
  public:
    /// Command numbers of the values; the numbers of the keywords stand in the calculator's table.
    static constexpr int pushNumber = 0;    ///< pushes a literal
    static constexpr int pushVariable = 1;  ///< pushes what a variable points at
    static constexpr int doNothing = 2;     ///< does nothing

    /// The command that does nothing; a command without a literal; one with it.
    TQHpBefehl() : TQHpBefehl(doNothing) {}
    TQHpBefehl(int how) : TQHpBefehl(how, 0.0) {}
    TQHpBefehl(int how, double value) : how_(how), value_(value), variable_(nullptr) {}

    /// A command on `variable`, an entry of a calculator's list, which must outlive the command.
    TQHpBefehl(int how, TQHpVariable *variable) : how_(how), value_(0.0), variable_(variable) {}

    /// The literal of a number, or what the variable's double holds at this moment; 0.0 for every
    /// other command.
    operator double() const {
        if (how_ == pushNumber) return value_;
        bool const bound =
            how_ == pushVariable && variable_ != nullptr && variable_->value != nullptr;
        return bound ? *variable_->value : 0.0;
    }

    /// The command number.
    int how() const { return how_; }

  private:
    std::int32_t how_;
    double value_;
    TQHpVariable *variable_;
};
