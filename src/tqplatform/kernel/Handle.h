#pragma once

// Handles: what a caller holds of a thing of the system, such as a child process, until it closes
// it.

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// What a handle points to. Each kind of thing has a class of its own, whose destructor gives back
/// what it holds.
class TQPLATFORM_API Handle {
  public:
    Handle(Handle const &) = delete;
    Handle &operator=(Handle const &) = delete;
    virtual ~Handle();

  protected:
    Handle() = default;
};

}  // namespace tqplatform

/// A handle belongs to the caller that got it, who closes it once. Null is no handle.
using HANDLE = tqplatform::Handle *;

/// Closes `handle`, which is gone then. The result is 1, or 0 for null.
TQPLATFORM_API int CloseHandle(HANDLE handle);
