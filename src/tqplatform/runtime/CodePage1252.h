#pragma once

// Letters of the code page Windows-1252, in which the library's texts are held.

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// The lower-case letter of `c`, or `c` itself where it has none.
TQPLATFORM_API char toLower1252(char c);

}  // namespace tqplatform
