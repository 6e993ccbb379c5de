#pragma once

#include "tqplatform/desktop/Window.h"
#include "tqplatform/kernel/Module.h"

namespace tqplatform {

/// A text or a picture that only shows: the window class "STATIC".
class TQPLATFORM_API StaticControl final : public Window {
  public:
    using Window::Window;

    LRESULT receive(unsigned int message, WPARAM first, LPARAM second) override;

    /// The bitmap resource that the control shows, or null. Not owned.
    HRSRC picture = nullptr;
};

}  // namespace tqplatform
