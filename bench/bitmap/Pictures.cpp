#include "bitmap/Pictures.h"

#include <stdexcept>

#include "Random.h"
#include "TemporaryFile.h"
#include "tqlib/bitmap/CDib.h"

namespace {

constexpr std::size_t pixelCount = std::size_t{pictureWidth} * pictureHeight;

// Boxes of one colour on a ground, with a frame around each.
std::vector<std::uint8_t> makeDrawing() {
    Random random;
    std::vector<std::uint8_t> indices(pixelCount, 7);
    for (int box = 0; box < 60; ++box) {
        int const left = random.between(0, pictureWidth - 300);
        int const top = random.between(0, pictureHeight - 200);
        int const width = random.between(20, 300), height = random.between(20, 200);
        auto const fill = static_cast<std::uint8_t>(random.between(0, 255));
        for (int y = top; y < top + height; ++y)
            for (int x = left; x < left + width; ++x) {
                bool const frame = y == top || y == top + height - 1 || x == left;
                indices[static_cast<std::size_t>(y * pictureWidth + x)] = frame ? 0 : fill;
            }
    }
    return indices;
}

std::vector<std::uint8_t> makeNoise() {
    Random random;
    std::vector<std::uint8_t> indices(pixelCount);
    for (std::uint8_t &index : indices)
        index = static_cast<std::uint8_t>(random.between(0, 255));
    return indices;
}

std::string write(char const *name, CDib &bitmap) {
    std::string const path = temporaryFile(name);
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    if (bitmap.Write(&file) != 1) throw std::runtime_error("can't write " + path);
    return path;
}

void fillColors(CDib &bitmap) {
    for (int index = 0; index < bitmap.colorCount; ++index)
        bitmap.colorTable[index] = {static_cast<std::uint8_t>(index),
                                    static_cast<std::uint8_t>(255 - index),
                                    static_cast<std::uint8_t>(index * 7), 0};
}

std::string writeColors() {
    CDib bitmap(CSize(pictureWidth, pictureHeight), 24);
    bitmap.CreateSection(nullptr);
    for (std::uint32_t place = 0; place < bitmap.imageSize; ++place)
        bitmap.image[place] = noise()[place / 3];
    return write("colors.bmp", bitmap);
}

std::string writeDrawing(bool compressed) {
    CDib section(CSize(pictureWidth, pictureHeight), 8), bitmap;
    fillColors(section);
    section.CreateSection(nullptr);
    std::copy(drawing().begin(), drawing().end(), section.image);
    std::string const path = write("drawing.bmp", section);
    if (!compressed) return path;
    CFile file(path.c_str(), CFile::modeRead);
    if (bitmap.Read(&file) != 1 || bitmap.Compress(nullptr, 1) != 1)
        throw std::runtime_error("can't compress " + path);
    return write("compressed.bmp", bitmap);
}

}  // namespace

std::vector<std::uint8_t> const &drawing() {
    static std::vector<std::uint8_t> const indices = makeDrawing();
    return indices;
}

std::vector<std::uint8_t> const &noise() {
    static std::vector<std::uint8_t> const indices = makeNoise();
    return indices;
}

std::string const &colorFile() {
    static std::string const path = writeColors();
    return path;
}

std::string const &drawingFile() {
    static std::string const path = writeDrawing(false);
    return path;
}

std::string const &compressedFile() {
    static std::string const path = writeDrawing(true);
    return path;
}
