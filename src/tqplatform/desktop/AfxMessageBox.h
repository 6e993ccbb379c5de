#pragma once

#include "tqplatform/runtime/Export.h"

/// Shows a message without a title and gives the identifier of the button that was pressed. A
/// `style` without a picture gets the exclamation mark. `help` is accepted and has no effect.
TQPLATFORM_API int AfxMessageBox(char const *text, unsigned int style = 0, unsigned int help = 0);
