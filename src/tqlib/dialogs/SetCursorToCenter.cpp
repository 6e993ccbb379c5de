#include "tqlib/dialogs/SetCursorToCenter.h"

#include "tqplatform/desktop/CWnd.h"
#include "tqplatform/desktop/User.h"

void SetCursorToCenter(CWnd *window) {
    RECT place{};
    if (window != nullptr) window->GetWindowRect(&place);
    SetCursorPos(static_cast<int>((place.left + place.right) / 2),
                 static_cast<int>((place.top + place.bottom) / 2));
}
