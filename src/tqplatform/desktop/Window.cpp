#include "tqplatform/desktop/Window.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <unordered_map>
#include <utility>

namespace tqplatform {

/// All windows of the process, and what there is one of.
struct Desktop {
    std::unordered_map<HWND, std::shared_ptr<Window>> windows;
    std::uintptr_t last = 0;  ///< number given out
    std::deque<MSG> posted;
    HWND focus = nullptr;
    HWND active = nullptr;
    int nesting = 0;  ///< messages under way
    bool shift = false;

    HWND add(std::shared_ptr<Window> window);
    void end(std::shared_ptr<Window> const &whole);
    void forget(Window &window);
};

namespace {

constexpr int deepestNesting = 200;

// Never destroyed: windows may be static objects of an application.
Desktop &desktop() {
    static auto *const only = new Desktop;
    return *only;
}

LRESULT copyOut(std::string_view text, WPARAM size, LPARAM target) {
    if (size == 0 || target == 0) return 0;
    auto *const block = reinterpret_cast<char *>(target);
    std::size_t const count = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(block, text.data(), count);
    block[count] = '\0';
    return static_cast<LRESULT>(count);
}

HWND topOf(HWND handle) {
    for (auto window = Window::find(handle); window; window = Window::find(window->parent())) {
        handle = window->handle();
        if (!window->has(WS_CHILD)) break;
    }
    return handle;
}

bool takesFocus(HWND handle) {
    return handle == nullptr || (IsWindowEnabled(handle) != 0 && IsWindow(handle) != 0);
}

}  // namespace

HWND Desktop::add(std::shared_ptr<Window> window) {
    auto const parent = Window::find(window->parent_);
    bool const isAlone = window->parent_ == nullptr;
    if (!isAlone && (parent == nullptr || parent->isEnding_)) return nullptr;
    // A dialog's owner isn't what it stands in.
    bool const isChild = !isAlone && window->has(WS_CHILD);
    if (isChild) parent->children_.reserve(parent->children_.size() + 1);
    auto const handle = reinterpret_cast<HWND>(++last);
    window->handle_ = handle;
    windows.emplace(handle, std::move(window));
    if (isChild) parent->children_.push_back(handle);
    return handle;
}

// Tells a window ahead of those in it, and forgets it after them. They may nest too deep for calls,
// and there may be no memory.
void Desktop::end(std::shared_ptr<Window> const &whole) {
    auto const begin = [](Window &window) {
        window.isEnding_ = true;
        SendMessageA(window.handle_, WM_DESTROY, 0, 0);
    };
    begin(*whole);
    for (auto window = whole; window != nullptr;) {
        auto &children = window->children_;
        auto const child = children.empty() ? nullptr : Window::find(children.back());
        if (child != nullptr && !child->isEnding_) {
            window = child;
            begin(*window);
        } else if (!children.empty()) {
            children.pop_back();
        } else {
            auto const parent = window == whole ? nullptr : Window::find(window->parent_);
            forget(*window);
            if (window->handler_ != nullptr)
                std::exchange(window->handler_, nullptr)->windowDestroyed();
            window = parent;
        }
    }
}

void Desktop::forget(Window &window) {
    HWND const handle = window.handle_;
    if (auto const parent = Window::find(window.parent_)) std::erase(parent->children_, handle);
    std::erase_if(posted, [=](MSG const &message) { return message.hwnd == handle; });
    if (focus == handle) focus = nullptr;
    if (active == handle) active = nullptr;
    window.parent_ = nullptr;
    windows.erase(handle);
}

MessageHandler::~MessageHandler() = default;

Window::Window(WindowDescription const &description)
    : text_(description.text),
      parent_(description.parent),
      id_(description.id),
      style_(description.style),
      rect_(description.rect) {}

Window::~Window() = default;

HWND Window::add(std::shared_ptr<Window> window) {
    return window == nullptr ? nullptr : desktop().add(std::move(window));
}

std::shared_ptr<Window> Window::find(HWND handle) {
    auto const &windows = desktop().windows;
    auto const found = windows.find(handle);
    return found == windows.end() ? nullptr : found->second;
}

LRESULT Window::receive(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_SETTEXT: {
            auto const *const given = reinterpret_cast<char const *>(second);
            setText(given == nullptr ? "" : given);
            return 1;
        }
        case WM_GETTEXT:
            return copyOut(text(), first, second);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(text().size());
        case WM_SYSCOMMAND:
            if (first == SC_CLOSE) SendMessageA(handle_, WM_CLOSE, 0, 0);
            return 0;
        case WM_CLOSE:
            DestroyWindow(handle_);
            return 0;
        default:
            return 0;
    }
}

void Window::notify(unsigned int code) {
    SendMessageA(parent_, WM_COMMAND, joinWords(id_, code), reinterpret_cast<LPARAM>(handle_));
}

bool takePosted(MSG &message) {
    auto &posted = desktop().posted;
    if (posted.empty()) return false;
    message = posted.front();
    posted.pop_front();
    return true;
}

bool isShiftDown() {
    return desktop().shift;
}

void setShiftDown(bool down) {
    desktop().shift = down;
}

}  // namespace tqplatform

using tqplatform::desktop;
using tqplatform::Window;

LRESULT SendMessageA(HWND window, unsigned int message, WPARAM first, LPARAM second) {
    auto const target = Window::find(window);  // held while the message is under way
    struct Nested {
        int &depth;
        explicit Nested(int &counter) : depth(counter) { ++depth; }
        Nested(Nested const &) = delete;
        Nested &operator=(Nested const &) = delete;
        ~Nested() { --depth; }
    } const nested(desktop().nesting);
    if (target == nullptr || nested.depth > tqplatform::deepestNesting) return 0;
    if (auto *const handler = target->handler()) return handler->WindowProc(message, first, second);
    return target->receive(message, first, second);
}

int PostMessageA(HWND window, unsigned int message, WPARAM first, LPARAM second) {
    if (IsWindow(window) == 0) return 0;
    desktop().posted.push_back({window, message, first, second});
    return 1;
}

int GetWindowTextA(HWND window, char *target, int size) {
    if (target == nullptr || size <= 0) return 0;
    *target = '\0';
    return static_cast<int>(SendMessageA(window, WM_GETTEXT, static_cast<WPARAM>(size),
                                         reinterpret_cast<LPARAM>(target)));
}

int GetWindowTextLengthA(HWND window) {
    return static_cast<int>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0));
}

int SetWindowTextA(HWND window, char const *text) {
    return static_cast<int>(SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

int IsWindow(HWND window) {
    return desktop().windows.contains(window) ? 1 : 0;
}

int IsWindowEnabled(HWND window) {
    auto const found = Window::find(window);
    return found != nullptr && !found->has(WS_DISABLED) ? 1 : 0;
}

int IsWindowVisible(HWND window) {
    auto found = Window::find(window);
    while (found != nullptr && found->has(WS_VISIBLE)) {
        if (!found->has(WS_CHILD)) return 1;
        found = Window::find(found->parent());
    }
    return 0;
}

int EnableWindow(HWND window, int enable) {
    auto const found = Window::find(window);
    if (found == nullptr) return 0;
    bool const wasDisabled = found->has(WS_DISABLED);
    found->setStyle(enable != 0 ? found->style() & ~WS_DISABLED : found->style() | WS_DISABLED);
    if (enable == 0 && GetFocus() == window) SetFocus(nullptr);
    return wasDisabled ? 1 : 0;
}

int DestroyWindow(HWND window) {
    auto const found = Window::find(window);
    if (found == nullptr || found->isEnding()) return 0;
    desktop().end(found);
    return 1;
}

HWND GetParent(HWND window) {
    auto const found = Window::find(window);
    return found == nullptr ? nullptr : found->parent();
}

HWND GetDlgItem(HWND parent, int id) {
    auto const found = Window::find(parent);
    if (found == nullptr) return nullptr;
    auto const &children = found->children();
    auto const child =
        std::ranges::find_if(children, [=](HWND handle) { return GetDlgCtrlID(handle) == id; });
    return child == children.end() ? nullptr : *child;
}

int GetDlgCtrlID(HWND window) {
    auto const found = Window::find(window);
    return found == nullptr ? 0 : static_cast<int>(found->id());
}

int GetWindowRect(HWND window, RECT *rect) {
    auto const found = Window::find(window);
    if (rect == nullptr) return 0;
    *rect = found == nullptr ? RECT{} : found->rect();
    if (found == nullptr) return 0;
    for (auto place = found; place != nullptr && place->has(WS_CHILD);) {
        place = Window::find(place->parent());
        if (place == nullptr) break;
        rect->left += place->rect().left;
        rect->right += place->rect().left;
        rect->top += place->rect().top;
        rect->bottom += place->rect().top;
    }
    return 1;
}

HWND SetFocus(HWND window) {
    auto &state = desktop();
    if (!tqplatform::takesFocus(window)) return nullptr;
    HWND const before = std::exchange(state.focus, window);
    if (before == window) return before;
    if (window != nullptr) state.active = tqplatform::topOf(window);
    SendMessageA(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    // The message may have moved it on.
    if (state.focus == window)
        SendMessageA(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
    return before;
}

HWND GetFocus() {
    return desktop().focus;
}

HWND GetActiveWindow() {
    return desktop().active;
}

HWND SetActiveWindow(HWND window) {
    if (window != nullptr && IsWindow(window) == 0) return nullptr;
    return std::exchange(desktop().active, window);
}
