#pragma once

// Windows in memory, the handles by which they are known, and messages to them.

#include <cstdint>
#include <string>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {
struct WindowTag;  // never defined: a handle is a number
}

/// The handle of a window; null is none. A handle isn't used again once its window is gone.
using HWND = tqplatform::WindowTag *;

/// The parameters of messages and their results.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// Sets the text; the second parameter is its address. The result is 1.
inline constexpr unsigned int WM_SETTEXT = 12;

/// Copies the text to the block at the second parameter, cut so that it fits the size in the first
/// one with a NUL. The result is the number of characters copied.
inline constexpr unsigned int WM_GETTEXT = 13;

/// The number of characters of the text.
inline constexpr unsigned int WM_GETTEXTLENGTH = 14;

/// Sends a message to `window` and gives its answer: 0 for a window that doesn't exist.
TQPLATFORM_API LRESULT SendMessageA(HWND window, unsigned int message, WPARAM first, LPARAM second);

/// Shows a message box over `owner`, null for none, and gives the identifier of the button that was
/// pressed. A null `title` is an empty one.
TQPLATFORM_API int MessageBoxA(HWND owner, char const *text, char const *title, unsigned int style);

namespace tqplatform {

/// A window. It has its handle for as long as it lives.
class TQPLATFORM_API Window {
  public:
    Window();
    Window(Window const &) = delete;
    Window &operator=(Window const &) = delete;
    virtual ~Window();

    HWND handle() const { return handle_; }

    /// What the window does with a message: by itself it knows those of its text.
    virtual LRESULT receive(unsigned int message, WPARAM first, LPARAM second);

    /// The window of a handle, or null.
    static Window *find(HWND handle);

  private:
    std::string text_;
    HWND handle_;
};

}  // namespace tqplatform
