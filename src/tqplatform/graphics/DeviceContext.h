#pragma once

// Where pictures are drawn to: a surface in memory of 32 bits a pixel.
//
//     tqplatform::DeviceContext screen(800, 600);
//     StretchDIBits(&screen, 0, 0, 800, 600, 0, 0, 320, 200, bits, info, DIB_RGB_COLORS, SRCCOPY);
//     tqplatform::Pixel const corner = screen.pixel(0, 0);

#include <vector>

#include "tqplatform/graphics/Objects.h"

/// Stretching takes each point's colour from one point of the picture, and drops the others.
inline constexpr int COLORONCOLOR = 3;

/// The picture replaces what is there.
inline constexpr unsigned long SRCCOPY = 0x00CC0020;

namespace tqplatform {

class TQPLATFORM_API DeviceContext {
  public:
    /// A black surface. A size below 1 is none.
    DeviceContext(int width, int height);
    DeviceContext(DeviceContext const &) = delete;
    DeviceContext &operator=(DeviceContext const &) = delete;
    ~DeviceContext();

    /// The size, 0 or more.
    int width() const { return width_; }
    int height() const { return height_; }

    /// A pixel of the surface, counted from its upper left corner, or a line of them.
    Pixel pixel(int x, int y) const { return line(y)[x]; }
    Pixel *line(int y) { return pixels_.data() + offset(y); }
    Pixel const *line(int y) const { return pixels_.data() + offset(y); }

    int stretchMode = 1;         ///< kept; stretching is always COLORONCOLOR
    HPALETTE palette = nullptr;  ///< that is selected, or null for the one of the beginning
    bool realized = false;       ///< its entries are known to the surface

  private:
    std::size_t offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }

    int width_, height_;
    std::vector<Pixel> pixels_;
};

}  // namespace tqplatform

/// Draws the part of a picture at (`sourceX`, `sourceY`), counted from where its lines begin, which
/// is the lower left corner as a rule, into a rectangle of the surface, stretched; a negative width
/// or height of either mirrors it. What lies outside the surface is left out, what lies outside the
/// picture isn't drawn. `usage` is DIB_RGB_COLORS, `operation` SRCCOPY. The result is the number of
/// lines of that part, at most those of the picture; 0 if it can't be shown, there is no surface,
/// or memory is lacking.
TQPLATFORM_API int StretchDIBits(HDC context, int x, int y, int width, int height, int sourceX,
                                 int sourceY, int sourceWidth, int sourceHeight, void const *bits,
                                 BITMAPINFO const *info, unsigned int usage,
                                 unsigned long operation);

/// Sets how stretching is done and gives the way before; 0 without a surface.
TQPLATFORM_API int SetStretchBltMode(HDC context, int mode);
