#include "tqplatform/desktop/Dialog.h"

#include <algorithm>

#include "tqplatform/desktop/Button.h"
#include "tqplatform/desktop/ControlClasses.h"
#include "tqplatform/desktop/User.h"

namespace tqplatform {
namespace {

constexpr int unitsAcross = 4;  ///< dialog units of a letter
constexpr int unitsDown = 8;

RECT pixels(DialogRect const &units) {
    long const left = units.left * letterWidth / unitsAcross;
    long const top = units.top * letterHeight / unitsDown;
    return {left, top, left + units.width * letterWidth / unitsAcross,
            top + units.height * letterHeight / unitsDown};
}

LRESULT codeOf(HWND control, unsigned int key = 0) {
    return SendMessageA(control, WM_GETDLGCODE, key, 0);
}

bool isButton(HWND control) {
    return (codeOf(control) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

bool isReachable(HWND control) {
    return IsWindowEnabled(control) != 0 && IsWindowVisible(control) != 0;
}

bool isTabStop(HWND control) {
    auto const window = Window::find(control);
    return window != nullptr && window->has(WS_TABSTOP) && isReachable(control);
}

bool canTakeArrow(HWND control) {
    return isReachable(control) && (codeOf(control) & DLGC_STATIC) == 0;
}

/// The controls of a dialog from the one behind `from` on, round to `from` itself.
std::vector<HWND> ring(HWND dialog, HWND from, bool backward = false) {
    auto const window = Window::find(dialog);
    std::vector<HWND> order = window == nullptr ? std::vector<HWND>() : window->children();
    if (backward) std::ranges::reverse(order);
    auto const place = std::ranges::find(order, from);
    if (place != order.end()) std::rotate(order.begin(), place + 1, order.end());
    return order;
}

template <class Condition>
HWND firstOf(std::vector<HWND> const &controls, Condition const &fits) {
    auto const found = std::ranges::find_if(controls, fits);
    return found == controls.end() ? nullptr : *found;
}

void moveFocus(HWND dialog, bool backward) {
    focusControl(firstOf(ring(dialog, GetFocus(), backward), isTabStop));
}

// A group begins with a control of the style WS_GROUP and ends in front of the next one.
std::vector<HWND> groupOf(HWND dialog, HWND control) {
    std::vector<HWND> group;
    for (HWND const member : ring(dialog, nullptr)) {
        auto const window = Window::find(member);
        if (window != nullptr && window->has(WS_GROUP)) {
            if (std::ranges::find(group, control) != group.end()) break;
            group.clear();
        }
        group.push_back(member);
    }
    return group;
}

void moveInGroup(HWND dialog, bool backward) {
    std::vector<HWND> order = groupOf(dialog, GetFocus());
    if (backward) std::ranges::reverse(order);
    auto const place = std::ranges::find(order, GetFocus());
    if (place == order.end()) return;
    std::rotate(order.begin(), place + 1, order.end());
    focusControl(firstOf(order, canTakeArrow));
}

void command(HWND dialog, int id) {
    SendMessageA(dialog, WM_COMMAND, joinWords(static_cast<unsigned int>(id), BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

void pressReturn(HWND dialog) {
    auto const window = Window::findAs<Dialog>(dialog);
    HWND const button = window == nullptr ? nullptr : window->defaultButton();
    if (button == nullptr)
        command(dialog, IDOK);
    else
        SendMessageA(button, BM_CLICK, 0, 0);
}

void pressEscape(HWND dialog) {
    HWND const button = GetDlgItem(dialog, IDCANCEL);
    if (button == nullptr || IsWindowEnabled(button) != 0) command(dialog, IDCANCEL);
}

// A letter that two controls share only leads from the one to the other.
bool followMnemonic(HWND dialog, char letter) {
    auto const hasIt = [=](HWND control) {
        auto const window = Window::find(control);
        return window != nullptr && isReachable(control) &&
               (isButton(control) || (codeOf(control) & DLGC_STATIC) != 0) &&
               mnemonicOf(window->text()) == toLower1252(letter);
    };
    std::vector<HWND> const order = ring(dialog, GetFocus());
    HWND const control = firstOf(order, hasIt);
    if (letter == '\0' || control == nullptr) return false;
    bool const isUnique = std::ranges::count_if(order, hasIt) == 1;
    if (!isButton(control)) {
        focusControl(firstOf(ring(dialog, control), isTabStop));
        return true;
    }
    focusControl(control);
    if (isUnique) SendMessageA(control, BM_CLICK, 0, 0);
    return true;
}

bool pressKey(HWND dialog, unsigned int key) {
    LRESULT const code = codeOf(GetFocus(), key);
    if ((code & DLGC_WANTALLKEYS) != 0) return false;
    switch (key) {
        case VK_TAB:
            moveFocus(dialog, isShiftDown());
            return true;
        case VK_RETURN:
            pressReturn(dialog);
            return true;
        case VK_ESCAPE:
            pressEscape(dialog);
            return true;
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            if ((code & DLGC_WANTARROWS) != 0) return false;
            moveInGroup(dialog, key == VK_LEFT || key == VK_UP);
            return true;
        default:
            return false;
    }
}

}  // namespace

char mnemonicOf(std::string_view caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] != '&') return toLower1252(caption[i + 1]);
        ++i;
    }
    return '\0';
}

std::string withoutMnemonic(std::string_view caption) {
    std::string shown;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && i + 1 < caption.size()) ++i;
        shown += caption[i];
    }
    return shown;
}

bool isIn(HWND window, HWND dialog) {
    while (window != nullptr && window != dialog)
        window = GetParent(window);
    return window == dialog;
}

void focusControl(HWND control) {
    if (control == nullptr) return;
    SetFocus(control);
    if ((codeOf(control) & DLGC_HASSETSEL) != 0) SendMessageA(control, EM_SETSEL, 0, -1);
}

HWND Dialog::defaultButton() const {
    HWND const focus = GetFocus();
    if (GetParent(focus) == handle() && isButton(focus)) return focus;
    HWND const button = GetDlgItem(handle(), default_);
    return default_ != 0 && button != nullptr && isButton(button) ? button : nullptr;
}

LRESULT Dialog::receive(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case DM_SETDEFID:
            setDefault(static_cast<int>(first));
            return 1;
        case DM_GETDEFID:
            return default_ == 0 ? 0
                                 : static_cast<LRESULT>(
                                       joinWords(static_cast<unsigned int>(default_), DC_HASDEFID));
        case WM_NEXTDLGCTL:
            if (second != 0)
                focusControl(reinterpret_cast<HWND>(first));
            else
                moveFocus(handle(), first != 0);
            return 0;
        case WM_INITDIALOG:
            return 1;
        case WM_CLOSE:
            pressEscape(handle());
            return 0;
        default:
            return Window::receive(message, first, second);
    }
}

void Dialog::setDefault(int id) {
    for (int const button : {default_, id}) {
        HWND const control = GetDlgItem(handle(), button);
        unsigned int const style = button == id ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        if (button != 0 && isButton(control)) SendMessageA(control, BM_SETSTYLE, style, 1);
    }
    default_ = id;
}

HWND createDialog(DialogTemplate const &description, HWND owner) {
    WindowGuard dialog(createWindow("#32770", {description.title, description.style & ~WS_CHILD,
                                               pixels(description.place), owner, 0}));
    int defaultId = 0;
    for (ControlTemplate const &control : description.controls) {
        HWND const made = createControl(control, pixels(control.place), dialog.get());
        if (made == nullptr) return nullptr;
        if (defaultId == 0 && (codeOf(made) & DLGC_DEFPUSHBUTTON) != 0) defaultId = control.id;
    }
    SendMessageA(dialog.get(), DM_SETDEFID, static_cast<WPARAM>(defaultId), 0);
    return dialog.release();
}

}  // namespace tqplatform

int IsDialogMessage(HWND dialog, MSG const *message) {
    using namespace tqplatform;
    if (message == nullptr || IsWindow(dialog) == 0 || !isIn(message->hwnd, dialog)) return 0;
    auto const letter = static_cast<char>(message->wParam);
    switch (message->message) {
        case WM_KEYDOWN:
            return pressKey(dialog, static_cast<unsigned int>(message->wParam)) ? 1 : 0;
        case WM_SYSCHAR:
            return followMnemonic(dialog, letter) ? 1 : 0;
        case WM_CHAR:
            if ((codeOf(message->hwnd) & DLGC_WANTCHARS) != 0) return 0;
            return followMnemonic(dialog, letter) ? 1 : 0;
        default:
            return 0;
    }
}

int EndDialog(HWND dialog, int result) {
    auto const window = tqplatform::Window::findAs<tqplatform::Dialog>(dialog);
    if (window == nullptr) return 0;
    if (!window->isEnded) window->result = result;
    window->isEnded = true;
    return 1;
}
