#pragma once

#include <string>
#include <vector>

#include "tqplatform/desktop/User.h"

namespace tqplatform {

/// Somebody at the terminal of standard input and error, who sees dialogs and messages as framed
/// texts and works with the keyboard. A terminal that goes away leaves every dialog.
class TQPLATFORM_API TerminalUser : public User {
  public:
    /// Whether standard input and error are a terminal that can show dialogs.
    static bool isThere();

    int answer(Message const &message) override;
    Input next(HWND dialog) override;
    void begin(HWND dialog) override;
    void end(HWND dialog) override;
    void beep(unsigned int kind) override;

  private:
    void draw(int rows, int columns) const;

    std::vector<HWND> dialogs_;  ///< under way, the innermost last
    std::string bytes_;          ///< of keys that weren't asked for yet
    bool isGone_ = false;
};

}  // namespace tqplatform
