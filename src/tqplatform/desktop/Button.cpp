#include "tqplatform/desktop/Button.h"

namespace tqplatform {
namespace {

constexpr unsigned int kinds = 0xF;  ///< the part of the style that tells the kind of button

}  // namespace

LRESULT Button::receive(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_LBUTTONDOWN:
            SetFocus(handle());
            click();
            return 0;
        case BM_CLICK:
            click();
            return 0;
        case WM_CHAR:
            if (first == VK_SPACE) click();
            return 0;
        case BM_SETSTYLE:
            setStyle((style() & ~kinds) | (static_cast<unsigned int>(first) & kinds));
            return 0;
        case WM_GETDLGCODE:
            return (style() & kinds) == BS_DEFPUSHBUTTON ? DLGC_DEFPUSHBUTTON
                                                         : DLGC_UNDEFPUSHBUTTON;
        default:
            return Window::receive(message, first, second);
    }
}

void Button::click() {
    if (!has(WS_DISABLED)) notify(BN_CLICKED);
}

}  // namespace tqplatform
