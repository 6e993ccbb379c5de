#include "tqplatform/desktop/CComboBox.h"

namespace {

LPARAM address(char const *text) {
    return reinterpret_cast<LPARAM>(text);
}

// Signed, so that -1 stays what it is.
WPARAM place(int index) {
    return static_cast<WPARAM>(index);
}

}  // namespace

CComboBox::~CComboBox() = default;

int CComboBox::GetCount() const {
    return static_cast<int>(SendMessageA(CB_GETCOUNT));
}

int CComboBox::AddString(char const *text) {
    return static_cast<int>(SendMessageA(CB_ADDSTRING, 0, address(text)));
}

int CComboBox::InsertString(int index, char const *text) {
    return static_cast<int>(SendMessageA(CB_INSERTSTRING, place(index), address(text)));
}

int CComboBox::DeleteString(int index) {
    return static_cast<int>(SendMessageA(CB_DELETESTRING, place(index)));
}

void CComboBox::ResetContent() {
    SendMessageA(CB_RESETCONTENT);
}

int CComboBox::GetCurSel() const {
    return static_cast<int>(SendMessageA(CB_GETCURSEL));
}

int CComboBox::SetCurSel(int index) {
    return static_cast<int>(SendMessageA(CB_SETCURSEL, place(index)));
}

void CComboBox::GetLBText(int index, CString &text) const {
    auto const length = static_cast<int>(SendMessageA(CB_GETLBTEXTLEN, place(index)));
    if (length == CB_ERR) return;
    SendMessageA(CB_GETLBTEXT, place(index), address(text.GetBufferSetLength(length)));
    text.ReleaseBuffer();
}
