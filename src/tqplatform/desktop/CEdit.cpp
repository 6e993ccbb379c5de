#include "tqplatform/desktop/CEdit.h"

CEdit::~CEdit() = default;

void CEdit::GetSel(int &start, int &end) const {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    SendMessageA(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    start = static_cast<int>(from);
    end = static_cast<int>(to);
}

void CEdit::SetSel(int start, int end) {
    SendMessageA(EM_SETSEL, static_cast<WPARAM>(start), end);
}

void CEdit::LimitText(int characters) {
    SendMessageA(EM_LIMITTEXT, static_cast<WPARAM>(characters));
}
