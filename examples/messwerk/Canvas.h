#pragma once

// A picture of 8 bits a pixel to draw charts on: smooth lines, and texts of strokes. Places are in
// pixels from the upper left corner, and may lie between them.

#include <cstdint>
#include <string_view>

#include "tqlib/tqlib.h"

namespace messwerk {

/// What is drawn with. Each ink has steps on its way to the white of the paper.
enum class Ink : std::uint8_t { Text, Grid, Series1, Series2, Series3, Series4, Series5, Series6 };

inline constexpr int mostSeries = 6;

/// The ink of a series, counted from 0.
constexpr Ink inkOf(std::size_t series) {
    return static_cast<Ink>(static_cast<std::size_t>(Ink::Series1) + series % mostSeries);
}

struct Point {
    double x, y;
};

class Canvas {
  public:
    /// White paper.
    Canvas(int width, int height);

    void line(Point from, Point to, Ink ink, double thickness);

    /// Draws a text, Windows-1252, with its upper left corner at `place`. Capitals are as high as
    /// `size`.
    void text(Point place, std::string_view text, double size, Ink ink);

    /// The width that text() takes.
    static double textWidth(std::string_view text, double size);

    /// Writes the picture as a BMP file; false if that can't be.
    bool write(char const *path);

  private:
    void put(int x, int y, Ink ink, double coverage);

    int width_, height_;
    CDib bitmap_;
};

}  // namespace messwerk
