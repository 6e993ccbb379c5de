#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "tqplatform/graphics/Objects.h"
#include "tqplatform/graphics/ObjectTable.h"
#include "tqplatform/graphics/Palette.h"
#include "tqplatform/graphics/RunLength.h"

namespace tqplatform {
namespace {

/// A header and room for every colour that an index can have.
struct Info {
    BITMAPINFOHEADER header{};
    std::array<RGBQUAD, 256> colors{};

    BITMAPINFO const *get() const { return reinterpret_cast<BITMAPINFO const *>(this); }
};
static_assert(offsetof(Info, colors) == offsetof(BITMAPINFO, bmiColors));

/// A bitmap: an uncompressed picture in memory of its own.
class Bitmap {
  public:
    /// A black one, with memory for at least `leastBytes` of bits. Throws std::bad_alloc.
    Bitmap(std::int32_t width, std::int32_t height, unsigned int bitCount,
           std::uint32_t leastBytes = 0) {
        info_.header = {sizeof info_.header,
                        width,
                        height,
                        1,
                        static_cast<std::uint16_t>(bitCount),
                        BI_RGB,
                        0,
                        0,
                        0,
                        0,
                        0};
        std::uint64_t const size = std::max<std::uint64_t>(pictureBytes(info_.header), leastBytes);
        if (size > mostPictureBytes) throw std::bad_alloc();
        bits_.reset(static_cast<std::uint8_t *>(std::calloc(static_cast<std::size_t>(size), 1)));
        if (bits_ == nullptr) throw std::bad_alloc();
    }

    /// Takes over the colours of a picture.
    void setColors(DibView const &picture) {
        std::uint32_t const count = std::min<std::uint32_t>(picture.colorCount(), 256);
        std::copy_n(picture.colors(), count, info_.colors.begin());
        info_.header.biClrUsed = count;
    }

    DibView view() const { return {info_.get(), bits_.get()}; }
    std::uint8_t *bits() { return bits_.get(); }
    std::uint8_t *line(std::int32_t y) { return const_cast<std::uint8_t *>(view().line(y)); }

    /// The run-length code between the call that asks for its size and the one that fetches it; its
    /// depth and width, 0 without one.
    std::vector<std::uint8_t> code;
    unsigned int codeBits = 0;
    std::int32_t codeWidth = 0;

  private:
    struct Free {
        void operator()(void *block) const { std::free(block); }
    };

    Info info_;
    std::unique_ptr<std::uint8_t, Free> bits_;
};

using BitmapTable = ObjectTable<Bitmap, BitmapTag>;

// Never destroyed: a bitmap may belong to a static object of an application.
BitmapTable &bitmapTable() {
    static auto *const table = new BitmapTable;
    return *table;
}

/// Puts a value into a line; the opposite of valueAt().
void putValue(std::uint8_t *line, unsigned int bitCount, std::int32_t x, std::uint32_t value) {
    auto const place = static_cast<std::size_t>(x);
    auto const put = [&](std::uint8_t &byte, unsigned int shift, unsigned int mask) {
        byte = static_cast<std::uint8_t>((byte & ~(mask << shift)) | (value & mask) << shift);
    };
    switch (bitCount) {
        case 1:
            return put(line[place / 8], 7 - place % 8, 1);
        case 4:
            return put(line[place / 2], place % 2 == 0 ? 4 : 0, 15);
        case 8:
            line[place] = static_cast<std::uint8_t>(value);
            return;
        default:
            for (unsigned int byte = 0; byte < bitCount / 8; ++byte)
                line[place * (bitCount / 8) + byte] = static_cast<std::uint8_t>(value >> 8 * byte);
    }
}

// Copies the lines of a picture into a bitmap of the same depth.
void copyLines(DibView const &picture, Bitmap &bitmap) {
    auto const width = static_cast<std::size_t>(picture.width());
    auto const bytes = static_cast<std::size_t>(lineBytes(picture.width(), picture.bitCount()));
    if (!picture.isCompressed()) {
        for (std::int32_t y = 0; y < picture.height(); ++y)
            std::memcpy(bitmap.line(y), picture.line(y), bytes);
        return;
    }
    RunLengthReader reader({picture.bits(), static_cast<std::size_t>(picture.bitsSize())},
                           picture.bitCount(), width);
    std::vector<std::uint8_t> indices(width);
    for (std::int32_t y = picture.height() - 1; y >= 0 && !reader.isAtEnd(); --y) {
        std::uint8_t *const line = bitmap.line(y);
        if (picture.bitCount() == 8) {
            reader.next(line);
            continue;
        }
        reader.next(indices.data());
        for (std::size_t x = 0; x < width; ++x)
            putValue(line, 4, static_cast<std::int32_t>(x), indices[x]);
    }
}

Pixel colorOf(DibView const &picture, std::uint32_t value) {
    if (picture.bitCount() <= 8) return picture.color(value);
    return picture.bitCount() == 16 ? pixelOf15(value) : value;
}

/// The colours that a depth has for pictures that bring none: black and white, sixteen usual ones,
/// or the halftone palette.
RGBQUAD standardColor(unsigned int bitCount, unsigned int index) {
    if (bitCount == 8) {
        PALETTEENTRY const entry = halftoneEntry(index);
        return {entry.peBlue, entry.peGreen, entry.peRed, 0};
    }
    if (bitCount == 1) index *= 15;
    if (index == 7) return {192, 192, 192, 0};
    if (index == 8) return {128, 128, 128, 0};
    auto const level = static_cast<std::uint8_t>(index > 8 ? 255 : 128);
    auto const part = [=](unsigned int bit) {
        return static_cast<std::uint8_t>((index & bit) != 0 ? level : 0);
    };
    return {part(4), part(2), part(1), 0};
}

/// The values that pixels of a picture have in another depth.
class Conversion {
  public:
    /// Fills the colour table of `info`, which has the entries that its header tells.
    Conversion(DibView const &picture, BITMAPINFO &info)
        : picture_(picture), bitCount_(info.bmiHeader.biBitCount) {
        unsigned int const usual = usualColors(bitCount_);
        std::uint32_t const used = info.bmiHeader.biClrUsed;
        count_ = usual == 0 ? 0 : std::min(used == 0 ? usual : used, usual);
        isIndex_ = picture.bitCount() <= bitCount_ && usual != 0;
        for (std::uint32_t index = 0; index < count_; ++index)
            colors_[index] = isIndex_ ? tableColor(index) : standardColor(bitCount_, index);
        std::copy_n(colors_.begin(), count_, info.bmiColors);
    }

    /// True if pixels keep their values.
    bool isSame() const { return picture_.bitCount() == bitCount_ && (isIndex_ || bitCount_ > 8); }

    std::uint32_t value(std::uint32_t value) {
        if (isIndex_) return value;
        Pixel const color = colorOf(picture_, value);
        if (bitCount_ <= 8) return nearest(color);
        if (bitCount_ != 16) return color;
        return (color >> 9 & 0x7C00) | (color >> 6 & 0x3E0) | (color >> 3 & 0x1F);
    }

  private:
    RGBQUAD tableColor(std::uint32_t index) const {
        return index < picture_.colorCount() ? picture_.colors()[index] : RGBQUAD{};
    }

    // Neighbouring pixels often have one colour.
    std::uint32_t nearest(Pixel color) {
        if (color == last_ && hasLast_) return lastIndex_;
        auto const distance = [=](RGBQUAD other) {
            auto const square = [](int difference) { return difference * difference; };
            return square(static_cast<int>(color >> 16) - other.rgbRed) +
                   square(static_cast<int>(color >> 8 & 255) - other.rgbGreen) +
                   square(static_cast<int>(color & 255) - other.rgbBlue);
        };
        auto const found =
            std::ranges::min_element(colors_.begin(), colors_.begin() + count_, {}, distance);
        last_ = color;
        hasLast_ = true;
        return lastIndex_ = static_cast<std::uint32_t>(found - colors_.begin());
    }

    DibView const &picture_;
    unsigned int bitCount_;
    std::uint32_t count_ = 0;
    bool isIndex_ = false;
    std::array<RGBQUAD, 256> colors_{};
    Pixel last_ = 0;
    bool hasLast_ = false;
    std::uint32_t lastIndex_ = 0;
};

/// What GetDIBits() was asked for.
struct Order {
    std::int32_t width, height;
    unsigned int bitCount;
    std::uint32_t compression;
    bool topDown;
};

// Gives line `y` of the picture in `order`'s depth; what the picture hasn't is 0.
void convertLine(DibView const &picture, std::int32_t y, Order const &order, Conversion &conversion,
                 std::uint8_t *target) {
    auto const bytes = static_cast<std::size_t>(lineBytes(order.width, order.bitCount));
    std::uint8_t const *const source = picture.line(y);
    bool const isSame = conversion.isSame() && order.bitCount == picture.bitCount();
    if (isSame && picture.width() == order.width) {
        std::memcpy(target, source, bytes);
        return;
    }
    std::memset(target, 0, bytes);
    for (std::int32_t x = 0; x < std::min(picture.width(), order.width); ++x)
        putValue(target, order.bitCount, x,
                 conversion.value(valueAt(source, picture.bitCount(), x)));
}

// Makes the run-length code of the whole picture.
void encode(Bitmap &bitmap, Order const &order, Conversion &conversion) {
    DibView const picture = bitmap.view();
    Order const indices{order.width, order.height, 8, BI_RGB, false};
    std::vector<std::uint8_t> line(static_cast<std::size_t>(lineBytes(order.width, 8)));
    auto const width = static_cast<std::size_t>(order.width);
    bool const areIndices =
        picture.bitCount() == 8 && order.bitCount == 8 && picture.width() == order.width;
    bitmap.code.clear();
    bitmap.codeBits = 0;
    for (std::int32_t y = picture.height() - 1; y >= 0; --y) {
        std::uint8_t const *pixels = picture.line(y);
        if (!areIndices) {
            convertLine(picture, y, indices, conversion, line.data());
            pixels = line.data();
        }
        encodeRuns({pixels, width}, order.bitCount, bitmap.code);
    }
    endRuns(bitmap.code);
    bitmap.codeBits = order.bitCount;
    bitmap.codeWidth = order.width;
}

bool isKnown(Order const &order) {
    bool const compressed = order.compression != BI_RGB;
    bool const depth = usualColors(order.bitCount) != 0 || order.bitCount == 16 ||
                       order.bitCount == 24 || order.bitCount == 32;
    bool const form = !compressed || (order.compression == BI_RLE8 && order.bitCount == 8) ||
                      (order.compression == BI_RLE4 && order.bitCount == 4);
    bool const whole = !compressed || !order.topDown;
    return depth && form && whole && order.width > 0 && order.height > 0 &&
           lineBytes(order.width, order.bitCount) * static_cast<std::uint64_t>(order.height) <=
               mostPictureBytes;
}

// The code that is fetched is the one whose size was told, whatever has become of the bits.
int giveCode(Bitmap &bitmap, Order const &order, Conversion &conversion, void *bits,
             BITMAPINFO &info) {
    bool const isReady = bitmap.codeBits == order.bitCount && bitmap.codeWidth == order.width;
    if (bits == nullptr || !isReady) encode(bitmap, order, conversion);
    if (bitmap.code.size() > mostPictureBytes) throw std::bad_alloc();
    info.bmiHeader.biSizeImage = static_cast<std::uint32_t>(bitmap.code.size());
    if (bits == nullptr) return bitmap.view().height();
    std::memcpy(bits, bitmap.code.data(), bitmap.code.size());
    bitmap.code = {};
    bitmap.codeBits = 0;
    return bitmap.view().height();
}

int giveLines(Bitmap const &bitmap, Order const &order, Conversion &conversion, unsigned int start,
              unsigned int lines, void *bits, BITMAPINFO &info) {
    DibView const picture = bitmap.view();
    auto const bytes = lineBytes(order.width, order.bitCount);
    info.bmiHeader.biSizeImage =
        static_cast<std::uint32_t>(bytes * static_cast<std::uint64_t>(order.height));
    auto const height = static_cast<unsigned int>(picture.height());
    unsigned int const most = std::min(lines, static_cast<unsigned int>(order.height));
    unsigned int const count = start < height ? std::min(most, height - start) : 0;
    for (unsigned int line = 0; bits != nullptr && line < count; ++line) {
        unsigned int const place = order.topDown ? count - 1 - line : line;
        convertLine(picture, static_cast<std::int32_t>(height - 1 - start - line), order,
                    conversion, static_cast<std::uint8_t *>(bits) + place * bytes);
    }
    return static_cast<int>(count);
}

HBITMAP makeBitmap(BITMAPINFOHEADER const &header, DibView const &picture, bool hasPicture) {
    if (!hasPicture) {
        auto const height = static_cast<std::int32_t>(lineCount(header));
        std::int32_t const width = header.biWidth;
        return bitmapTable().add(std::make_shared<Bitmap>(width, height, 32));
    }
    auto bitmap = std::make_shared<Bitmap>(picture.width(), picture.height(), picture.bitCount());
    if (picture.bitCount() <= 8) bitmap->setColors(picture);
    copyLines(picture, *bitmap);
    return bitmapTable().add(std::move(bitmap));
}

}  // namespace
}  // namespace tqplatform

HBITMAP CreateDIBitmap(HDC /*context*/, BITMAPINFOHEADER const *header, unsigned int flags,
                       void const *bits, BITMAPINFO const *info, unsigned int usage) {
    using namespace tqplatform;
    bool const hasPicture = (flags & CBM_INIT) != 0;
    DibView const picture(info, bits);
    if (header == nullptr || usage != DIB_RGB_COLORS || (hasPicture && !picture.isValid()))
        return nullptr;
    try {
        return makeBitmap(*header, picture, hasPicture);
    } catch (std::bad_alloc const &) {
        return nullptr;
    }
}

HBITMAP CreateDIBSection(HDC /*context*/, BITMAPINFO const *info, unsigned int usage, void **bits,
                         void const *section, std::uint32_t /*offset*/) {
    using namespace tqplatform;
    *bits = nullptr;
    if (info == nullptr || usage != DIB_RGB_COLORS || section != nullptr) return nullptr;
    BITMAPINFOHEADER header = info->bmiHeader;
    header.biSizeImage = 0;
    BITMAPINFO const alone{header, {}};
    DibView const picture(&alone, &alone);
    if (!picture.isValid() || picture.isCompressed()) return nullptr;
    try {
        std::int32_t const width = header.biWidth, height = header.biHeight;
        auto bitmap = std::make_shared<Bitmap>(width, height, unsigned{header.biBitCount},
                                               std::uint32_t{info->bmiHeader.biSizeImage});
        if (header.biBitCount <= 8) bitmap->setColors({info, info});
        *bits = bitmap->bits();
        return bitmapTable().add(std::move(bitmap));
    } catch (std::bad_alloc const &) {
        *bits = nullptr;
        return nullptr;
    }
}

int DeleteObject(HBITMAP bitmap) {
    return tqplatform::bitmapTable().remove(bitmap) ? 1 : 0;
}

int GetDIBits(HDC /*context*/, HBITMAP bitmap, unsigned int start, unsigned int lines, void *bits,
              BITMAPINFO *info, unsigned int usage) {
    using namespace tqplatform;
    auto const object = bitmapTable().find(bitmap);
    if (object == nullptr || info == nullptr || usage != DIB_RGB_COLORS) return 0;
    BITMAPINFOHEADER const &header = info->bmiHeader;
    auto const height = static_cast<std::int32_t>(
        std::min<std::int64_t>(lineCount(header), std::numeric_limits<std::int32_t>::max()));
    Order const order{header.biWidth, height, header.biBitCount, header.biCompression,
                      header.biHeight < 0};
    if (header.biSize != sizeof header || !isKnown(order)) return 0;
    try {
        DibView const picture = object->view();
        Conversion conversion(picture, *info);
        if (order.compression != BI_RGB) return giveCode(*object, order, conversion, bits, *info);
        return giveLines(*object, order, conversion, start, lines, bits, *info);
    } catch (std::bad_alloc const &) {
        return 0;
    }
}
