#include "tqlib/bitmap/CDib.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include "tqlib/bitmap/DibMemory.h"
#include "tqplatform/desktop/AfxMessageBox.h"
#include "tqplatform/desktop/User.h"
#include "tqplatform/framework/CException.h"
#include "tqplatform/framework/ModuleState.h"

using tqlib::detail::allocate;
using tqlib::detail::contextOf;

namespace {

[[gnu::constructor]] void registerClass() {
    AfxClassInit(&CDib::classCDib);
}
[[gnu::destructor]] void forgetClass() {
    AfxGetModuleState()->forgetClass(&CDib::classCDib);
}

}  // namespace

constinit CRuntimeClass CDib::classCDib{"CDib", sizeof(CDib), 0, CDib::CreateObject,
                                        CDib::_GetBaseClass};

CObject *CDib::CreateObject() {
    return new (std::nothrow) CDib;
}

CRuntimeClass const *CDib::GetRuntimeClass() const {
    return &classCDib;
}

CRuntimeClass const *CDib::_GetBaseClass() {
    return &CObject::classCObject;
}

CDib::CDib() {
    forget();
}

CDib::CDib(CSize size, int bitCount) {
    forget();
    ComputePaletteSize(bitCount);
    auto const colors = static_cast<std::uint32_t>(colorCount);
    header =
        reinterpret_cast<BITMAPINFOHEADER *>(allocate(static_cast<std::size_t>(GetSizeHeader())));
    headerAlloc = AllocNew;
    *header = {headerSize,
               static_cast<std::int32_t>(size.cx),
               static_cast<std::int32_t>(size.cy),
               1,
               static_cast<std::uint16_t>(bitCount),
               BI_RGB,
               0,
               0,
               0,
               colors,
               colors};
    try {
        ComputeMetrics();
    } catch (CException *error) {
        error->Delete();  // too large for bits
    }
    std::fill_n(colorTable, colorCount, RGBQUAD{});
}

CDib::~CDib() {
    Empty();
}

void CDib::forget() {
    colorTable = nullptr;
    bitmapHandle = nullptr;
    image = nullptr;
    header = nullptr;
    globalHandle = nullptr;
    headerAlloc = imageAlloc = AllocNone;
    imageSize = 0;
    colorCount = 0;
    fileHandle = mapHandle = nullptr;
    fileView = nullptr;
    paletteHandle = nullptr;
}

void CDib::Empty() {
    DetachMapFile();
    if (headerAlloc == AllocNew) {
        ::operator delete(header);
    } else if (headerAlloc == AllocGlobal) {
        GlobalUnlock(globalHandle);
        GlobalFree(globalHandle);
    }
    if (imageAlloc == AllocNew) ::operator delete(image);
    if (paletteHandle != nullptr) DeleteObject(paletteHandle);
    if (bitmapHandle != nullptr) DeleteObject(bitmapHandle);
    forget();
}

CSize CDib::GetDimensions() const {
    return header == nullptr ? CSize() : CSize(header->biWidth, header->biHeight);
}

void CDib::ComputePaletteSize(int bitCount) {
    if (header != nullptr && header->biClrUsed != 0) {
        colorCount = static_cast<std::int32_t>(header->biClrUsed);
        return;
    }
    switch (bitCount) {
        case 1:
        case 4:
        case 8:
        case 16:
        case 24:
        case 32:
            colorCount = static_cast<std::int32_t>(
                tqplatform::usualColors(static_cast<unsigned int>(bitCount)));
            break;
        default:
            break;
    }
}

// Throws a CException for any other header than that of 40 bytes, and for a header with its colour
// table, or bits, beyond 2^31 - 1 bytes.
void CDib::ComputeMetrics() {
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    colorTable = reinterpret_cast<RGBQUAD *>(header + 1);
    imageSize = 0;
    if (header->biSize != headerSize) throw new CException;
    std::uint64_t const table = sizeof(RGBQUAD) * std::uint64_t{tqplatform::colorsOf(*header)};
    std::uint64_t const bits = tqplatform::bitsOf(*header);
    if (headerSize + table > most || bits > most) throw new CException;
    imageSize = static_cast<std::uint32_t>(bits);
}

int CDib::MakePalette() {
    if (colorCount == 0) return 0;
    if (paletteHandle != nullptr) DeleteObject(paletteHandle);
    constexpr std::int32_t mostEntries = 65535;
    auto const count = static_cast<std::uint16_t>(std::min(colorCount, mostEntries));
    std::vector<PALETTEENTRY> entries(count + 1U);  // the first one stands for the head
    auto *const palette = reinterpret_cast<LOGPALETTE *>(entries.data());
    palette->palVersion = 0x300;
    palette->palNumEntries = count;
    std::transform(colorTable, colorTable + count, entries.begin() + 1, [](RGBQUAD color) {
        return PALETTEENTRY{color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    });
    paletteHandle = CreatePalette(palette);
    return 1;
}

int CDib::SetSystemPalette(CDC *dc) {
    if (colorCount != 0) return 0;
    if (paletteHandle != nullptr) DeleteObject(paletteHandle);
    paletteHandle = CreateHalftonePalette(contextOf(dc));
    return 1;
}

unsigned int CDib::UsePalette(CDC *dc, int background) {
    if (paletteHandle == nullptr) return 0;
    SelectPalette(contextOf(dc), paletteHandle, background);
    return RealizePalette(contextOf(dc));
}

int CDib::Draw(CDC *dc, CPoint origin, CSize size) {
    if (header == nullptr) return 0;
    HDC const context = contextOf(dc);
    if (paletteHandle != nullptr) SelectPalette(context, paletteHandle, 1);
    if (dc != nullptr) dc->SetStretchBltMode(COLORONCOLOR);
    StretchDIBits(context, static_cast<int>(origin.x), static_cast<int>(origin.y),
                  static_cast<int>(size.cx), static_cast<int>(size.cy), 0, 0, header->biWidth,
                  header->biHeight, completeBits(), info(), DIB_RGB_COLORS, SRCCOPY);
    return 1;
}

HBITMAP CDib::CreateBitmap(CDC *dc) {
    if (imageSize == 0) return nullptr;
    return CreateDIBitmap(contextOf(dc), header, CBM_INIT, completeBits(), info(), DIB_RGB_COLORS);
}

HBITMAP CDib::CreateSection(CDC *dc) {
    if (image != nullptr || !hasColors()) return nullptr;
    void *bits = nullptr;
    bitmapHandle = CreateDIBSection(contextOf(dc), info(), DIB_RGB_COLORS, &bits, nullptr, 0);
    image = static_cast<std::uint8_t *>(bits);
    if (image != nullptr) imageSize = static_cast<std::uint32_t>(tqplatform::bitsOf(*header));
    return bitmapHandle;
}

void CDib::tellOtherDepth() {
    AfxMessageBox("This BMP format is not supported!", MB_ICONHAND);
}
