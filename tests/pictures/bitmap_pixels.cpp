// Shows a BMP file as the library sees it, for a look through another program's eyes.
//
//     bitmap_pixels show FILE.bmp            the pixels as a PPM file, to standard output
//     bitmap_pixels copy FILE.bmp NEW.bmp    reads and writes the bitmap
//     bitmap_pixels compress FILE.bmp NEW.bmp    the same, run-length coded

#include <cstdio>
#include <string>
#include <vector>

#include "tqlib/bitmap/CDib.h"

namespace {

int show(CDib &bitmap) {
    CSize const size = bitmap.GetDimensions();
    int const width = static_cast<int>(size.cx), height = static_cast<int>(std::abs(size.cy));
    tqplatform::DeviceContext screen(width, height);
    CDC dc(&screen);
    bitmap.Draw(&dc, CPoint(0, 0), CSize(width, height));
    std::printf("P6\n%d %d\n255\n", width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int const shift : {16, 8, 0})
                std::putchar(static_cast<int>(screen.pixel(x, y) >> shift & 255));
    return 0;
}

}  // namespace

int main(int argc, char **argv) {
    std::vector<std::string> const words(argv, argv + argc);
    if (argc < 3) return 2;
    CFile source;
    CDib bitmap;
    if (source.Open(argv[2], CFile::modeRead) == 0 || bitmap.Read(&source) == 0) return 1;
    if (words[1] == "show") return show(bitmap);
    if (argc < 4 || (words[1] == "compress" && bitmap.Compress(nullptr, 1) == 0)) return 1;
    CFile target(argv[3], CFile::modeCreate | CFile::modeWrite);
    return bitmap.Write(&target) == 1 ? 0 : 1;
}
