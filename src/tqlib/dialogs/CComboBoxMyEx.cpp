#include "tqlib/dialogs/CComboBoxMyEx.h"

#include "tqlib/foundation/TQString.h"

using tqplatform::highWord;
using tqplatform::MessageMap;

constinit std::array<tqplatform::MessageEntry, 0> const CComboBoxMyEx::_messageEntries{};
constinit MessageMap const CComboBoxMyEx::messageMap{&CComboBox::messageMap, _messageEntries};

namespace {

constexpr LRESULT noSelection = -1;
constexpr unsigned int endOfField = 0xFFFF;
constexpr WPARAM wholeList = static_cast<WPARAM>(-1);

}  // namespace

CComboBoxMyEx::~CComboBoxMyEx() = default;

int CComboBoxMyEx::PreTranslateMessage(MSG *message) {
    if (message->message == WM_KEYDOWN)
        completing = message->wParam == VK_DELETE || message->wParam == VK_BACK ? 0 : 1;
    return CWnd::PreTranslateMessage(message);
}

void CComboBoxMyEx::OnEditUpdate() {
    if (completing == 0) return;
    TQString typed;
    GetWindowTextA(typed);
    LRESULT const selection = SendMessageA(CB_GETEDITSEL, 0, 0);
    bool const hasSelection = selection != noSelection;
    LRESULT const found = SendMessageA(CB_SELECTSTRING, wholeList,
                                       reinterpret_cast<LPARAM>(static_cast<char const *>(typed)));
    auto const length = static_cast<unsigned int>(typed.GetLength());
    bool const isInside = highWord(static_cast<unsigned long>(selection)) < length;
    if (found == CB_ERR) {
        SetWindowTextA(typed);
        if (hasSelection) SendMessageA(CB_SETEDITSEL, 0, selection);
    } else if (hasSelection && isInside) {
        SendMessageA(CB_SETEDITSEL, 0, selection);
    } else {
        SendMessageA(CB_SETEDITSEL, 0,
                     static_cast<LPARAM>(tqplatform::joinWords(length, endOfField)));
    }
}

void CComboBoxMyEx::UpdateEdit() {
    int const selected = GetCurSel();
    if (selected == CB_ERR) return;
    TQString text;
    GetLBText(selected, text);
    SetWindowTextA(text);
}

MessageMap const *CComboBoxMyEx::GetMessageMap() const {
    return &messageMap;
}

MessageMap const *CComboBoxMyEx::_GetBaseMessageMap() {
    return messageMap.base;
}
