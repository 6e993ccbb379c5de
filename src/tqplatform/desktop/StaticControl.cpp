#include "tqplatform/desktop/StaticControl.h"

namespace tqplatform {

LRESULT StaticControl::receive(unsigned int message, WPARAM first, LPARAM second) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : Window::receive(message, first, second);
}

}  // namespace tqplatform
