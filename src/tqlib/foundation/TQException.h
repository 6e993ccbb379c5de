#pragma once

#include "tqlib/foundation/Export.h"

/// The scope of an exception type that several classes throw.
class TQException {
  public:
    /// Thrown by value by lists and by the calculator when an element is asked of an empty list.
    /// The type alone is the information.
    class TQLIB_API EMPTY_LIST {};

    /// An exception scope has no state.
    TQException() = default;
    TQException(TQException const &) = default;

    /// Copies nothing: there is nothing to copy.
    TQLIB_API TQException &operator=(TQException const &other);
};
