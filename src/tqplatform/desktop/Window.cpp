#include "tqplatform/desktop/Window.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

#include "tqplatform/desktop/User.h"

namespace tqplatform {
namespace {

/// The windows of the process by the numbers of their handles.
struct WindowTable {
    std::unordered_map<HWND, Window *> windows;
    std::uintptr_t last = 0;  ///< number given out
};

// Never destroyed: windows may be static objects of an application.
WindowTable &windowTable() {
    static auto *const table = new WindowTable;
    return *table;
}

LRESULT copyOut(std::string const &text, WPARAM size, LPARAM target) {
    if (size == 0 || target == 0) return 0;
    auto *const block = reinterpret_cast<char *>(target);
    std::size_t const count = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(block, text.data(), count);
    block[count] = '\0';
    return static_cast<LRESULT>(count);
}

}  // namespace

Window::Window() : handle_(reinterpret_cast<HWND>(++windowTable().last)) {
    windowTable().windows.emplace(handle_, this);
}

Window::~Window() {
    windowTable().windows.erase(handle_);
}

Window *Window::find(HWND handle) {
    auto const found = windowTable().windows.find(handle);
    return found == windowTable().windows.end() ? nullptr : found->second;
}

LRESULT Window::receive(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_SETTEXT: {
            auto const *const text = reinterpret_cast<char const *>(second);
            text_ = text == nullptr ? "" : text;
            return 1;
        }
        case WM_GETTEXT:
            return copyOut(text_, first, second);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(text_.size());
        default:
            return 0;
    }
}

}  // namespace tqplatform

LRESULT SendMessageA(HWND window, unsigned int message, WPARAM first, LPARAM second) {
    auto *const target = tqplatform::Window::find(window);
    return target == nullptr ? 0 : target->receive(message, first, second);
}

int MessageBoxA(HWND /*owner*/, char const *text, char const *title, unsigned int style) {
    auto const orEmpty = [](char const *some) { return some == nullptr ? "" : some; };
    return tqplatform::user().answer({orEmpty(text), orEmpty(title), style});
}
