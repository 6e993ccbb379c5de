#pragma once

// Graphics objects: palettes and bitmaps, known to their callers by handles.

#include <cstdint>

#include "tqplatform/graphics/Dib.h"
#include "tqplatform/runtime/Export.h"

namespace tqplatform {
struct PaletteTag;  // never defined: handles are numbers
struct BitmapTag;
class DeviceContext;
}  // namespace tqplatform

/// Handles of palettes and bitmaps. They belong to who made them, until DeleteObject(). A handle of
/// an object that is gone is harmless.
using HPALETTE = tqplatform::PaletteTag *;
using HBITMAP = tqplatform::BitmapTag *;

/// A device context; null is one without a surface.
using HDC = tqplatform::DeviceContext *;

/// An entry of a palette.
struct PALETTEENTRY {
    std::uint8_t peRed, peGreen, peBlue, peFlags;
};

/// The description of a palette, with as many entries as it says.
struct LOGPALETTE {
    std::uint16_t palVersion;  ///< 0x300
    std::uint16_t palNumEntries;
    PALETTEENTRY palPalEntry[1];
};
static_assert(sizeof(LOGPALETTE) == 8);

/// Makes a palette; null for another version.
TQPLATFORM_API HPALETTE CreatePalette(LOGPALETTE const *description);

/// Makes a palette of 256 colours that are spread evenly: six steps each of red, green and blue,
/// and 40 of grey.
TQPLATFORM_API HPALETTE CreateHalftonePalette(HDC context);

/// Ends an object. 1, or 0 if there is none of that handle.
TQPLATFORM_API int DeleteObject(HPALETTE palette);
TQPLATFORM_API int DeleteObject(HBITMAP bitmap);

/// Selects a palette, null for the one of the beginning, and gives the one before in the same way;
/// null also if there is no such palette or no surface. `background` is accepted and has no effect:
/// a surface shows every colour.
TQPLATFORM_API HPALETTE SelectPalette(HDC context, HPALETTE palette, int background);

/// The number of entries of the selected palette that are new to the context.
TQPLATFORM_API unsigned int RealizePalette(HDC context);

/// For CreateDIBitmap: the bits are given.
inline constexpr unsigned int CBM_INIT = 4;

/// Makes a bitmap of the size in `header`, from a picture if `flags` is CBM_INIT. It keeps indices
/// and colours of up to 8 bits as they are. Null for lack of memory, or a picture that has no size
/// or whose form isn't known. `usage` is DIB_RGB_COLORS.
TQPLATFORM_API HBITMAP CreateDIBitmap(HDC context, BITMAPINFOHEADER const *header,
                                      unsigned int flags, void const *bits, BITMAPINFO const *info,
                                      unsigned int usage);

/// Makes a bitmap with memory for its bits, which is `bits` then and lives as long as the bitmap;
/// it is all 0, and has the bytes that the header tells if those are more. Null, and null in
/// `bits`, for lack of memory and for what can't be shown, compressed forms included. `section` and
/// `offset` are null and 0.
TQPLATFORM_API HBITMAP CreateDIBSection(HDC context, BITMAPINFO const *info, unsigned int usage,
                                        void **bits, void const *section, std::uint32_t offset);

/// Gives `lines` lines of a bitmap, from line `start` counted from the bottom, in the form of the
/// header in `info`: depth, size and compression. Fills its colour table with as many colours as
/// the header says, or the depth, and biSizeImage with the bytes of the bits; `bits` is null if
/// that is all that is wanted. Compressed bits are given whole: start is 0 then. The result is the
/// number of lines, at most those of the header, or all of the bitmap if they are compressed; 0 if
/// the form isn't known or memory is lacking.
TQPLATFORM_API int GetDIBits(HDC context, HBITMAP bitmap, unsigned int start, unsigned int lines,
                             void *bits, BITMAPINFO *info, unsigned int usage);
