#pragma once

// Dialogs: windows of controls that the keyboard leads through, and the loop that shows one until
// it is ended.

#include <string_view>

#include "tqplatform/desktop/DialogTemplate.h"
#include "tqplatform/desktop/Window.h"

/// Lets a dialog act on a message from the keyboard: Tab and the arrows move the focus, Return and
/// Escape end, mnemonics lead to their control. The result is 1 if it did, and 0 if the message is
/// for the control, or for one that isn't in the dialog.
TQPLATFORM_API int IsDialogMessage(HWND dialog, MSG const *message);

/// Ends the loop of runDialog() with a result; the first one counts. 1, or 0 if this is no dialog.
TQPLATFORM_API int EndDialog(HWND dialog, int result);

namespace tqplatform {

/// The window class "#32770", a dialog.
class TQPLATFORM_API Dialog final : public Window {
  public:
    using Window::Window;

    LRESULT receive(unsigned int message, WPARAM first, LPARAM second) override;

    /// The button that Return presses: one with the focus, else the default one. Null for none.
    HWND defaultButton() const;

    /// How the loop was ended.
    bool isEnded = false;
    int result = 0;

  private:
    void setDefault(int id);

    int default_ = 0;  ///< identifier of the default button
};

/// Makes the window of a template with its controls, all that it says in pixels for letters of 6 by
/// 13. Null if a control is of an unknown class, such as a scroll bar. The caller ends it with
/// DestroyWindow().
TQPLATFORM_API HWND createDialog(DialogTemplate const &description, HWND owner);

/// Shows a dialog, with its owner disabled, until EndDialog(), and gives the result; -1 if it is
/// destroyed instead. What the user's input and posted messages throw comes through.
TQPLATFORM_API int runDialog(HWND dialog);

/// Gives the focus to a control of a dialog as its keys do: the text of a field gets selected.
TQPLATFORM_API void focusControl(HWND control);

/// Whether a window is the dialog, in it, or owned by a window that is.
TQPLATFORM_API bool isIn(HWND window, HWND dialog);

/// The size of a letter, in pixels.
inline constexpr int letterWidth = 6;
inline constexpr int letterHeight = 13;

/// The letter behind the single & of a caption, in lower case, or NUL; the caption without it.
TQPLATFORM_API char mnemonicOf(std::string_view caption);
TQPLATFORM_API std::string withoutMnemonic(std::string_view caption);

}  // namespace tqplatform
