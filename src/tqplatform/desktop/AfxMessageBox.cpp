#include "tqplatform/desktop/AfxMessageBox.h"

#include "tqplatform/desktop/User.h"

int AfxMessageBox(char const *text, unsigned int style, unsigned int /*help*/) {
    constexpr unsigned int picture = 0xF0;
    if ((style & picture) == 0) style |= MB_ICONEXCLAMATION;
    return MessageBoxA(nullptr, text, nullptr, style);
}
