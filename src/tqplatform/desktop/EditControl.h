#pragma once

#include "tqplatform/desktop/EditText.h"
#include "tqplatform/desktop/Window.h"

namespace tqplatform {

/// A field for a line of text: the window class "EDIT". It tells its parent of changes, EN_UPDATE
/// first and then EN_CHANGE, also of those by WM_SETTEXT.
class EditControl final : public Window {
  public:
    explicit EditControl(WindowDescription const &description) : Window(description) {
        line_.set(description.text);
    }

    LRESULT receive(unsigned int message, WPARAM first, LPARAM second) override;
    std::string_view text() const override { return line_.text(); }
    void setText(std::string_view text) override;

    /// The text with its selection.
    EditText const &line() const { return line_; }

  private:
    LRESULT select(unsigned int message, WPARAM first, LPARAM second);
    void tell(EditText::Effect effect);

    EditText line_;
};

/// Answers EM_GETSEL and CB_GETEDITSEL: see there.
LRESULT tellSelection(EditText const &line, WPARAM start, LPARAM end);

}  // namespace tqplatform
