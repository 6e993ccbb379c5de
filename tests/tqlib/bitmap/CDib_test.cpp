#include "tqlib/bitmap/CDib.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "support/Pictures.h"
#include "tqplatform/desktop/ScriptedUser.h"
#include "tqplatform/framework/ModuleState.h"

namespace {

using tqplatform::DeviceContext;
using tqplatform::Pixel;

// A bitmap on a block of its own.
struct Attached {
    explicit Attached(Picture const &picture) : block(picture.block()) {
        EXPECT_EQ(bitmap.AttachMemory(block.data(), 0, nullptr), 1);
    }
    std::string block;
    CDib bitmap;
};

Pixel pixelOf(RGBQUAD color) {
    EXPECT_EQ(color.rgbReserved, 0);
    return tqplatform::pixelOf(color);
}

TEST(Bitmaps, ANewOneHasHeaderAndColoursAndNoBits) {
    struct Row {
        int bitCount, colors;
        unsigned int imageSize;
    } const rows[] = {{1, 2, 28},   {2, 0, 28},   {4, 16, 56}, {8, 256, 84},
                      {16, 0, 140}, {24, 0, 196}, {32, 0, 252}};
    for (auto const &[bitCount, colors, imageSize] : rows) {
        CDib bitmap(CSize(9, 7), bitCount);
        EXPECT_EQ(bitmap.GetDimensions(), CSize(9, 7));
        EXPECT_EQ(bitmap.colorCount, colors) << bitCount;
        EXPECT_EQ(bitmap.GetSizeHeader(), 40 + 4 * colors);
        EXPECT_EQ(bitmap.imageSize, imageSize) << bitCount;
        EXPECT_EQ(bitmap.image, nullptr);
        EXPECT_EQ(bitmap.header->biClrUsed, static_cast<unsigned>(colors));
        EXPECT_EQ(pixelOf(bitmap.GetPixel(0, 0)), 0xFFFFFFu);
        EXPECT_EQ(bitmap.CreateSection(nullptr) != nullptr, bitCount != 2);
        EXPECT_EQ(bitmap.CreateSection(nullptr), nullptr);
        for (int again = 0; again < 2; ++again) {
            EXPECT_EQ(bitmap.MakePalette(), colors == 0 ? 0 : 1);
            EXPECT_EQ(bitmap.SetSystemPalette(nullptr), colors == 0 ? 1 : 0);
        }
    }
    CDib none;
    EXPECT_EQ(none.GetDimensions(), CSize(0, 0));
    EXPECT_EQ(none.GetSizeHeader(), 40);
    EXPECT_EQ(none.Draw(nullptr, CPoint(), CSize(1, 1)), 0);
    EXPECT_EQ(none.CreateBitmap(nullptr), nullptr);
    EXPECT_EQ(none.CreateSection(nullptr), nullptr);
    CDib later(CSize(100, 100), 24);
    later.header->biHeight = 2;  // there are no bits yet
    EXPECT_NE(later.CreateSection(nullptr), nullptr);
    EXPECT_EQ(later.imageSize, 600u);
    EXPECT_EQ(none.GetRGBColor(0, 0), 0u);
    CDib huge(CSize(1 << 30, 1 << 30), 32);
    EXPECT_EQ(huge.CreateSection(nullptr), nullptr);
}

TEST(Bitmaps, PixelsAreThoseOfThePicture) {
    tqplatform::ScriptedUser user;
    for (unsigned const bitCount : {4u, 8u, 24u})
        for (int width = 1; width < 20; ++width) {
            Picture const picture = makePicture(width, 5, bitCount);
            Attached const attached(picture);
            CDib const &bitmap = attached.bitmap;
            for (int y = -1; y <= 5; ++y)
                for (int x = -1; x <= width; ++x) {
                    bool const inside = x >= 0 && x < width && y >= 0 && y < 5;
                    auto const place = static_cast<std::size_t>(y * width + x);
                    Pixel const expected = inside ? picture.pixels[place] : 0xFFFFFF;
                    ASSERT_EQ(pixelOf(bitmap.GetPixel(x, y)), expected) << x << " " << y;
                    ASSERT_EQ(bitmap.GetRGBColor(x, y), inside ? expected : 0);
                    int const index = bitmap.Get256Color(x, y);
                    ASSERT_EQ(index < 0, !inside || bitCount == 24);
                    if (index < 0) continue;
                    RGBQUAD const color = picture.colors[static_cast<std::size_t>(index)];
                    ASSERT_EQ(tqplatform::pixelOf(color), expected);
                }
        }
    EXPECT_EQ(user.messages(), "");
    for (unsigned const bitCount : {1u, 16u, 32u}) {
        Attached const other(makePicture(3, 3, bitCount));
        EXPECT_EQ(pixelOf(other.bitmap.GetPixel(1, 1)), 0u);
        EXPECT_EQ(other.bitmap.GetRGBColor(1, 1), 0u);
        EXPECT_EQ(other.bitmap.Get256Color(1, 1), -1);
        EXPECT_EQ(pixelOf(other.bitmap.GetPixel(3, 1)), 0xFFFFFFu);
    }
    EXPECT_EQ(user.styles.size(), 9u);
    EXPECT_EQ(user.messages().find("This BMP format is not supported!|"), 0u);
    EXPECT_EQ(user.styles[0], 0x10u);
}

TEST(Bitmaps, AnIndexBeyondTheColoursIsBlack) {
    Picture picture = makePicture(4, 1, 8);
    picture.colors.resize(2);
    picture.header.biClrUsed = 2;
    picture.bits = std::string("\0\1\2\xFF", 4);
    Attached attached(picture);
    DeviceContext screen(4, 1);
    CDC dc(&screen);
    EXPECT_EQ(attached.bitmap.Draw(&dc, CPoint(), CSize(4, 1)), 1);
    for (int x = 0; x < 4; ++x) {
        Pixel const expected =
            x < 2 ? tqplatform::pixelOf(picture.colors[static_cast<std::size_t>(x)]) : 0;
        EXPECT_EQ(pixelOf(attached.bitmap.GetPixel(x, 0)), expected);
        EXPECT_EQ(screen.pixel(x, 0), expected);
    }
    EXPECT_EQ(attached.bitmap.Get256Color(3, 0), 255);
}

// The place of the picture that point `at` of [`start`, `start` + `length`) shows; -1 outside.
int sourceOf(int at, int start, int length, int source) {
    int const size = std::abs(length), begin = std::min(start, start + length);
    if (at < begin || at >= begin + size) return -1;
    int const place = static_cast<int>(static_cast<long long>(at - begin) * source / size);
    return length < 0 ? source - 1 - place : place;
}

TEST(Bitmaps, DrawingStretchesMirrorsAndClips) {
    struct Row {
        int x, y, width, height;
    } const rows[] = {{0, 0, 7, 5},     {2, 3, 7, 5},
                      {-3, -2, 20, 11}, {12, 9, -7, 5},
                      {0, 9, 10, -9},   {12, 9, -14, -5},
                      {5, 5, 1, 1},     {50, 50, 3, 3},
                      {0, 0, 0, 4},     {-2000000000, 0, 2000000004, 3}};
    for (unsigned const bitCount : {1u, 4u, 8u, 16u, 24u, 32u})
        for (int const height : {5, -5}) {
            Picture const picture = makePicture(7, height, bitCount);
            Attached attached(picture);
            for (auto const &row : rows) {
                DeviceContext screen(13, 10);
                CDC dc(&screen);
                EXPECT_EQ(
                    attached.bitmap.Draw(&dc, CPoint(row.x, row.y), CSize(row.width, row.height)),
                    1);
                EXPECT_EQ(screen.stretchMode, 3);
                for (int y = 0; y < 10; ++y)
                    for (int x = 0; x < 13; ++x) {
                        int const sourceX = sourceOf(x, row.x, row.width, 7);
                        int const sourceY = sourceOf(y, row.y, row.height, 5);
                        bool const drawn = sourceX >= 0 && sourceY >= 0;
                        auto const place = static_cast<std::size_t>(sourceY * 7 + sourceX);
                        ASSERT_EQ(screen.pixel(x, y), drawn ? picture.pixels[place] : 0)
                            << bitCount << " " << &row - rows << " " << x << " " << y;
                    }
            }
            EXPECT_EQ(attached.bitmap.Draw(nullptr, CPoint(), CSize(5, 5)), 1);
        }
}

TEST(Bitmaps, PalettesAreSelectedAndRealised) {
    Attached attached(makePicture(2, 2, 4));
    DeviceContext screen(2, 2);
    CDC dc(&screen);
    EXPECT_EQ(attached.bitmap.UsePalette(&dc, 0), 16u);
    EXPECT_EQ(screen.palette, attached.bitmap.paletteHandle);
    EXPECT_EQ(attached.bitmap.UsePalette(nullptr, 0), 0u);
    attached.bitmap.Empty();
    EXPECT_EQ(RealizePalette(&screen), 0u);
    EXPECT_EQ(SelectPalette(&screen, nullptr, 0) == nullptr, false);  // gone, but a number still
    Attached colors(makePicture(2, 2, 24));
    EXPECT_EQ(colors.bitmap.UsePalette(&dc, 0), 0u);
    EXPECT_EQ(colors.bitmap.SetSystemPalette(&dc), 1);
    EXPECT_EQ(colors.bitmap.UsePalette(&dc, 0), 256u);
}

TEST(Bitmaps, ABitmapOfTheSystemHasTheSamePicture) {
    for (unsigned const from : {1u, 4u, 8u, 16u, 24u, 32u})
        for (unsigned const to : {1u, 4u, 8u, 16u, 24u, 32u}) {
            Picture const picture = makePicture(11, 6, from);
            Attached attached(picture);
            HBITMAP const bitmap = attached.bitmap.CreateBitmap(nullptr);
            CDib target(CSize(11, 6), static_cast<int>(to));
            target.CreateSection(nullptr);
            auto *const info = reinterpret_cast<BITMAPINFO *>(target.header);
            EXPECT_EQ(GetDIBits(nullptr, bitmap, 0, 6, target.image, info, DIB_RGB_COLORS), 6);
            EXPECT_EQ(DeleteObject(bitmap), 1);
            EXPECT_EQ(DeleteObject(bitmap), 0);
            bool const exact = to >= 24 || (from <= 8 && to >= from && to <= 8) || from == to;
            if (!exact) continue;
            DeviceContext screen(11, 6);
            CDC dc(&screen);
            target.Draw(&dc, CPoint(), CSize(11, 6));
            EXPECT_TRUE(std::equal(picture.pixels.begin(), picture.pixels.end(), screen.line(0)))
                << from << " " << to;
        }
}

TEST(Bitmaps, ResourcesAreAttached) {
    CDib bitmap;
    EXPECT_EQ(bitmap.LoadBitmapA(900 + 0x70000), 1);
    EXPECT_EQ(bitmap.GetDimensions(), CSize(32, 32));
    EXPECT_EQ(bitmap.colorCount, 16);
    EXPECT_EQ(bitmap.GetRGBColor(0, 0), 0xC0C0C0u);
    EXPECT_EQ(bitmap.GetRGBColor(15, 7), 0x0000FFu);
    EXPECT_EQ(bitmap.GetRGBColor(5, 15), 0xFFFFFFu);
    EXPECT_EQ(bitmap.LoadBitmapA(901), 0);
    EXPECT_EQ(bitmap.GetDimensions(), CSize(32, 32));
    EXPECT_NE(AfxGetModuleState()->findClass("CDib"), nullptr);
    std::unique_ptr<CObject> const made(CDib::classCDib.createObject());
    EXPECT_TRUE(made->IsKindOf(&CDib::classCDib));
}

}  // namespace
