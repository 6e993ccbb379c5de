#include "tqlib/dialogs/CNumEdit.h"

#include "tqplatform/desktop/CScrollBar.h"
#include "tqplatform/desktop/User.h"
#include "tqplatform/runtime/CodePage1252.h"

using tqplatform::MessageEntry;
using tqplatform::MessageMap;
using tqplatform::onMessage;

constinit MessageEntry const CNumEdit::_messageEntries[] = {
    onMessage<&CNumEdit::OnChar>(WM_CHAR),
    onMessage<&CNumEdit::OnVScroll>(WM_VSCROLL),
};
constinit MessageMap const CNumEdit::messageMap{&CEdit::messageMap, CNumEdit::_messageEntries};

namespace {

constexpr unsigned long controlStyles = 0xFFFF;
constexpr unsigned int badInput = 0x8000;  ///< the notification
constexpr int handledByParent = -1;
constexpr unsigned int plainSound = 0xFFFFFFFF;
constexpr long long highestStep = 32767;

}  // namespace

CNumEdit::~CNumEdit() = default;

int CNumEdit::Create(unsigned long style, RECT const &rect, CWnd *parent, unsigned int id) {
    return CWnd::Create("EDIT", nullptr, style & ~controlStyles, rect, parent, id);
}

int CNumEdit::SubclassEdit(unsigned int id, CWnd *parent) {
    return SubclassDlgItem(id, parent);
}

void CNumEdit::OnBadInput() {
    auto const id = static_cast<unsigned int>(GetDlgCtrlID());
    LRESULT const answer =
        ::SendMessageA(::GetParent(m_hWnd), WM_COMMAND, tqplatform::joinWords(id, badInput),
                       reinterpret_cast<LPARAM>(m_hWnd));
    if (static_cast<int>(answer) != handledByParent) MessageBeep(plainSound);
}

void CNumEdit::OnChar(unsigned int character, unsigned int /*repeat*/, unsigned int /*flags*/) {
    if (IsCharAlphaA(static_cast<char>(character)) != 0)
        OnBadInput();
    else
        Default();
}

void CNumEdit::OnVScroll(unsigned int code, unsigned int /*position*/, CScrollBar * /*bar*/) {
    if (code != SB_LINEUP && code != SB_LINEDOWN) return;
    HWND const window = m_hWnd;  // whoever is told what happens here may end this object
    SetFocus();
    if (FromHandle(window) != this) return;
    if (!step(code == SB_LINEUP ? 1 : -1)) OnBadInput();
    ::SendMessageA(window, EM_SETSEL, 0, -1);
    ::SendMessageA(window, EM_SCROLLCARET, 0, 0);
}

bool CNumEdit::step(int by) {
    CWnd *const parent = GetParent();
    if (parent == nullptr) return false;
    int isNumber = 0;
    int const id = GetDlgCtrlID();
    long long const value = static_cast<int>(parent->GetDlgItemInt(id, &isNumber, 1));
    long long const stepped = value + by;
    if (isNumber == 0 || stepped < 0 || stepped > highestStep) return false;
    parent->SetDlgItemInt(id, static_cast<unsigned int>(stepped), 1);
    return true;
}

MessageMap const *CNumEdit::GetMessageMap() const {
    return &messageMap;
}

MessageMap const *CNumEdit::_GetBaseMessageMap() {
    return messageMap.base;
}
