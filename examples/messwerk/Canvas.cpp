#include "Canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Letters.h"

namespace messwerk {
namespace {

/// The colours of the inks.
constexpr RGBQUAD colors[] = {
    {60, 52, 48, 0},     // Text
    {222, 218, 214, 0},  // Grid
    {190, 105, 25, 0},   // Series1: blue
    {30, 115, 225, 0},   // Series2: orange
    {85, 150, 45, 0},    // Series3: green
    {70, 55, 200, 0},    // Series4: red
    {165, 85, 120, 0},   // Series5: violet
    {150, 150, 30, 0},   // Series6: teal
};

/// Steps of each ink; the last one is its full colour. The paper has the index 0.
constexpr int steps = 15;

constexpr int firstIndex(Ink ink) {
    return 1 + static_cast<int>(ink) * steps;
}

std::uint8_t blend(std::uint8_t color, int step) {
    return static_cast<std::uint8_t>(255 - (255 - color) * step / steps);
}

double distance(Point place, Point from, Point to) {
    double const dx = to.x - from.x, dy = to.y - from.y;
    double const length = dx * dx + dy * dy;
    double const along =
        length == 0 ? 0 : ((place.x - from.x) * dx + (place.y - from.y) * dy) / length;
    double const part = std::clamp(along, 0.0, 1.0);
    return std::hypot(place.x - from.x - part * dx, place.y - from.y - part * dy);
}

/// How far across the line is where it is as high as `y`; beyond its ends, that of the nearer one.
double acrossAt(double y, Point from, Point to) {
    if (from.y > to.y) std::swap(from, to);
    if (y <= from.y) return from.x;
    if (y >= to.y) return to.x;
    return from.x + (to.x - from.x) * (y - from.y) / (to.y - from.y);
}

constexpr double gridHeight = 6;  ///< of capitals, in units of the letters' grid

}  // namespace

Canvas::Canvas(int width, int height)
    : width_(width), height_(height), bitmap_(CSize(width, height), 8) {
    bitmap_.colorTable[0] = {255, 255, 255, 0};
    for (int ink = 0; ink < static_cast<int>(std::size(colors)); ++ink)
        for (int step = 1; step <= steps; ++step) {
            RGBQUAD const color = colors[ink];
            bitmap_.colorTable[ink * steps + step] = {blend(color.rgbBlue, step),
                                                      blend(color.rgbGreen, step),
                                                      blend(color.rgbRed, step), 0};
        }
    bitmap_.CreateSection(nullptr);
}

// Lays ink on a pixel. Of two inks the stronger step stays; the grid gives way to all others.
void Canvas::put(int x, int y, Ink ink, double coverage) {
    int const step = static_cast<int>(std::lround(std::min(coverage, 1.0) * steps));
    if (x < 0 || x >= width_ || y < 0 || y >= height_ || step <= 0 || bitmap_.image == nullptr)
        return;
    std::size_t const stride = static_cast<std::size_t>(width_ + 3) / 4 * 4;
    std::uint8_t &pixel = bitmap_.image[static_cast<std::size_t>(height_ - 1 - y) * stride +
                                        static_cast<std::size_t>(x)];
    int const present = (pixel + steps - 1) % steps + 1;
    bool const isPaper = pixel == 0;
    bool const isGrid = !isPaper && (pixel - 1) / steps == static_cast<int>(Ink::Grid);
    if (isPaper || (isGrid && ink != Ink::Grid && step > 2) || step >= present)
        pixel = static_cast<std::uint8_t>(firstIndex(ink) + step - 1);
}

void Canvas::line(Point from, Point to, Ink ink, double thickness) {
    double const reach = thickness / 2 + 1;
    auto const first = [&](double a, double b) {
        return static_cast<int>(std::floor(std::min(a, b) - reach));
    };
    auto const last = [&](double a, double b, int room) {
        return std::min(static_cast<int>(std::ceil(std::max(a, b) + reach)), room - 1);
    };
    for (int y = std::max(first(from.y, to.y), 0); y <= last(from.y, to.y, height_); ++y) {
        // Where the line is near enough to this row.
        double const begin = acrossAt(y + 0.5 - reach, from, to);
        double const end = acrossAt(y + 0.5 + reach, from, to);
        for (int x = std::max(first(begin, end), 0); x <= last(begin, end, width_); ++x) {
            double const apart = distance({x + 0.5, y + 0.5}, from, to);
            put(x, y, ink, thickness / 2 + 0.5 - apart);
        }
    }
}

void Canvas::text(Point place, std::string_view text, double size, Ink ink) {
    double const unit = size / gridHeight, pen = std::max(1.1, size / 8);
    for (char const letter : text) {
        std::string_view const strokes = strokesOf(letter);
        Point last{};
        bool down = false;
        for (std::size_t at = 0; at + 1 < strokes.size();) {
            if (strokes[at] == ' ') {
                down = false;
                ++at;
                continue;
            }
            Point const next{place.x + (strokes[at] - '0' + 0.5) * unit,
                             place.y + (strokes[at + 1] - '0') * unit};
            if (down) line(last, next, ink, pen);
            last = next;
            down = true;
            at += 2;
        }
        place.x += widthOf(letter) * unit;
    }
}

double Canvas::textWidth(std::string_view text, double size) {
    int width = 0;
    for (char const letter : text)
        width += widthOf(letter);
    return width * size / gridHeight;
}

bool Canvas::write(char const *path) {
    CFile file;
    return file.Open(path, CFile::modeCreate | CFile::modeWrite) == 1 && bitmap_.Write(&file) == 1;
}

}  // namespace messwerk
