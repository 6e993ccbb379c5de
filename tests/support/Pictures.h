#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tqplatform/graphics/Dib.h"

/// A picture as a file has it, without the file's header, and the colours that it shows from the
/// upper left on.
struct Picture {
    BITMAPINFOHEADER header{};
    std::vector<RGBQUAD> colors;
    std::string bits;
    std::vector<tqplatform::Pixel> pixels;

    std::string block() const {
        return std::string(reinterpret_cast<char const *>(&header), sizeof header) +
               std::string(reinterpret_cast<char const *>(colors.data()), colors.size() * 4) + bits;
    }
    /// The file, with `gap` bytes ahead of the bits.
    std::string file(std::size_t gap = 0) const {
        auto const offset = static_cast<std::uint32_t>(54 + colors.size() * 4 + gap);
        std::string result = "BM" + std::string(12, '\0');
        std::memcpy(result.data() + 10, &offset, 4);
        std::string all = block();
        all.insert(all.size() - bits.size(), gap, 'g');
        return result + all;
    }
};

/// Any picture of that size and depth, with lines from the top if `height` is negative. Neighbours
/// are the same now and then.
inline Picture makePicture(std::int32_t width, std::int32_t height, unsigned bitCount,
                           unsigned seed = 1) {
    std::mt19937 random(seed);
    Picture picture;
    picture.header = {40, width, height, 1, static_cast<std::uint16_t>(bitCount), 0, 0, 0, 0, 0, 0};
    for (unsigned i = 0; i < tqplatform::usualColors(bitCount); ++i) {
        auto const byte = [&] { return static_cast<std::uint8_t>(random()); };
        picture.colors.push_back({byte(), byte(), byte(), 0});
    }
    auto const lines = static_cast<std::size_t>(std::abs(height));
    auto const stride =
        static_cast<std::size_t>((width * static_cast<int>(bitCount) + 31) / 32 * 4);
    picture.bits.assign(stride * lines, '\0');
    picture.pixels.resize(lines * static_cast<std::size_t>(width));
    std::uint32_t value = 0;
    for (std::size_t y = 0; y < lines; ++y)
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            if (random() % 3 != 0) value = static_cast<std::uint32_t>(random());
            if (bitCount < 32) value &= (1U << bitCount) - 1;
            std::size_t const line = height < 0 ? y : lines - 1 - y;
            for (std::size_t bit = 0; bit < bitCount; ++bit) {
                bool const low = bitCount >= 8;  // bytes lowest first, bits of a byte highest first
                std::size_t const at = x * bitCount + bit;
                unsigned const shift = low ? at % 8 : 7 - at % 8;
                unsigned const part = value >> (low ? bit : bitCount - 1 - bit) & 1;
                picture.bits[line * stride + at / 8] |= static_cast<char>(part << shift);
            }
            auto const five = [&](unsigned shift) { return (value >> shift & 31) * 33 / 4; };
            picture.pixels[y * static_cast<std::size_t>(width) + x] =
                bitCount <= 8    ? tqplatform::pixelOf(picture.colors[value])
                : bitCount == 16 ? five(10) << 16 | five(5) << 8 | five(0)
                                 : value & 0xFFFFFF;
        }
    return picture;
}
