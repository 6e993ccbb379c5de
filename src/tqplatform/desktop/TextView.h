#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tqplatform/desktop/TextScreen.h"
#include "tqplatform/desktop/Window.h"

namespace tqplatform {

/// Draws a dialog with its controls as a framed text in the middle of a screen, one row for the
/// height of a letter. A dialog higher than the screen is moved so that its focus can be seen.
TQPLATFORM_API void drawDialog(TextScreen &screen, HWND dialog);

/// Breaks a text into lines of at most `width` characters: at line ends, and at blanks where that
/// is needed. There is at least one line, and `width` is at least 1.
TQPLATFORM_API std::vector<std::string> wrapText(std::string_view text, int width);

}  // namespace tqplatform
