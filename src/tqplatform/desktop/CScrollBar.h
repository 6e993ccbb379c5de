#pragma once

#include "tqplatform/desktop/CWnd.h"

/// The object of a scroll bar.
class TQPLATFORM_API CScrollBar : public CWnd {
  public:
    ~CScrollBar() override;
};
