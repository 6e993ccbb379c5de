// Bitmaps from unknown hands. The first byte of an input says what is tried: "e" run-length codes
// of any indices, which must come back; anything else a file, which is read, looked at, drawn,
// written and compressed, also as a file in memory. What is shown is held against a plain look at
// the bits.

#include "tqlib/bitmap/CDib.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"
#include "support/ScratchFile.h"
#include "tqplatform/desktop/User.h"
#include "tqplatform/graphics/RunLength.h"

namespace {

using tqplatform::DeviceContext;
using tqplatform::Pixel;

/// Larger pictures take more memory than the search should.
constexpr std::uint64_t largestPicture = 1 << 17;

/// Nobody listens to the messages.
class DeafUser final : public tqplatform::AbsentUser {
  public:
    int answer(tqplatform::Message const &message) override {
        return tqplatform::defaultAnswer(message.style);
    }
};

ScratchFile &scratch() {
    static ScratchFile file;
    return file;
}

// The colour of a pixel, by the header and the bits alone; for uncompressed pictures.
Pixel plainColor(CDib const &bitmap, std::int64_t x, std::int64_t y) {
    BITMAPINFOHEADER const &header = *bitmap.header;
    std::int64_t const bits = header.biBitCount, height = std::llabs(header.biHeight);
    std::int64_t const stride = (header.biWidth * bits + 31) / 32 * 4;
    std::uint8_t const *const line =
        bitmap.image + (header.biHeight < 0 ? y : height - 1 - y) * stride;
    std::uint32_t value = 0;
    if (bits < 8) {
        value = line[x * bits / 8] >> (8 - bits - x * bits % 8) & ((1 << bits) - 1);
    } else {
        for (std::int64_t byte = 0; byte < std::min<std::int64_t>(bits / 8, 3); ++byte)
            value |= static_cast<std::uint32_t>(line[x * bits / 8 + byte]) << 8 * byte;
    }
    if (bits > 16) return value;
    if (bits == 16) {
        auto const eight = [=](unsigned shift) { return (value >> shift & 31) * 33 / 4; };
        return eight(10) << 16 | eight(5) << 8 | eight(0);
    }
    if (value >= static_cast<std::uint32_t>(bitmap.colorCount)) return 0;
    RGBQUAD const color = bitmap.colorTable[value];
    return static_cast<Pixel>(color.rgbRed << 16 | color.rgbGreen << 8 | color.rgbBlue);
}

void look(CDib &bitmap, bool compare) {
    constexpr int size = 24;
    DeviceContext screen(size, size);
    CDC dc(&screen);
    int const width = bitmap.header->biWidth, height = std::abs(bitmap.header->biHeight);
    bitmap.Draw(&dc, CPoint(0, 0), CSize(width, height));
    for (int y = 0; y < std::min(size, height); ++y)
        for (int x = 0; x < std::min(size, width); ++x) {
            bitmap.Get256Color(x, y);
            if (!compare) continue;
            expectSame("drawn", screen.pixel(x, y), plainColor(bitmap, x, y));
            unsigned const bits = bitmap.header->biBitCount;
            bool const shown =
                (bits == 4 || bits == 8 || bits == 24) && bitmap.header->biHeight > 0;
            if (shown) expectSame("pixel", bitmap.GetRGBColor(x, y), screen.pixel(x, y));
        }
    bitmap.Draw(&dc, CPoint(3, -2), CSize(-30, 17));
    HBITMAP const made = bitmap.CreateBitmap(nullptr);
    CDib other(CSize(width, height), width % 2 == 0 ? 8 : 24);
    if (other.CreateSection(nullptr) != nullptr)
        GetDIBits(nullptr, made, 0, static_cast<unsigned>(height), other.image,
                  reinterpret_cast<BITMAPINFO *>(other.header), DIB_RGB_COLORS);
    DeleteObject(made);
}

// True if the header is of a form that can be shown.
bool canBeShown(CDib const &bitmap) {
    tqplatform::DibView const view(reinterpret_cast<BITMAPINFO const *>(bitmap.header),
                                   bitmap.image);
    return view.isValid();
}

std::uint64_t pixelCount(CDib const &bitmap) {
    return static_cast<std::uint64_t>(std::llabs(bitmap.header->biWidth)) *
           static_cast<std::uint64_t>(tqplatform::lineCount(*bitmap.header));
}

void tryBitmap(CDib &bitmap) {
    if (bitmap.header == nullptr || pixelCount(bitmap) > largestPicture) return;
    bool const valid = canBeShown(bitmap);
    look(bitmap, valid && bitmap.header->biCompression == BI_RGB);
    for (int const compress : {1, 0}) {
        DeviceContext before(16, 16), after(16, 16);
        CDC first(&before), second(&after);
        bitmap.Draw(&first, CPoint(0, 0), CSize(16, 16));
        if (bitmap.Compress(nullptr, compress) == 0) continue;
        bitmap.Draw(&second, CPoint(0, 0), CSize(16, 16));
        expectSame("compressed", std::memcmp(before.line(0), after.line(0), 16 * 16 * 4), 0);
    }
}

// The bytes that a header asks for, by its lines or by itself; what the file is too short for is 0.
std::uint64_t declaredSize(std::string file) {
    BITMAPINFOHEADER header;
    file.resize(std::max<std::size_t>(file.size(), 14 + sizeof header));
    std::memcpy(&header, file.data() + 14, sizeof header);
    return std::max<std::uint64_t>(tqplatform::pictureBytes(header), header.biSizeImage);
}

void tryFile(std::string const &content) {
    if (declaredSize(content) > largestPicture) return;
    scratch().write(content);
    CDib bitmap;
    CFile file(scratch().path(), CFile::modeRead);
    if (bitmap.Read(&file) == 1) {
        CFile target(scratch().path(), CFile::modeReadWrite | CFile::modeCreate);
        expectSame("written", bitmap.Write(&target), 1);
        CFile again(scratch().path(), CFile::modeRead);
        CDib copy;
        expectSame("read again", copy.Read(&again), 1);
        expectSame("bits", {reinterpret_cast<char const *>(copy.image), copy.imageSize},
                   {reinterpret_cast<char const *>(bitmap.image), bitmap.imageSize});
        tryBitmap(bitmap);
    }
    scratch().write(content);
    CFile section(scratch().path(), CFile::modeRead);
    if (bitmap.ReadSection(&section, nullptr) == 1) tryBitmap(bitmap);
    if (bitmap.AttachMapFile(scratch().path(), 0) == 1) tryBitmap(bitmap);
}

void tryCode(Input &input) {
    unsigned const bitCount = input.pick(2) == 1 ? 4 : 8;
    std::size_t const width = input.pick(256) + 1 + input.pick(4) * 250;
    std::string indices = expanded(input.rest()).substr(0, 3 * width);
    indices.resize((indices.size() + width - 1) / width * width);
    std::vector<std::uint8_t> lines(indices.begin(), indices.end()), code, line(width);
    for (std::uint8_t &index : lines)
        if (bitCount == 4) index &= 15;
    for (std::size_t first = 0; first < lines.size(); first += width)
        tqplatform::encodeRuns({lines.data() + first, width}, bitCount, code);
    tqplatform::endRuns(code);
    tqplatform::RunLengthReader reader(code, bitCount, width);
    for (std::size_t first = 0; first < lines.size(); first += width) {
        reader.next(line.data());
        expectSame("line", std::memcmp(line.data(), lines.data() + first, width), 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    static DeafUser user;
    tqplatform::installUser(&user);
    Input input(data, size);
    if (input.take() == 'e')
        tryCode(input);
    else
        tryFile(input.rest());
    return 0;
}
