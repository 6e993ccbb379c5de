#include <algorithm>
#include <iterator>

#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/desktop/User.h"

namespace tqplatform {
namespace {

/// Keys that type a character as well, the one of their own number.
constexpr unsigned int typingKeys[] = {VK_BACK, VK_TAB, VK_RETURN, VK_ESCAPE, VK_SPACE};

/// The key of characters that no key of the published ones types.
constexpr unsigned int otherKey = 0xE7;

unsigned int keyOf(char c) {
    if (c >= 'a' && c <= 'z') return static_cast<unsigned int>(c - 'a' + 'A');
    bool const isKey = (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ';
    return isKey ? static_cast<unsigned int>(c) : otherKey;
}

HWND targetOf(HWND dialog) {
    HWND const focus = GetFocus();
    return focus != nullptr && isIn(focus, dialog) ? focus : dialog;
}

// The objects of the window and of those it stands in may keep a message.
bool isKept(HWND dialog, MSG &message) {
    for (HWND window = message.hwnd; window != nullptr; window = GetParent(window)) {
        auto const found = Window::find(window);
        auto *const handler = found == nullptr ? nullptr : found->handler();
        if (handler != nullptr && handler->PreTranslateMessage(&message) != 0) return true;
        if (window == dialog) break;
    }
    return IsDialogMessage(dialog, &message) != 0;
}

// True if the message went to its window.
bool deliver(HWND dialog, MSG message) {
    if (isKept(dialog, message)) return false;
    SendMessageA(message.hwnd, message.message, message.wParam, message.lParam);
    return true;
}

constexpr LPARAM once = 1;  ///< the repeat count of a key

void typeKey(HWND dialog, unsigned int key, char character, bool withAlt) {
    HWND const target = targetOf(dialog);
    unsigned int const down = withAlt ? WM_SYSKEYDOWN : WM_KEYDOWN;
    if (!deliver(dialog, {target, down, key, once}) || character == '\0') return;
    if (IsWindow(target) == 0) return;
    deliver(dialog,
            {target, withAlt ? WM_SYSCHAR : WM_CHAR, static_cast<unsigned char>(character), once});
}

void leave(HWND dialog) {
    // An open list takes the first Escape for itself.
    bool const isTaken =
        (SendMessageA(targetOf(dialog), WM_GETDLGCODE, VK_ESCAPE, 0) & DLGC_WANTALLKEYS) != 0;
    if (isTaken) typeKey(dialog, VK_ESCAPE, '\0', false);
    typeKey(dialog, VK_ESCAPE, '\0', false);
    EndDialog(dialog, IDCANCEL);  // for one that doesn't let go
}

void click(HWND dialog, HWND window) {
    bool const canBe =
        isIn(window, dialog) && IsWindowEnabled(window) != 0 && IsWindowVisible(window) != 0;
    if (canBe) deliver(dialog, {window, WM_LBUTTONDOWN, 1, 0});
}

void act(HWND dialog, Input const &input) {
    setShiftDown(input.shift);
    switch (input.kind) {
        case Input::Kind::key: {
            bool const types = std::ranges::find(typingKeys, input.key) != std::end(typingKeys);
            typeKey(dialog, input.key, types ? static_cast<char>(input.key) : '\0', input.alt);
            break;
        }
        case Input::Kind::character:
            typeKey(dialog, keyOf(input.character), input.character, input.alt);
            break;
        case Input::Kind::click:
            click(dialog, input.window);
            break;
        case Input::Kind::close:
            deliver(dialog, {dialog, WM_SYSCOMMAND, SC_CLOSE, 0});
            break;
        case Input::Kind::leave:
            leave(dialog);
            break;
    }
    setShiftDown(false);
}

/// Keeps the user at a dialog for as long as its loop runs.
class UsersTurn {
  public:
    explicit UsersTurn(HWND dialog) : dialog_(dialog) { user().begin(dialog); }
    UsersTurn(UsersTurn const &) = delete;
    UsersTurn &operator=(UsersTurn const &) = delete;
    ~UsersTurn() { user().end(dialog_); }

  private:
    HWND dialog_;
};

/// Makes a dialog the active window for as long as it lives.
class Active {
  public:
    explicit Active(HWND dialog) : before_(SetActiveWindow(dialog)) {}
    Active(Active const &) = delete;
    Active &operator=(Active const &) = delete;
    ~Active() { SetActiveWindow(IsWindow(before_) != 0 ? before_ : nullptr); }

  private:
    HWND before_;
};

/// Keeps the owner of a dialog disabled for as long as it lives. It sends no messages: the owner
/// hasn't got the focus any more.
class DisabledOwner {
  public:
    explicit DisabledOwner(HWND dialog)
        : owner_(GetParent(dialog)), wasDisabled_(EnableWindow(owner_, 0) != 0) {}
    DisabledOwner(DisabledOwner const &) = delete;
    DisabledOwner &operator=(DisabledOwner const &) = delete;
    ~DisabledOwner() {
        if (!wasDisabled_) EnableWindow(owner_, 1);
    }

  private:
    HWND owner_;
    bool wasDisabled_;
};

void initialise(Dialog const &dialog) {
    HWND const handle = dialog.handle();
    HWND first = nullptr;
    for (HWND const child : dialog.children()) {
        auto const control = Window::find(child);
        bool const fits = control->has(WS_TABSTOP | WS_VISIBLE) && !control->has(WS_DISABLED);
        if (fits && first == nullptr) first = child;
    }
    LRESULT const takesFirst =
        SendMessageA(handle, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), 0);
    if (takesFirst != 0) focusControl(first);
    if (IsWindow(handle) != 0 && !isIn(GetFocus(), handle)) SetFocus(handle);
}

void runLoop(Dialog const &window) {
    HWND const dialog = window.handle();
    DisabledOwner const owner(dialog);
    initialise(window);
    while (!window.isEnded && IsWindow(dialog) != 0) {
        MSG message{};
        if (takePosted(message))
            deliver(dialog, message);
        else
            act(dialog, user().next(dialog));
    }
}

}  // namespace

int runDialog(HWND dialog) {
    auto const window = Window::findAs<Dialog>(dialog);
    if (window == nullptr) return -1;
    UsersTurn const turn(dialog);
    HWND const focus = GetFocus();
    if (focus != nullptr && focus == window->parent()) SetFocus(nullptr);
    Active const active(dialog);
    // Not in a destructor: who is told of it may throw.
    auto const giveFocusBack = [=] { SetFocus(IsWindow(focus) != 0 ? focus : nullptr); };
    try {
        runLoop(*window);
    } catch (...) {
        giveFocusBack();
        throw;
    }
    giveFocusBack();
    return window->isEnded ? window->result : -1;
}

}  // namespace tqplatform
