#pragma once

#include "tqplatform/desktop/Window.h"

namespace tqplatform {

/// A push button: the window class "BUTTON". A click, a blank and BM_CLICK tell the parent
/// BN_CLICKED, unless the button is disabled.
class Button final : public Window {
  public:
    using Window::Window;

    LRESULT receive(unsigned int message, WPARAM first, LPARAM second) override;

  private:
    void click();
};

}  // namespace tqplatform
