#pragma once

// Letters made of strokes, for charts.

#include <string_view>

namespace messwerk {

/// The pen's way for a letter: places as pairs of digits, x from 0 to 4 and y from 0, the top of
/// capitals, over 6, the base line, to 8; a blank lifts the pen. A letter that isn't known is a
/// box.
std::string_view strokesOf(char letter);

/// The width of a letter on that grid, with the gap behind it.
int widthOf(char letter);

}  // namespace messwerk
