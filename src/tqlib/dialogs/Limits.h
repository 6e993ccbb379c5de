#pragma once

#include "tqlib/foundation/Resources.h"

namespace tqlib::detail {

/// What is to be said of a value: the number of a string resource, 0 for nothing.
struct Verdict {
    unsigned int message;
    bool isError;
};

/// Holds a value against limits, in the order in which they stand; the first that it breaks tells.
template <class Value>
Verdict judge(Value value, Value hardMin, Value hardMax, Value softMin, Value softMax) {
    if (value < hardMin) return {valueTooSmall, true};
    if (value > hardMax) return {valueTooLarge, true};
    if (value < softMin) return {valueUnusuallySmall, false};
    if (value > softMax) return {valueUnusuallyLarge, false};
    return {0, false};
}

}  // namespace tqlib::detail
