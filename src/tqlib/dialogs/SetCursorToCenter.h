#pragma once

#include "tqlib/foundation/Export.h"

class CWnd;

/// Puts the mouse pointer in the middle of a window, rounded towards zero. A null window, and one
/// without a place, stand at (0, 0).
TQLIB_API void SetCursorToCenter(CWnd *window);
