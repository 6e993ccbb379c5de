#pragma once

#include "tqplatform/desktop/Window.h"

/// The framework's object for a window: it knows the window's handle.
class CWnd {
  public:
    CWnd() = default;
    CWnd(CWnd const &) = delete;
    CWnd &operator=(CWnd const &) = delete;
    virtual ~CWnd() = default;

    HWND m_hWnd = nullptr;  ///< null while the object has no window
};
