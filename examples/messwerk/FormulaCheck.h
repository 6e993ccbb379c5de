#pragma once

// The calculator takes any text: a word that it doesn't know is 0, and the 0 that lies on a new
// stack serves as a missing operand. A mistyped expression would give wrong numbers without a
// word. So each expression is checked before the first row.

#include "Column.h"
#include "Names.h"

namespace messwerk {

/// Throws UsageError unless every word of `formula` is a keyword, a number or the name of one of
/// the number columns in `names`, every operation finds its operands, and exactly one value is
/// left.
void checkFormula(Formula const &formula, Names const &names);

}  // namespace messwerk
