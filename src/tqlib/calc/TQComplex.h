#pragma once

#include "tqlib/foundation/Export.h"

/// A complex number to be kept and copied: it has no arithmetic and doesn't show its parts.
class TQLIB_API TQComplex {
  public:
    /// A part that isn't given is 0.
    TQComplex() = default;
    TQComplex(double real) : real_(real) {}
    TQComplex(double real, double imaginary) : real_(real), imaginary_(imaginary) {}

  private:
    [[maybe_unused]] double real_ = 0.0;
    [[maybe_unused]] double imaginary_ = 0.0;
};
