#pragma once

#include <memory>
#include <vector>

#include "tqplatform/graphics/Objects.h"

namespace tqplatform {

/// A logical palette.
using Palette = std::vector<PALETTEENTRY>;

/// The palette of a handle, or null.
std::shared_ptr<Palette const> findPalette(HPALETTE handle);

/// The colour of entry `index` of the palette that CreateHalftonePalette() makes.
PALETTEENTRY halftoneEntry(unsigned int index);

}  // namespace tqplatform
