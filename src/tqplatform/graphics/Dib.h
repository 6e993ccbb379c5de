#pragma once

// Device-independent bitmaps: the published layouts of their headers and colours, and what can be
// told from a header.
//
// A bitmap's bits are lines from the bottom to the top, or from the top to the bottom where the
// height is negative. A line takes its pixels' bits, rounded up to 32. Depths are 1, 4 and 8 bits,
// which are indices into the colour table, 16 (5 bits each of red, green and blue), 24 (bytes blue,
// green, red) and 32 (the same with a byte behind). Compressed bits are of 4 or 8 bits; see
// RunLength.h. Any other form shows nothing.

#include <cstddef>
#include <cstdint>
#include <limits>

#include "tqplatform/runtime/Export.h"

/// An entry of a colour table.
struct RGBQUAD {
    std::uint8_t rgbBlue, rgbGreen, rgbRed, rgbReserved;
};
static_assert(sizeof(RGBQUAD) == 4);

/// The header of a bitmap, as it stands in files, ahead of the colour table. A file in memory has
/// it at its byte 14, so that its numbers aren't aligned.
struct [[gnu::packed, gnu::aligned(2)]] BITMAPINFOHEADER {
    std::uint32_t biSize;  ///< 40
    std::int32_t biWidth;
    std::int32_t biHeight;  ///< negative for lines from the top
    std::uint16_t biPlanes;
    std::uint16_t biBitCount;     ///< bits of a pixel
    std::uint32_t biCompression;  ///< a BI_ value
    std::uint32_t biSizeImage;    ///< bytes of the bits; may be 0 unless they are compressed
    std::int32_t biXPelsPerMeter, biYPelsPerMeter;
    std::uint32_t biClrUsed;  ///< entries of the colour table; 0 is all that the depth has
    std::uint32_t biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40 && offsetof(BITMAPINFOHEADER, biClrImportant) == 36);

/// A header and the colour table behind it.
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};

/// Compressions.
inline constexpr std::uint32_t BI_RGB = 0;
inline constexpr std::uint32_t BI_RLE8 = 1;
inline constexpr std::uint32_t BI_RLE4 = 2;

/// What the entries of a colour table are: colours.
inline constexpr unsigned int DIB_RGB_COLORS = 0;

namespace tqplatform {

/// The bytes of a line. Exact for every width and depth.
constexpr std::uint64_t lineBytes(std::int64_t width, unsigned int bitCount) {
    return width < 0 ? 0 : (static_cast<std::uint64_t>(width) * bitCount + 31) / 32 * 4;
}

/// The entries of a colour table for a depth, if the header doesn't say: 0 for depths without one.
constexpr unsigned int usualColors(unsigned int bitCount) {
    return bitCount == 1 || bitCount == 4 || bitCount == 8 ? 1U << bitCount : 0;
}

/// The number of lines, whichever way they go.
constexpr std::int64_t lineCount(BITMAPINFOHEADER const &header) {
    std::int64_t const height = header.biHeight;
    return height < 0 ? -height : height;
}

/// The bytes of all lines, uncompressed; the greatest number where there is none for it.
constexpr std::uint64_t pictureBytes(BITMAPINFOHEADER const &header) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t const stride = lineBytes(header.biWidth, header.biBitCount);
    auto const lines = static_cast<std::uint64_t>(lineCount(header));
    return stride != 0 && lines > most / stride ? most : stride * lines;
}

/// What a header promises: the entries of the colour table, and the bytes of the bits.
constexpr std::uint32_t colorsOf(BITMAPINFOHEADER const &header) {
    return header.biClrUsed != 0 ? header.biClrUsed : usualColors(header.biBitCount);
}
constexpr std::uint64_t bitsOf(BITMAPINFOHEADER const &header) {
    return header.biSizeImage != 0 ? header.biSizeImage : pictureBytes(header);
}

/// The most bytes of the lines of a picture that can be shown.
inline constexpr std::uint64_t mostPictureBytes = std::numeric_limits<std::int32_t>::max();

/// A colour as a surface holds it: 0x00RRGGBB.
using Pixel = std::uint32_t;

constexpr Pixel pixelOf(RGBQUAD color) {
    return Pixel{color.rgbRed} << 16 | Pixel{color.rgbGreen} << 8 | color.rgbBlue;
}

/// A bitmap somewhere in memory, which outlives this view of it. Only the bytes that its parts are
/// said to have are touched.
class TQPLATFORM_API DibView {
  public:
    /// The bitmap with this header, the colour table behind it and `bits`. The table has the
    /// entries that the header tells, or the depth; the bits have the bytes that the header tells,
    /// or the depth and the size.
    DibView(BITMAPINFO const *info, void const *bits);

    bool isValid() const { return valid_; }  ///< it can be shown
    std::int32_t width() const { return width_; }
    std::int32_t height() const { return height_; }
    unsigned int bitCount() const { return bitCount_; }
    bool isCompressed() const { return compressed_; }
    bool isTopDown() const { return topDown_; }
    std::uint8_t const *bits() const { return bits_; }
    std::uint64_t bitsSize() const { return bitsSize_; }
    RGBQUAD const *colors() const { return colors_; }
    std::uint32_t colorCount() const { return colorCount_; }

    /// The line number `y` from the top of a bitmap that isn't compressed.
    std::uint8_t const *line(std::int32_t y) const {
        std::int32_t const place = topDown_ ? y : height_ - 1 - y;
        return bits_ + static_cast<std::uint64_t>(place) * stride_;
    }

    /// The colour of an index; black beyond the table.
    Pixel color(unsigned int index) const {
        return index < colorCount_ ? pixelOf(colors_[index]) : 0;
    }

  private:
    std::uint8_t const *bits_;
    RGBQUAD const *colors_;
    std::uint64_t stride_ = 0;
    std::uint64_t bitsSize_ = 0;
    std::uint32_t colorCount_ = 0;
    std::int32_t width_ = 0, height_ = 0;
    unsigned int bitCount_ = 0;
    bool valid_ = false, compressed_ = false, topDown_ = false;
};

/// The index or the bytes of a pixel in an uncompressed line, as a number: an index for 1, 4 and 8
/// bits, 15, 24 or 32 bits of colour otherwise.
inline std::uint32_t valueAt(std::uint8_t const *line, unsigned int bitCount, std::int32_t x) {
    auto const place = static_cast<std::size_t>(x);
    switch (bitCount) {
        case 1:
            return line[place / 8] >> (7 - place % 8) & 1;
        case 4:
            return line[place / 2] >> (place % 2 == 0 ? 4 : 0) & 15;
        case 8:
            return line[place];
        case 16:
            return line[2 * place] | static_cast<std::uint32_t>(line[2 * place + 1]) << 8;
        case 24:
            return line[3 * place] | static_cast<std::uint32_t>(line[3 * place + 1]) << 8 |
                   static_cast<std::uint32_t>(line[3 * place + 2]) << 16;
        default:
            return line[4 * place] | static_cast<std::uint32_t>(line[4 * place + 1]) << 8 |
                   static_cast<std::uint32_t>(line[4 * place + 2]) << 16;
    }
}

/// The colour of 15 bits: 5 each of red, green and blue, spread to 8.
constexpr Pixel pixelOf15(std::uint32_t value) {
    constexpr auto spread = [](std::uint32_t five) { return five << 3 | five >> 2; };
    return spread(value >> 10 & 31) << 16 | spread(value >> 5 & 31) << 8 | spread(value & 31);
}

}  // namespace tqplatform
