#include "tqplatform/desktop/EditControl.h"

#include <cstring>

namespace tqplatform {
namespace {

void store(std::uintptr_t address, std::size_t place) {
    auto const value = static_cast<std::uint32_t>(place);
    if (address != 0) std::memcpy(reinterpret_cast<void *>(address), &value, sizeof value);
}

}  // namespace

LRESULT tellSelection(EditText const &line, WPARAM start, LPARAM end) {
    store(start, line.start());
    store(static_cast<std::uintptr_t>(end), line.end());
    return static_cast<LRESULT>(
        joinWords(static_cast<unsigned int>(line.start()), static_cast<unsigned int>(line.end())));
}

LRESULT EditControl::receive(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_CHAR:
            tell(line_.type(static_cast<char>(first)));
            return 0;
        case WM_KEYDOWN:
            tell(line_.press(static_cast<unsigned int>(first), isShiftDown()));
            return 0;
        case WM_SETFOCUS:
            notify(EN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            notify(EN_KILLFOCUS);
            return 0;
        case WM_LBUTTONDOWN:
            SetFocus(handle());
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS;
        default:
            return select(message, first, second);
    }
}

LRESULT EditControl::select(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case EM_GETSEL:
            return tellSelection(line_, first, second);
        case EM_SETSEL:
            line_.select(static_cast<std::intptr_t>(first), second);
            return 1;
        case EM_SCROLLCARET:
            return 1;
        case EM_REPLACESEL: {
            auto const *const given = reinterpret_cast<char const *>(second);
            tell(line_.replace(given == nullptr ? "" : given));
            return 0;
        }
        case EM_LIMITTEXT:
            line_.setLimit(first);
            return 0;
        case EM_GETLIMITTEXT:
            return static_cast<LRESULT>(line_.limit());
        default:
            return Window::receive(message, first, second);
    }
}

void EditControl::setText(std::string_view text) {
    line_.set(text);
    tell({true, false});
}

void EditControl::tell(EditText::Effect effect) {
    if (effect.cut) notify(EN_MAXTEXT);
    if (!effect.changed) return;
    notify(EN_UPDATE);
    notify(EN_CHANGE);
}

}  // namespace tqplatform
