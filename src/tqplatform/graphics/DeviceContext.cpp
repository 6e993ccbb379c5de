#include "tqplatform/graphics/DeviceContext.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "tqplatform/graphics/Palette.h"
#include "tqplatform/graphics/RunLength.h"

namespace tqplatform {
namespace {

/// How points of one axis of a rectangle on the surface come from an axis of the picture.
class Axis {
  public:
    /// The points [`start`, `start` + `length`) of a surface that has `room`, and the points
    /// [`sourceStart`, `sourceStart` + `sourceLength`) of a picture that has `sourceRoom`. A
    /// negative length mirrors: its points lie ahead of the start.
    Axis(std::int64_t start, std::int64_t length, int room, std::int64_t sourceStart,
         std::int64_t sourceLength, std::int32_t sourceRoom)
        : mirrored_((length < 0) != (sourceLength < 0)),
          begin_(std::min(start, start + length)),
          length_(std::abs(length)),
          sourceBegin_(std::min(sourceStart, sourceStart + sourceLength)),
          sourceLength_(std::abs(sourceLength)),
          sourceRoom_(sourceRoom),
          first_(std::clamp<std::int64_t>(begin_, 0, room)),
          end_(std::clamp<std::int64_t>(begin_ + length_, 0, room)) {}

    int first() const { return static_cast<int>(first_); }
    int end() const { return static_cast<int>(end_); }

    /// The point of the picture for a point of the surface; nothing if it is outside the picture.
    std::optional<std::int32_t> source(int point) const {
        std::int64_t place = (point - begin_) * sourceLength_ / length_;
        if (mirrored_) place = sourceLength_ - 1 - place;
        place += sourceBegin_;
        if (place < 0 || place >= sourceRoom_) return std::nullopt;
        return static_cast<std::int32_t>(place);
    }

  private:
    bool mirrored_;
    std::int64_t begin_, length_;
    std::int64_t sourceBegin_, sourceLength_;
    std::int32_t sourceRoom_;
    std::int64_t first_, end_;
};

/// The points of the picture for the visible columns that lie in it.
struct Columns {
    int first = 0;                     ///< on the surface
    std::vector<std::int32_t> source;  ///< for each column from there on
};

// Those that lie outside the picture are at the ends of the axis.
Columns columnsOf(Axis const &axis) {
    Columns columns;
    for (int x = axis.first(); x < axis.end(); ++x) {
        auto const source = axis.source(x);
        if (!source) continue;
        if (columns.source.empty()) columns.first = x;
        columns.source.push_back(*source);
    }
    return columns;
}

/// Draws lines of a picture.
class LinePainter {
  public:
    LinePainter(DibView const &picture, Columns const &columns)
        : picture_(picture), columns_(columns) {
        for (unsigned int index = 0; index < colors_.size(); ++index)
            colors_[index] = picture.color(index);
    }

    /// Draws from a line of the picture's depth.
    void paint(std::uint8_t const *line, Pixel *target) const {
        unsigned int const bitCount = picture_.bitCount();
        target += columns_.first;
        switch (bitCount) {
            case 24:
                return paint24(line, target);
            case 32:
                return paintEach(target, [=](std::int32_t x) { return valueAt(line, 32, x); });
            case 16:
                return paintEach(target,
                                 [=](std::int32_t x) { return pixelOf15(valueAt(line, 16, x)); });
            case 8:
                return paintIndices(line, target);
            default:
                return paintEach(target, [=, this](std::int32_t x) {
                    return colors_[valueAt(line, bitCount, x)];
                });
        }
    }

    /// Draws from a line of indices of a byte each.
    void paintIndices(std::uint8_t const *line, Pixel *target) const {
        paintEach(target, [=, this](std::int32_t x) { return colors_[line[x]]; });
    }

  private:
    template <typename Color>
    void paintEach(Pixel *target, Color color) const {
        for (std::int32_t const x : columns_.source)
            *target++ = color(x);
    }

    // Reads four bytes but of the last pixel, which may end the bits. Its columns are at one end.
    void paint24(std::uint8_t const *line, Pixel *target) const {
        std::int32_t const last = picture_.width() - 1;
        std::int32_t const *first = columns_.source.data(), *end = first + columns_.source.size();
        for (; first != end && *first == last; ++first)
            *target++ = valueAt(line, 24, last);
        for (; first != end && end[-1] == last; --end)
            target[end - first - 1] = valueAt(line, 24, last);
        for (; first != end; ++first) {
            Pixel value;
            std::memcpy(&value, line + 3 * static_cast<std::size_t>(*first), sizeof value);
            *target++ = value & 0xFFFFFF;
        }
    }

    DibView const &picture_;
    Columns const &columns_;
    std::array<Pixel, 256> colors_{};
};

void drawPlain(DibView const &picture, LinePainter const &painter, Axis const &lines,
               DeviceContext &context) {
    for (int y = lines.first(); y < lines.end(); ++y)
        if (auto const source = lines.source(y))
            painter.paint(picture.line(*source), context.line(y));
}

struct FreeLine {
    void operator()(std::uint8_t *line) const { std::free(line); }
};

// Zeros, of which only those take memory that are looked at.
std::unique_ptr<std::uint8_t, FreeLine> emptyLine(std::int32_t width) {
    std::unique_ptr<std::uint8_t, FreeLine> line(
        static_cast<std::uint8_t *>(std::calloc(static_cast<std::size_t>(width), 1)));
    if (line == nullptr) throw std::bad_alloc();
    return line;
}

// The lines of the code go one way, from the bottom to the top: those of the surface are drawn in
// the order in which theirs come.
void drawCompressed(DibView const &picture, LinePainter const &painter, Axis const &lines,
                    DeviceContext &context) {
    struct Pair {
        std::int32_t source;
        int y;
    };
    std::vector<Pair> pairs;
    for (int y = lines.first(); y < lines.end(); ++y)
        if (auto const source = lines.source(y)) pairs.push_back({*source, y});
    std::ranges::stable_sort(pairs, std::greater(), &Pair::source);

    RunLengthReader reader({picture.bits(), static_cast<std::size_t>(picture.bitsSize())},
                           picture.bitCount(), static_cast<std::size_t>(picture.width()));
    auto const line = emptyLine(picture.width());
    std::int32_t at = picture.height();
    for (auto const &[source, y] : pairs) {
        for (; at > source && !reader.isAtEnd(); --at)
            reader.next(line.get());
        if (at > source) reader.next(line.get());
        painter.paintIndices(line.get(), context.line(y));
    }
}

/// The part of a picture, counted as its lines lie, that goes to a rectangle of the surface.
struct Stretch {
    int x, y, width, height;
    int sourceX, sourceY, sourceWidth, sourceHeight;
};

// Throws std::bad_alloc.
void draw(DibView const &picture, Stretch const &to, DeviceContext &context) {
    std::int64_t const wanted = to.sourceHeight;
    std::int64_t const sourceLines = picture.isTopDown() ? std::abs(wanted) : wanted;
    std::int64_t const top =
        picture.isTopDown() ? to.sourceY : std::int64_t{picture.height()} - to.sourceY - wanted;
    Axis const columns(to.x, to.width, context.width(), to.sourceX, to.sourceWidth,
                       picture.width());
    Axis const lines(to.y, to.height, context.height(), top, sourceLines, picture.height());
    Columns const visible = columnsOf(columns);
    LinePainter const painter(picture, visible);
    (picture.isCompressed() ? drawCompressed : drawPlain)(picture, painter, lines, context);
}

}  // namespace

DeviceContext::DeviceContext(int width, int height)
    : width_(std::max(width, 0)), height_(std::max(height, 0)), pixels_(offset(height_)) {}

DeviceContext::~DeviceContext() = default;

}  // namespace tqplatform

int StretchDIBits(HDC context, int x, int y, int width, int height, int sourceX, int sourceY,
                  int sourceWidth, int sourceHeight, void const *bits, BITMAPINFO const *info,
                  unsigned int usage, unsigned long operation) {
    using namespace tqplatform;
    DibView const picture(info, bits);
    bool const known = usage == DIB_RGB_COLORS && operation == SRCCOPY;
    if (context == nullptr || !picture.isValid() || !known || width == 0 || height == 0) return 0;
    try {
        draw(picture, {x, y, width, height, sourceX, sourceY, sourceWidth, sourceHeight}, *context);
    } catch (std::bad_alloc const &) {
        return 0;
    }
    return static_cast<int>(
        std::min<std::int64_t>(std::abs(std::int64_t{sourceHeight}), picture.height()));
}

int SetStretchBltMode(HDC context, int mode) {
    return context == nullptr ? 0 : std::exchange(context->stretchMode, mode);
}

HPALETTE SelectPalette(HDC context, HPALETTE palette, int /*background*/) {
    bool const known = palette == nullptr || tqplatform::findPalette(palette) != nullptr;
    if (context == nullptr || !known) return nullptr;
    context->realized = false;
    return std::exchange(context->palette, palette);
}

unsigned int RealizePalette(HDC context) {
    if (context == nullptr || std::exchange(context->realized, true)) return 0;
    auto const palette = tqplatform::findPalette(context->palette);
    return palette == nullptr ? 0 : static_cast<unsigned int>(palette->size());
}
