#pragma once

#include "tqplatform/desktop/CWnd.h"

/// The object of an edit control.
class TQPLATFORM_API CEdit : public CWnd {
  public:
    ~CEdit() override;

    /// The selection, in characters from 0: see EM_SETSEL.
    void GetSel(int &start, int &end) const;
    void SetSel(int start, int end);

    /// The most characters that the user can make of the text; 0 is as many as possible.
    void LimitText(int characters);
};
