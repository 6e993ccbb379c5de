#pragma once

#include <string_view>

#include "tqplatform/desktop/DialogTemplate.h"
#include "tqplatform/desktop/Window.h"

namespace tqplatform {

/// Makes a window of a class, "EDIT", "BUTTON", "STATIC", "COMBOBOX" or "#32770" in letters of
/// either case. Null for another class, and for a parent that isn't there.
TQPLATFORM_API HWND createWindow(std::string_view className, WindowDescription const &description);

/// Makes a control of a template in `dialog`; null as above.
HWND createControl(ControlTemplate const &control, RECT const &place, HWND dialog);

}  // namespace tqplatform
