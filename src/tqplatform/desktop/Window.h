#pragma once

// Windows in memory, the handles by which they are known, and messages to them.
//
// All windows belong to one thread. A message may do anything, to windows as well: whoever sends
// one asks afterwards whether a window is still there. The object of a window lives on until the
// last message to it has returned.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tqplatform/desktop/Messages.h"
#include "tqplatform/graphics/Geometry.h"
#include "tqplatform/runtime/Export.h"

namespace tqplatform {
struct WindowTag;  // never defined: a handle is a number
class Window;
}  // namespace tqplatform

/// The handle of a window; null is none. A handle isn't used again once its window is gone, and is
/// harmless then.
using HWND = tqplatform::WindowTag *;

/// The parameters of messages and their results.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// A message on its way.
struct MSG {
    HWND hwnd;
    unsigned int message;
    WPARAM wParam;
    LPARAM lParam;
};

/// Sends a message to `window` and gives its answer: 0 for a window that doesn't exist. Messages
/// that are sent while others are under way nest, 200 deep at most: deeper ones are dropped with 0.
TQPLATFORM_API LRESULT SendMessageA(HWND window, unsigned int message, WPARAM first, LPARAM second);

/// Queues a message for the next turn of a modal loop: 1, or 0 for a window that doesn't exist.
TQPLATFORM_API int PostMessageA(HWND window, unsigned int message, WPARAM first, LPARAM second);

/// Copies a window's text to `target`, cut so that it fits `size` bytes with a NUL, and gives the
/// number of characters copied; the number there are; sets the text and gives 1. A window that
/// doesn't exist has an empty text and takes none: 0.
TQPLATFORM_API int GetWindowTextA(HWND window, char *target, int size);
TQPLATFORM_API int GetWindowTextLengthA(HWND window);
TQPLATFORM_API int SetWindowTextA(HWND window, char const *text);

/// Whether there is such a window; whether it is enabled, and itself and its parents are visible.
TQPLATFORM_API int IsWindow(HWND window);
TQPLATFORM_API int IsWindowEnabled(HWND window);
TQPLATFORM_API int IsWindowVisible(HWND window);

/// Enables or disables a window, which loses the focus with that. The result is 1 if it was
/// disabled before, else 0.
TQPLATFORM_API int EnableWindow(HWND window, int enable);

/// Ends a window and all in it: 1, or 0 if there is none.
TQPLATFORM_API int DestroyWindow(HWND window);

/// The parent of a window or the owner of a dialog, or null.
TQPLATFORM_API HWND GetParent(HWND window);

/// The first child of `parent` with an identifier, or null; the identifier of a window, or 0.
TQPLATFORM_API HWND GetDlgItem(HWND parent, int id);
TQPLATFORM_API int GetDlgCtrlID(HWND window);

/// The place of a window on the desktop, in pixels: 1, or 0 and all zero if there is none.
TQPLATFORM_API int GetWindowRect(HWND window, RECT *rect);

/// Gives the focus to a window, null for none, and the window it is in becomes the active one. The
/// result is the window that had it; null also for a window that can't have it.
TQPLATFORM_API HWND SetFocus(HWND window);

/// The window with the focus; the active one among those without a parent. Null for none.
TQPLATFORM_API HWND GetFocus();
TQPLATFORM_API HWND GetActiveWindow();
TQPLATFORM_API HWND SetActiveWindow(HWND window);

namespace tqplatform {

/// What a window is made from. Texts are in Windows-1252; the place is in pixels from the parent's
/// upper left corner.
struct WindowDescription {
    std::string_view text;
    unsigned int style = 0;
    RECT rect{};
    HWND parent = nullptr;
    unsigned int id = 0;
};

/// An object that stands for a window and gets its messages first.
class TQPLATFORM_API MessageHandler {
  public:
    MessageHandler() = default;
    MessageHandler(MessageHandler const &) = delete;
    MessageHandler &operator=(MessageHandler const &) = delete;
    virtual ~MessageHandler();

    /// Handles a message, as a rule by the window's own behaviour, Window::receive().
    virtual LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) = 0;

    /// Sees the user's input for the window and those in it before they do; not 0 to keep it.
    virtual int PreTranslateMessage(MSG *message) = 0;

    /// The window has gone out of the desktop.
    virtual void windowDestroyed() = 0;
};

/// A window, with the behaviour that all windows share.
class TQPLATFORM_API Window {
  public:
    explicit Window(WindowDescription const &description);
    Window(Window const &) = delete;
    Window &operator=(Window const &) = delete;
    virtual ~Window();

    /// Puts a new window into the desktop, which owns it, and gives its handle; null if its parent
    /// isn't there or is just being ended.
    static HWND add(std::shared_ptr<Window> window);

    /// The window of a handle, or null.
    static std::shared_ptr<Window> find(HWND handle);

    /// The window of a handle, if it is of the class `Kind`, or null.
    template <class Kind>
    static std::shared_ptr<Kind> findAs(HWND handle) {
        return std::dynamic_pointer_cast<Kind>(find(handle));
    }

    /// What the window does with a message by itself, and its answer.
    virtual LRESULT receive(unsigned int message, WPARAM first, LPARAM second);

    /// The text, valid until it changes.
    virtual std::string_view text() const { return text_; }
    virtual void setText(std::string_view text) { text_ = text; }

    HWND handle() const { return handle_; }
    HWND parent() const { return parent_; }
    unsigned int id() const { return id_; }
    unsigned int style() const { return style_; }
    void setStyle(unsigned int style) { style_ = style; }
    bool has(unsigned int styles) const { return (style_ & styles) == styles; }
    RECT const &rect() const { return rect_; }

    /// Whether DestroyWindow() has begun.
    bool isEnding() const { return isEnding_; }

    /// The windows in this one, in the order of their creation, which is also the tab order.
    std::vector<HWND> const &children() const { return children_; }

    /// The object that stands for the window, or null. Not owned.
    MessageHandler *handler() const { return handler_; }
    void setHandler(MessageHandler *handler) { handler_ = handler; }

    /// An object that stands for the window for want of another. Owned.
    std::unique_ptr<MessageHandler> temporary;

  protected:
    /// Sends the parent a notification.
    void notify(unsigned int code);

  private:
    friend struct Desktop;

    std::string text_;
    HWND handle_ = nullptr;
    HWND parent_;
    unsigned int id_;
    unsigned int style_;
    RECT rect_;
    bool isEnding_ = false;
    std::vector<HWND> children_;
    MessageHandler *handler_ = nullptr;
};

/// Ends a window on every way out of a scope, unless it is released.
class WindowGuard {
  public:
    explicit WindowGuard(HWND window) : window_(window) {}
    WindowGuard(WindowGuard const &) = delete;
    WindowGuard &operator=(WindowGuard const &) = delete;
    ~WindowGuard() { DestroyWindow(window_); }

    HWND get() const { return window_; }
    HWND release() { return std::exchange(window_, nullptr); }

  private:
    HWND window_;
};

/// Takes the next message from the queue; false if there is none.
TQPLATFORM_API bool takePosted(MSG &message);

/// Whether the Shift key is down at the present input.
TQPLATFORM_API bool isShiftDown();
TQPLATFORM_API void setShiftDown(bool down);

}  // namespace tqplatform
