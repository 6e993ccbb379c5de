#pragma once

#include <array>
#include <cstdint>

namespace tqlib::detail {

/// The number of the dialog resource, and of its controls with the picture and the question.
inline constexpr unsigned int questionDialogResource = 924;
inline constexpr int questionControl = 925;
inline constexpr int pictureControl = 0xFFFF;

/// The dialog resource: a question with the buttons 920 to 923.
extern std::array<std::uint8_t, 344> const questionDialog;

}  // namespace tqlib::detail
