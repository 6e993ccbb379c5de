#include "tqplatform/desktop/CDataExchange.h"

#include "tqplatform/desktop/CWnd.h"

CUserException::~CUserException() = default;

HWND CDataExchange::PrepareCtrl(int id) {
    HWND const control = GetDlgItem(m_pDlgWnd == nullptr ? nullptr : m_pDlgWnd->m_hWnd, id);
    if (control == nullptr) Fail();
    prepared_ = control;
    isEdit_ = false;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int id) {
    HWND const control = PrepareCtrl(id);
    isEdit_ = true;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate != 0 && prepared_ != nullptr) {
        SetFocus(prepared_);
        if (isEdit_) SendMessageA(prepared_, EM_SETSEL, 0, -1);
    }
    throw new CUserException;
}

void DDX_Text(CDataExchange *dx, int id, CString &value) {
    CWnd *const control = CWnd::FromHandle(dx->PrepareEditCtrl(id));
    if (dx->m_bSaveAndValidate != 0)
        control->GetWindowTextA(value);
    else
        control->SetWindowTextA(value);
}
