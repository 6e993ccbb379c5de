#include "tqplatform/graphics/Palette.h"

#include <utility>

#include "tqplatform/graphics/ObjectTable.h"

namespace tqplatform {
namespace {

using PaletteTable = ObjectTable<Palette const, PaletteTag>;

// Never destroyed: a palette may belong to a static object of an application.
PaletteTable &paletteTable() {
    static auto *const table = new PaletteTable;
    return *table;
}

HPALETTE addPalette(Palette &&palette) {
    return paletteTable().add(std::make_shared<Palette const>(std::move(palette)));
}

std::uint8_t byte(unsigned int value) {
    return static_cast<std::uint8_t>(value);
}

}  // namespace

std::shared_ptr<Palette const> findPalette(HPALETTE handle) {
    return paletteTable().find(handle);
}

PALETTEENTRY halftoneEntry(unsigned int index) {
    constexpr unsigned int steps = 6, cube = steps * steps * steps, greys = 256 - cube;
    if (index < cube) {
        constexpr unsigned int step = 255 / (steps - 1);
        return {byte(index / (steps * steps) * step), byte(index / steps % steps * step),
                byte(index % steps * step), 0};
    }
    std::uint8_t const grey = byte((index - cube + 1) * 255 / (greys + 1));
    return {grey, grey, grey, 0};
}

}  // namespace tqplatform

HPALETTE CreatePalette(LOGPALETTE const *description) {
    constexpr std::uint16_t version = 0x300;
    if (description == nullptr || description->palVersion != version) return nullptr;
    PALETTEENTRY const *const first = description->palPalEntry;
    return tqplatform::addPalette({first, first + description->palNumEntries});
}

HPALETTE CreateHalftonePalette(HDC /*context*/) {
    tqplatform::Palette palette;
    for (unsigned int index = 0; index < 256; ++index)
        palette.push_back(tqplatform::halftoneEntry(index));
    return tqplatform::addPalette(std::move(palette));
}

int DeleteObject(HPALETTE palette) {
    return tqplatform::paletteTable().remove(palette) ? 1 : 0;
}
