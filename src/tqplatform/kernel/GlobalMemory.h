#pragma once

// Memory blocks that are known by handles.

#include <cstddef>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {
struct GlobalTag;  // never defined
}

/// The handle of a memory block, the caller's until GlobalFree().
using HGLOBAL = tqplatform::GlobalTag *;

/// GlobalAlloc() fills the block with zeros.
inline constexpr unsigned int GMEM_ZEROINIT = 0x40;

/// A new block of `size` bytes; null for lack of memory.
TQPLATFORM_API HGLOBAL GlobalAlloc(unsigned int flags, std::size_t size);

/// The address of a block, aligned for every type, until it is freed; null for null.
TQPLATFORM_API void *GlobalLock(HGLOBAL block);

/// Ends the use of the address. The result is 0: nobody holds the block any more.
TQPLATFORM_API int GlobalUnlock(HGLOBAL block);

/// Gives a block back. The result is null.
TQPLATFORM_API HGLOBAL GlobalFree(HGLOBAL block);
