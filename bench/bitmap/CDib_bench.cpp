#include "tqlib/bitmap/CDib.h"

#include <fcntl.h>
#include <SDL2/SDL.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <string>

#include "bitmap/Pictures.h"
#include "Job.h"
#include "TemporaryFile.h"

namespace {

struct FreeSurface {
    void operator()(SDL_Surface *surface) const { SDL_FreeSurface(surface); }
};
using Surface = std::unique_ptr<SDL_Surface, FreeSurface>;

Surface load(std::string const &path) {
    return Surface(SDL_LoadBMP(path.c_str()));
}

Uint8 const *pixelAt(SDL_Surface const &surface, int x, int y) {
    return static_cast<Uint8 const *>(surface.pixels) + y * surface.pitch +
           x * surface.format->BytesPerPixel;
}

/// The colour of a pixel of 8 or 24 bits.
std::uint32_t colorAt(SDL_Surface const &surface, int x, int y) {
    Uint8 red, green, blue;
    Uint32 value = 0;
    std::memcpy(&value, pixelAt(surface, x, y), surface.format->BytesPerPixel);
    SDL_GetRGB(value, surface.format, &red, &green, &blue);
    return static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}

/// Some colours of a picture that was loaded, by which results are compared.
struct Sample {
    explicit Sample(Surface const &surface)
        : colors(colorsOf([&](int x, int y) { return colorAt(*surface, x, y); })) {}
    explicit Sample(CDib const &bitmap)
        : colors(colorsOf([&](int x, int y) {
              return static_cast<std::uint32_t>(bitmap.GetRGBColor(x, y));
          })) {}
    bool operator==(Sample const &) const = default;

    template <typename Color>
    static std::vector<std::uint32_t> colorsOf(Color color) {
        std::vector<std::uint32_t> result;
        for (int y = 0; y < pictureHeight; y += 13)
            for (int x = 0; x < pictureWidth; x += 17)
                result.push_back(color(x, y));
        return result;
    }

    std::vector<std::uint32_t> colors;
};

template <std::string const &(*path)()>
constexpr auto loadWithSdl = [](auto take) { take(load(path())); };

template <std::string const &(*path)()>
constexpr auto readWithTqlib = [](auto take) {
    CFile file(path().c_str(), CFile::modeRead);
    CDib bitmap;
    bitmap.Read(&file);
    take(bitmap);
};

auto const readingColors = Job<Sample>("read 24 bits")
                               .peer("SDL_LoadBMP", loadWithSdl<colorFile>)
                               .contender("tqlib", readWithTqlib<colorFile>);
auto const readingIndices = Job<Sample>("read 8 bits")
                                .peer("SDL_LoadBMP", loadWithSdl<drawingFile>)
                                .contender("tqlib", readWithTqlib<drawingFile>);

constexpr auto decodeWithTqlib = [](auto take) {
    CFile file(compressedFile().c_str(), CFile::modeRead);
    CDib bitmap;
    bitmap.Read(&file);
    bitmap.Compress(nullptr, 0);
    take(bitmap);
};

auto const decoding = Job<Sample>("decode")
                          .peer("SDL_LoadBMP", loadWithSdl<compressedFile>)
                          .contender("tqlib", decodeWithTqlib);

CDib &colors() {
    static CDib bitmap;
    if (bitmap.header == nullptr) {
        CFile file(colorFile().c_str(), CFile::modeRead);
        bitmap.Read(&file);
    }
    return bitmap;
}

Surface const &colorSurface() {
    static Surface const surface = load(colorFile());
    return surface;
}

// Both write over a file that is there: making room for it is the system's work, and takes longer.
std::string const &savedFile() {
    static std::string const path = [] {
        std::string name = temporaryFile("saved.bmp");
        SDL_SaveBMP(colorSurface().get(), name.c_str());
        return name;
    }();
    return path;
}

constexpr auto saveWithSdl = [](auto take) {
    SDL_SaveBMP_RW(colorSurface().get(), SDL_RWFromFile(savedFile().c_str(), "r+b"), 1);
    take(savedFile());
};

constexpr auto writeWithTqlib = [](auto take) {
    {
        CFile file(savedFile().c_str(), CFile::modeWrite);
        colors().Write(&file);
    }
    take(savedFile());
};

/// The picture in a file.
struct Saved : Sample {
    explicit Saved(std::string const &path) : Sample(load(path)) {}
};

auto const writing =
    Job<Saved>("write 24 bits").peer("SDL_SaveBMP", saveWithSdl).contender("tqlib", writeWithTqlib);

constexpr auto lookWithSdl = [](auto take) {
    SDL_Surface const &surface = *colorSurface();
    for (int y = 0; y < pictureHeight; ++y)
        for (int x = 0; x < pictureWidth; ++x)
            take(colorAt(surface, x, y));
};

constexpr auto lookWithTqlib = [](auto take) {
    CDib const &bitmap = colors();
    for (int y = 0; y < pictureHeight; ++y)
        for (int x = 0; x < pictureWidth; ++x) {
            RGBQUAD const color = bitmap.GetPixel(x, y);
            take(tqplatform::pixelOf(color));
        }
};

auto const looking =
    Job<std::uint32_t>("pixels").peer("SDL_GetRGB", lookWithSdl).contender("tqlib", lookWithTqlib);

// Run-length code by an encoder that looks at one byte at a time.
std::vector<std::uint8_t> encodeBytewise(std::vector<std::uint8_t> const &indices) {
    std::vector<std::uint8_t> code;
    for (int y = 0; y < pictureHeight; ++y) {
        std::uint8_t const *const line = indices.data() + y * pictureWidth;
        for (int x = 0; x < pictureWidth;) {
            int run = 1;
            while (run < 255 && x + run < pictureWidth && line[x + run] == line[x])
                ++run;
            code.push_back(static_cast<std::uint8_t>(run));
            code.push_back(line[x]);
            x += run;
        }
        code.push_back(0);
        code.push_back(0);
    }
    code.push_back(0);
    code.push_back(1);
    return code;
}

/// What a code stands for.
struct Decoded {
    explicit Decoded(std::vector<std::uint8_t> const &code) {
        CDib form(CSize(pictureWidth, pictureHeight), 8);
        form.header->biCompression = BI_RLE8;
        form.header->biSizeImage = static_cast<std::uint32_t>(code.size());
        decode(*form.header, code.data());
    }
    explicit Decoded(CDib const &bitmap) { decode(*bitmap.header, bitmap.image); }
    bool operator==(Decoded const &) const = default;

    void decode(BITMAPINFOHEADER const &header, std::uint8_t const *code) {
        std::vector<std::uint8_t> block(sizeof header + 4 * 256 + header.biSizeImage);
        std::memcpy(block.data(), &header, sizeof header);
        std::memcpy(block.data() + sizeof header + 4 * 256, code, header.biSizeImage);
        CDib bitmap;
        bitmap.AttachMemory(block.data(), 0, nullptr);
        bitmap.Compress(nullptr, 0);
        indices.assign(bitmap.image, bitmap.image + bitmap.imageSize);
    }

    std::vector<std::uint8_t> indices;
};

template <std::vector<std::uint8_t> const &(*indices)()>
constexpr auto compressBytewise = [](auto take) { take(encodeBytewise(indices())); };

// The picture is in memory; the object is made anew for each round.
template <std::vector<std::uint8_t> const &(*indices)()>
constexpr auto compressWithTqlib = [](auto take) {
    static std::vector<std::uint8_t> const block = [] {
        CDib const form(CSize(pictureWidth, pictureHeight), 8);
        auto const headers = static_cast<std::size_t>(form.GetSizeHeader());
        std::vector<std::uint8_t> bytes(headers + form.imageSize);
        std::memcpy(bytes.data(), form.header, headers);
        std::memcpy(bytes.data() + headers, indices().data(), form.imageSize);
        return bytes;
    }();
    CDib bitmap;
    bitmap.AttachMemory(const_cast<std::uint8_t *>(block.data()), 0, nullptr);
    bitmap.Compress(nullptr, 1);
    take(bitmap);
};

auto const compressingDrawing = Job<Decoded>("compress a drawing")
                                    .peer("bytewise", compressBytewise<drawing>)
                                    .contender("tqlib", compressWithTqlib<drawing>);
auto const compressingNoise = Job<Decoded>("compress noise")
                                  .peer("bytewise", compressBytewise<noise>)
                                  .contender("tqlib", compressWithTqlib<noise>);

constexpr int screenWidth = 800, screenHeight = 600;

/// Whether a colour in the corner is one of those in the corner of the picture: which of them is
/// shown when points are dropped differs.
struct Corner {
    explicit Corner(std::uint32_t color) {
        for (int place = 0; place < 9; ++place)
            isFromPicture |= color == colors().GetRGBColor(place % 3, place / 3);
    }
    bool operator==(Corner const &) const = default;
    bool isFromPicture = false;
};

// Each draws to a surface of the kind that it has: 24 bits there, 32 here.
constexpr auto drawWithSdl = [](auto take) {
    static Surface const screen(
        SDL_CreateRGBSurfaceWithFormat(0, screenWidth, screenHeight, 24, SDL_PIXELFORMAT_BGR24));
    SDL_BlitScaled(colorSurface().get(), nullptr, screen.get(), nullptr);
    take(colorAt(*screen, 0, 0));
};

constexpr auto drawWithTqlib = [](auto take) {
    static tqplatform::DeviceContext screen(screenWidth, screenHeight);
    CDC dc(&screen);
    colors().Draw(&dc, CPoint(0, 0), CSize(screenWidth, screenHeight));
    take(screen.pixel(0, 0));
};

auto const drawingPicture =
    Job<Corner>("draw").peer("SDL_BlitScaled", drawWithSdl).contender("tqlib", drawWithTqlib);

// A file of 1 GB, of which nothing is on the disk but its headers.
std::string const &hugeFile() {
    static std::string const path = [] {
        std::string name = temporaryFile("huge.bmp");
        CDib const bitmap(CSize(1 << 15, 10922), 24);
        std::uint8_t headers[54] = {'B', 'M'};
        headers[10] = sizeof headers;
        std::memcpy(headers + 14, bitmap.header, 40);
        int const file = ::open(name.c_str(), O_CREAT | O_RDWR, 0600);
        bool const made = ::write(file, headers, sizeof headers) == sizeof headers &&
                          ::ftruncate(file, sizeof headers + off_t{bitmap.imageSize}) == 0;
        ::close(file);
        if (!made) std::abort();
        return name;
    }();
    return path;
}

constexpr auto mapWithSystem = [](auto take) {
    int const file = ::open(hugeFile().c_str(), O_RDWR);
    struct stat status {};
    ::fstat(file, &status);
    auto const size = static_cast<std::size_t>(status.st_size);
    void *const view = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    take(static_cast<char const *>(view)[0]);
    ::munmap(view, size);
    ::close(file);
};

constexpr auto mapWithTqlib = [](auto take) {
    CDib bitmap;
    bitmap.AttachMapFile(hugeFile().c_str(), 0);
    take(static_cast<char const *>(bitmap.fileView)[0]);
};

auto const mapping =
    Job<char>("map 1 GB").peer("open and mmap", mapWithSystem).contender("tqlib", mapWithTqlib);

}  // namespace
