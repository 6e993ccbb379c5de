#pragma once

#include "tqplatform/desktop/CWnd.h"

/// The object of a combo box. Indices count from 0; failures give CB_ERR.
class TQPLATFORM_API CComboBox : public CWnd {
  public:
    ~CComboBox() override;

    int GetCount() const;
    int AddString(char const *text);
    int InsertString(int index, char const *text);
    int DeleteString(int index);
    void ResetContent();

    /// The selected item, or -1; selects one, or none for -1.
    int GetCurSel() const;
    int SetCurSel(int index);

    /// The text of an item; without such an item `text` stays.
    void GetLBText(int index, CString &text) const;
};
