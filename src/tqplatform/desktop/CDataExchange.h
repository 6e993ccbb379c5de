#pragma once

// The exchange of data between the controls of a dialog and variables of a program.

#include "tqplatform/desktop/Window.h"
#include "tqplatform/framework/CException.h"
#include "tqplatform/framework/CString.h"
#include "tqplatform/runtime/Export.h"

class CWnd;

/// What leaves an exchange that failed. CWnd::UpdateData() catches it.
class TQPLATFORM_API CUserException : public CException {
  public:
    ~CUserException() override;
};

/// An exchange under way.
class TQPLATFORM_API CDataExchange {
  public:
    /// For the dialog `dialog`, which may be null: it has no controls then.
    CDataExchange(CWnd *dialog, int save) : m_bSaveAndValidate(save), m_pDlgWnd(dialog) {}

    /// The control `id`, for the focus if the exchange fails; PrepareEditCtrl also has its text
    /// selected then. A control that doesn't exist fails at once.
    HWND PrepareCtrl(int id);
    HWND PrepareEditCtrl(int id);

    /// Ends the exchange: gives the focus to the control prepared last, if it was to save, and
    /// throws CUserException.
    [[noreturn]] void Fail();

    int m_bSaveAndValidate;  ///< not 0: from the controls to the variables
    CWnd *m_pDlgWnd;         ///< the dialog; not owned

  private:
    HWND prepared_ = nullptr;
    bool isEdit_ = false;
};

/// Exchanges the whole text of a control.
TQPLATFORM_API void DDX_Text(CDataExchange *dx, int id, CString &value);
