#pragma once

#include "tqplatform/desktop/CWnd.h"

/// The object of a scroll bar, as handlers of WM_VSCROLL are given it. This desktop makes no such
/// window, so that they get null.
class TQPLATFORM_API CScrollBar : public CWnd {
  public:
    ~CScrollBar() override;
};
