#include "tqplatform/desktop/CWnd.h"

#include <charconv>
#include <cstdint>
#include <memory>
#include <string>

#include "tqplatform/desktop/CDataExchange.h"
#include "tqplatform/desktop/ControlClasses.h"
#include "tqplatform/desktop/CScrollBar.h"
#include "tqplatform/desktop/User.h"
#include "tqplatform/framework/ModuleState.h"

using tqplatform::highWord;
using tqplatform::lowWord;
using tqplatform::MessageEntry;
using tqplatform::MessageMap;
using tqplatform::Window;

constinit MessageMap const CWnd::messageMap{nullptr, {}};

namespace {

/// The message that is being handled, for as long as the object lives. It isn't kept in the
/// window's object, which its own handler may delete.
class Handled {
  public:
    explicit Handled(MSG const &message) : message_(message), outer_(current) { current = this; }
    Handled(Handled const &) = delete;
    Handled &operator=(Handled const &) = delete;
    ~Handled() { current = outer_; }

    static MSG const *latest() { return current == nullptr ? nullptr : &current->message_; }

  private:
    static constinit Handled *current;

    MSG message_;
    Handled *outer_;
};

constinit Handled *Handled::current = nullptr;

HWND handleOf(CWnd const *window) {
    return window == nullptr ? nullptr : window->m_hWnd;
}

}  // namespace

CScrollBar *tqplatform::detail::scrollBarOf(LPARAM window) {
    auto const found = Window::find(reinterpret_cast<HWND>(window));
    return found == nullptr ? nullptr : dynamic_cast<CScrollBar *>(found->handler());
}

CWnd::~CWnd() {
    auto *const state = AfxGetModuleState();
    if (state->mainWindow == this) state->mainWindow = nullptr;
    auto const window = Window::find(m_hWnd);
    if (window == nullptr || window->handler() != this) return;
    Detach();
    ::DestroyWindow(window->handle());
}

CWnd *CWnd::FromHandle(HWND window) {
    auto const found = Window::find(window);
    if (found == nullptr) return nullptr;
    if (auto *const own = dynamic_cast<CWnd *>(found->handler())) return own;
    if (found->temporary == nullptr) {
        auto object = std::make_unique<CWnd>();
        object->m_hWnd = window;
        found->temporary = std::move(object);
    }
    return static_cast<CWnd *>(found->temporary.get());
}

int CWnd::Create(char const *className, char const *text, unsigned long style, RECT const &rect,
                 CWnd *parent, unsigned int id) {
    if (m_hWnd != nullptr || className == nullptr) return 0;
    // A parent that has no window isn't the same as none.
    if (parent != nullptr && parent->m_hWnd == nullptr) return 0;
    auto kind = static_cast<unsigned int>(style);
    if (parent != nullptr) kind |= WS_CHILD;
    return Attach(tqplatform::createWindow(
        className, {text == nullptr ? "" : text, kind, rect, handleOf(parent), id}));
}

int CWnd::Attach(HWND window) {
    auto const found = Window::find(window);
    if (m_hWnd != nullptr || found == nullptr || found->handler() != nullptr) return 0;
    found->setHandler(this);
    m_hWnd = window;
    return 1;
}

int CWnd::SubclassDlgItem(unsigned int id, CWnd *parent) {
    return Attach(::GetDlgItem(handleOf(parent), static_cast<int>(id)));
}

HWND CWnd::Detach() {
    HWND const window = m_hWnd;
    auto const found = Window::find(window);
    if (found != nullptr && found->handler() == this) found->setHandler(nullptr);
    m_hWnd = nullptr;
    return window;
}

int CWnd::DestroyWindow() {
    return ::DestroyWindow(m_hWnd);
}

void CWnd::windowDestroyed() {
    m_hWnd = nullptr;
}

CWnd *CWnd::GetParent() const {
    return FromHandle(::GetParent(m_hWnd));
}

CWnd *CWnd::GetDlgItem(int id) const {
    return FromHandle(::GetDlgItem(m_hWnd, id));
}

int CWnd::GetDlgCtrlID() const {
    return ::GetDlgCtrlID(m_hWnd);
}

CWnd *CWnd::SetFocus() {
    return FromHandle(m_hWnd == nullptr ? nullptr : ::SetFocus(m_hWnd));
}

int CWnd::EnableWindow(int enable) {
    return ::EnableWindow(m_hWnd, enable);
}

void CWnd::GetWindowRect(RECT *rect) const {
    ::GetWindowRect(m_hWnd, rect);
}

LRESULT CWnd::SendMessageA(unsigned int message, WPARAM first, LPARAM second) const {
    return ::SendMessageA(m_hWnd, message, first, second);
}

int CWnd::PostMessageA(unsigned int message, WPARAM first, LPARAM second) const {
    return ::PostMessageA(m_hWnd, message, first, second);
}

void CWnd::GetWindowTextA(CString &text) const {
    int const length = ::GetWindowTextLengthA(m_hWnd);
    ::GetWindowTextA(m_hWnd, text.GetBufferSetLength(length), length + 1);
    text.ReleaseBuffer();
}

int CWnd::GetWindowTextA(char *target, int size) const {
    return ::GetWindowTextA(m_hWnd, target, size);
}

void CWnd::SetWindowTextA(char const *text) {
    ::SetWindowTextA(m_hWnd, text);
}

unsigned int CWnd::GetDlgItemInt(int id, int *translated, int isSigned) const {
    CString text;
    if (CWnd const *const control = GetDlgItem(id)) control->GetWindowTextA(text);
    text.TrimLeft();
    char const *const begin = text;
    char const *const end = begin + text.GetLength();
    std::int32_t number = 0;
    std::uint32_t natural = 0;
    auto const result =
        isSigned != 0 ? std::from_chars(begin, end, number) : std::from_chars(begin, end, natural);
    bool const isGood = result.ec == std::errc();
    if (translated != nullptr) *translated = isGood ? 1 : 0;
    if (!isGood) return 0;
    return isSigned != 0 ? static_cast<unsigned int>(number) : natural;
}

void CWnd::SetDlgItemInt(int id, unsigned int value, int isSigned) {
    std::string const text =
        isSigned != 0 ? std::to_string(static_cast<int>(value)) : std::to_string(value);
    ::SetWindowTextA(::GetDlgItem(m_hWnd, id), text.c_str());
}

int CWnd::MessageBoxA(char const *text, char const *title, unsigned int style) {
    return ::MessageBoxA(m_hWnd, text, title, style);
}

int CWnd::UpdateData(int save) {
    CDataExchange exchange(this, save);
    try {
        DoDataExchange(&exchange);
    } catch (CUserException *failure) {
        failure->Delete();
        return 0;
    }
    return 1;
}

void CWnd::DoDataExchange(CDataExchange * /*dx*/) {}

int CWnd::PreTranslateMessage(MSG * /*message*/) {
    return 0;
}

LRESULT CWnd::WindowProc(unsigned int message, WPARAM first, LPARAM second) {
    Handled const handled({m_hWnd, message, first, second});
    if (message == WM_COMMAND) {
        if (OnCommand(first, second) != 0) return 1;
    } else if (auto const *const entry = findEntry(message, 0, 0, false)) {
        return entry->call(*this, first, second);
    }
    return Default();
}

int CWnd::OnCommand(WPARAM first, LPARAM second) {
    unsigned int const id = lowWord(first);
    unsigned int const code = highWord(first);
    auto const control = Window::find(reinterpret_cast<HWND>(second));
    auto *const object = control == nullptr ? nullptr : dynamic_cast<CWnd *>(control->handler());
    if (object != nullptr && object != this) {
        if (auto const *const entry = object->findEntry(WM_COMMAND, code, 0, true)) {
            entry->call(*object, first, second);
            return 1;
        }
    }
    auto const *const entry = findEntry(WM_COMMAND, code, id, false);
    if (entry != nullptr) entry->call(*this, first, second);
    return entry != nullptr ? 1 : 0;
}

LRESULT CWnd::Default() {
    MSG const *const message = Handled::latest();
    if (message == nullptr) return 0;
    return DefWindowProcA(message->message, message->wParam, message->lParam);
}

LRESULT CWnd::DefWindowProcA(unsigned int message, WPARAM first, LPARAM second) {
    auto const window = Window::find(m_hWnd);
    return window == nullptr ? 0 : window->receive(message, first, second);
}

MessageMap const *CWnd::GetMessageMap() const {
    return &messageMap;
}

MessageEntry const *CWnd::findEntry(unsigned int message, unsigned int code, unsigned int id,
                                    bool reflected) const {
    for (auto const *map = GetMessageMap(); map != nullptr; map = map->base) {
        for (MessageEntry const &entry : map->entries) {
            if (entry.message == message && entry.code == code && entry.reflected == reflected &&
                id >= entry.firstId && id <= entry.lastId)
                return &entry;
        }
    }
    return nullptr;
}
