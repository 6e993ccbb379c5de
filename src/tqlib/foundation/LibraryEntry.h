#pragma once

#include "tqplatform/kernel/Module.h"

namespace tqlib::detail {

/// The library's entry function. On process attach it links `instance` into the framework's chain
/// of modules; on process detach it undoes that; for all other reasons it does nothing. `reserved`
/// is not used. The result is 1, or 0 if the framework refuses the module: nothing has happened
/// then.
///
/// The library's constructor and destructor functions call it with the library's own module.
int libraryEntry(HINSTANCE instance, unsigned int reason, void *reserved);

/// Nothing; its name lets the linker take the entry function out of a static library.
extern "C" char const tqlibEntry;

}  // namespace tqlib::detail
