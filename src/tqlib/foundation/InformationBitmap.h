#pragma once

#include <array>
#include <cstdint>

namespace tqlib::detail {

/// The number of the bitmap resource.
inline constexpr unsigned int informationBitmapResource = 900;

/// The bitmap resource, of 32 by 32 pixels with 4 bits each: a header of 40 bytes, sixteen colours,
/// and the lines from the bottom to the top. A white balloon with a blue letter i on grey.
extern std::array<std::uint8_t, 40 + 16 * 4 + 32 * 16> const informationBitmap;

}  // namespace tqlib::detail
