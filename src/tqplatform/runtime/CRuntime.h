#pragma once

// Names of the desktop C runtime that POSIX doesn't have.

#include <mutex>

#include "tqplatform/runtime/Export.h"

/// The size in bytes of the open file `descriptor`, or -1 if it isn't an open file. A size beyond
/// the range of `long` gives -1 as well.
TQPLATFORM_API long _filelength(int descriptor);

/// Takes and gives back the lock of a stream. The owner may take it more than once.
TQPLATFORM_API void _mtlock(std::recursive_mutex *lock);
TQPLATFORM_API void _mtunlock(std::recursive_mutex *lock);
