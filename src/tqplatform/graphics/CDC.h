#pragma once

#include "tqplatform/graphics/DeviceContext.h"

/// The framework's object for a device context, which it doesn't own.
class CDC {
  public:
    CDC() = default;
    explicit CDC(HDC context) : m_hDC(context) {}

    /// Sets how stretching is done and gives the way before.
    int SetStretchBltMode(int mode) { return ::SetStretchBltMode(m_hDC, mode); }

    HDC m_hDC = nullptr;
};
