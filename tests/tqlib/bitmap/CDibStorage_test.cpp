#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "support/Files.h"
#include "support/Pictures.h"
#include "tqlib/bitmap/CDib.h"
#include "tqplatform/desktop/ScriptedUser.h"
#include "tqplatform/framework/CException.h"
#include "tqplatform/graphics/RunLength.h"

namespace {

using tqplatform::DeviceContext;

class BitmapFiles : public testing::Test {
  protected:
    std::string path(std::string const &name) const { return folder_.file(name); }

    int read(CDib &bitmap, std::string const &content) {
        CFile file(folder_.write("in.bmp", content).c_str(), CFile::modeRead);
        return bitmap.Read(&file);
    }
    std::string written(CDib &bitmap) {
        CFile file(path("out.bmp").c_str(), CFile::modeCreate | CFile::modeWrite);
        EXPECT_EQ(bitmap.Write(&file), 1);
        file.Close();
        return folder_.read("out.bmp");
    }

    TemporaryFolder folder_;
    tqplatform::ScriptedUser user_;
};

bool shows(CDib &bitmap, Picture const &picture) {
    int const width = picture.header.biWidth, height = std::abs(picture.header.biHeight);
    DeviceContext screen(width, height);
    CDC dc(&screen);
    bitmap.Draw(&dc, CPoint(), CSize(width, height));
    return std::equal(picture.pixels.begin(), picture.pixels.end(), screen.line(0));
}

// The same picture as run-length code.
Picture encoded(Picture picture) {
    auto const width = static_cast<std::size_t>(picture.header.biWidth);
    unsigned const bitCount = picture.header.biBitCount;
    std::vector<std::uint8_t> code, line(width);
    auto const stride = tqplatform::lineBytes(picture.header.biWidth, bitCount);
    for (std::int32_t y = 0; y < picture.header.biHeight; ++y) {
        auto const *source = reinterpret_cast<std::uint8_t const *>(picture.bits.data()) +
                             static_cast<std::size_t>(y) * stride;
        for (std::size_t x = 0; x < width; ++x)
            line[x] = static_cast<std::uint8_t>(
                tqplatform::valueAt(source, bitCount, static_cast<std::int32_t>(x)));
        tqplatform::encodeRuns(line, bitCount, code);
    }
    tqplatform::endRuns(code);
    picture.bits.assign(code.begin(), code.end());
    picture.header.biCompression = bitCount == 8 ? BI_RLE8 : BI_RLE4;
    picture.header.biSizeImage = static_cast<std::uint32_t>(code.size());
    return picture;
}

TEST_F(BitmapFiles, EveryDepthIsReadWrittenAndMapped) {
    for (unsigned const bitCount : {1u, 4u, 8u, 16u, 24u, 32u})
        for (bool const compressed : {false, true})
            for (int const height : {6, -6}) {
                if (compressed && ((bitCount != 4 && bitCount != 8) || height < 0)) continue;
                Picture picture = makePicture(13, height, bitCount, bitCount);
                if (compressed) picture = encoded(picture);
                std::string const file = picture.file();
                CDib bitmap;
                ASSERT_EQ(read(bitmap, file), 1);
                EXPECT_TRUE(shows(bitmap, picture)) << bitCount;
                EXPECT_EQ(written(bitmap), file) << bitCount;
                ASSERT_EQ(read(bitmap, picture.file(7)), 1);
                EXPECT_EQ(written(bitmap), file) << bitCount;

                ASSERT_EQ(bitmap.CopyToMapFile(path("map.bmp").c_str()), 1);
                EXPECT_TRUE(shows(bitmap, picture));
                bitmap.Empty();
                std::string mapped = file;
                auto const size = static_cast<std::uint32_t>(file.size());
                std::memcpy(mapped.data() + 2, &size, 4);
                EXPECT_EQ(folder_.read("map.bmp"), mapped);
                EXPECT_EQ(bitmap.AttachMapFile(path("map.bmp").c_str(), 1), 1);
                EXPECT_TRUE(shows(bitmap, picture));

                CFile source(path("map.bmp").c_str(), CFile::modeRead);
                EXPECT_EQ(bitmap.ReadSection(&source, nullptr), compressed ? 0 : 1);
                EXPECT_EQ(user_.messages(), compressed ? "ReadSection error|" : "");
                if (!compressed) {
                    EXPECT_TRUE(shows(bitmap, picture));
                    EXPECT_EQ(bitmap.imageAlloc, CDib::AllocNone);
                    EXPECT_EQ(bitmap.Compress(nullptr, 1), 0);
                }
            }
}

TEST_F(BitmapFiles, WhatIsNoBitmapIsRefused) {
    std::string const good = makePicture(3, 3, 8).file();
    auto const changed = [&](std::size_t place, std::uint32_t value, std::size_t size) {
        std::string file = good;
        std::memcpy(file.data() + place, &value, size);
        return file;
    };
    struct Row {
        std::string file;
        char const *messages;  // of Read, ReadSection and AttachMapFile
    } const rows[] = {
        {"", "Read error|ReadSection error|Empty bitmap file|"},
        {good.substr(0, 13), "Read error|ReadSection error|Invalid bitmap file|"},
        {changed(0, 'b', 1), "Read error|ReadSection error|Invalid bitmap file|"},
        {changed(14, 12, 4), "Read error|ReadSection error|AttachMemory error|"},
        {changed(14, 108, 4), "Read error|ReadSection error|AttachMemory error|"},
        {changed(14, 12, 4).substr(0, 30), "Read error|ReadSection error|AttachMemory error|"},
        {changed(10, 53, 4), "Read error|ReadSection error|"},
        {changed(10, 1077, 4), "Read error|ReadSection error|"},
        {changed(46, 257, 4), "Read error|ReadSection error|Invalid bitmap file|"},
        {changed(46, 0xFFFFFFFF, 4), "Read error|ReadSection error|Invalid bitmap file|"},
        {changed(34, 0x80000000, 4), "Read error|ReadSection error|Invalid bitmap file|"},
        {changed(18, 0x7FFFFFFF, 4), "Read error|ReadSection error|Invalid bitmap file|"},
    };
    for (auto const &[file, messages] : rows) {
        CDib bitmap;
        CFile source(folder_.write("in.bmp", file).c_str(), CFile::modeRead);
        EXPECT_EQ(bitmap.Read(&source), 0);
        CFile again(path("in.bmp").c_str(), CFile::modeRead);
        EXPECT_EQ(bitmap.ReadSection(&again, nullptr), 0);
        EXPECT_EQ(bitmap.GetPixel(0, 0).rgbRed, 255);
        int const attached = bitmap.AttachMapFile(path("in.bmp").c_str(), 0);
        EXPECT_EQ(attached, std::string(messages).ends_with("ReadSection error|") ? 1 : 0);
        EXPECT_EQ(user_.messages(), messages);
    }
    CDib bitmap;
    EXPECT_EQ(bitmap.AttachMapFile(path("none").c_str(), 0), 0);
    EXPECT_EQ(bitmap.AttachMapFile(folder_.file("").c_str(), 0), 0);
    EXPECT_EQ(bitmap.AttachMemory(nullptr, 0, nullptr), 0);
    EXPECT_EQ(user_.messages(), "Empty bitmap file|Empty bitmap file|AttachMemory error|");
    CFile file(path("out.bmp").c_str(), CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(CDib().Write(&file), 0);
    EXPECT_EQ(CDib(CSize(2, 2), 8).Write(&file), 0);
    EXPECT_EQ(CDib().CopyToMapFile(path("m").c_str()), 0);
    EXPECT_EQ(CDib(CSize(2, 2), 8).CopyToMapFile(path("m").c_str()), 0);
    EXPECT_EQ(user_.messages(), "write error|write error|");
}

// A bitmap whose header promises more than it has does nothing, and its files stay.
TEST_F(BitmapFiles, WhatIsPromisedHasToBeThere) {
    Picture const picture = makePicture(4, 4, 8), code = encoded(picture);
    auto const promising = [&](auto change) {
        auto bitmap = std::make_unique<CDib>();
        EXPECT_EQ(read(*bitmap, picture.file()), 1);
        change(*bitmap->header);
        return bitmap;
    };
    std::unique_ptr<CDib> bitmaps[] = {
        promising([](BITMAPINFOHEADER &header) { header.biHeight = 4000000; }),
        promising([](BITMAPINFOHEADER &header) { header.biWidth = 4000; }),
        promising([](BITMAPINFOHEADER &header) { header.biClrUsed = 1 << 20; }),
        promising([](BITMAPINFOHEADER &header) { header.biSizeImage = 1 << 20; }),
        std::make_unique<CDib>(CSize(100000, 100000), 24),
        std::make_unique<CDib>(CSize(16, 16), 65544),
        std::make_unique<CDib>(),
        std::make_unique<CDib>(),
    };
    std::string other = picture.file();
    other[14] = 108;
    EXPECT_EQ(read(**(std::end(bitmaps) - 2), other), 0);
    CFile compressed(folder_.write("in.bmp", code.file()).c_str(), CFile::modeRead);
    EXPECT_EQ((*(std::end(bitmaps) - 1))->ReadSection(&compressed, nullptr), 0);
    EXPECT_EQ(user_.messages(), "Read error|ReadSection error|");
    for (auto const &bitmap : bitmaps) {
        folder_.write("old.bmp", "old");
        EXPECT_FALSE(shows(*bitmap, picture));
        EXPECT_EQ(bitmap->CreateBitmap(nullptr), nullptr);
        EXPECT_EQ(bitmap->CreateSection(nullptr), nullptr);
        EXPECT_EQ(bitmap->Compress(nullptr, 1), 0);
        EXPECT_EQ(bitmap->CopyToMapFile(path("old.bmp").c_str()), 0);
        EXPECT_EQ(folder_.read("old.bmp"), "old");
        CFile file(path("out.bmp").c_str(), CFile::modeCreate | CFile::modeWrite);
        EXPECT_EQ(bitmap->Write(&file), 0);
        EXPECT_EQ(user_.messages(), "write error|");
    }
}

// Files of a few hundred bytes that promise gigabytes take no time and no memory.
TEST_F(BitmapFiles, BigPromisesCostNothing) {
    for (std::int32_t const size : {100000, 0x7FFFFFFF}) {
        Picture picture = encoded(makePicture(4, 4, 8));
        picture.header.biWidth = picture.header.biHeight = size;
        CDib bitmap;
        ASSERT_EQ(read(bitmap, picture.file()), 1);
        DeviceContext screen(3, 3);
        CDC dc(&screen);
        EXPECT_EQ(bitmap.Draw(&dc, CPoint(), CSize(3, 3)), 1);
        picture.header.biHeight = 1;
        ASSERT_EQ(read(bitmap, picture.file()), 1);
        EXPECT_EQ(bitmap.Draw(&dc, CPoint(), CSize(3, 3)), 1);
    }
    Picture picture = makePicture(4, 4, 8);
    picture.header.biSizeImage = 0x7FFFFFFF;
    CDib bitmap;
    EXPECT_EQ(read(bitmap, picture.file()), 0);
    EXPECT_EQ(user_.messages(), "Read error|");
    picture.header = {40, 4, 4, 1, 8, 0, 0, 0, 0, 0x80000000, 0};
    std::string const table = folder_.write("table.bmp", picture.file());
    std::filesystem::resize_file(table, (std::uint64_t{9} << 30) + 100);
    EXPECT_EQ(bitmap.AttachMapFile(table.c_str(), 0), 0);
    // A process of 32 bits has no room for such a view.
    EXPECT_EQ(user_.messages(), sizeof(void *) == 4 ? "Empty bitmap file|" : "AttachMemory error|");
}

// The bytes of the bits that a file's header promises.
std::uint64_t declaredSize(std::string const &file) {
    BITMAPINFOHEADER header;
    std::memcpy(&header, file.data() + 14, sizeof header);
    return tqplatform::bitsOf(header);
}

TEST_F(BitmapFiles, DamagedFilesDoNoHarm) {
    for (unsigned const bitCount : {1u, 4u, 8u, 16u, 24u, 32u}) {
        Picture const plain = makePicture(9, 3, bitCount);
        bool const codes = bitCount == 4 || bitCount == 8;
        for (Picture const &picture : {plain, codes ? encoded(plain) : plain}) {
            std::string const good = picture.file();
            auto const tryOut = [&](std::string const &content) {
                CDib bitmap;
                if (read(bitmap, content) == 1) shows(bitmap, picture);
                if (bitmap.AttachMapFile(path("in.bmp").c_str(), 0) == 1) shows(bitmap, picture);
                bitmap.GetPixel(8, 2);
            };
            for (std::size_t size = 0; size < good.size(); ++size)
                tryOut(good.substr(0, size));
            CDib bitmap;
            std::string const cut = good.substr(0, good.size() - 5);
            ASSERT_EQ(read(bitmap, cut), 1);
            EXPECT_EQ(written(bitmap), cut + std::string(5, '\0'));
            for (std::size_t place = 0; place < 62; ++place)
                for (int const change : {1, 0x80, 0xFF}) {
                    std::string content = good;
                    content[place] = static_cast<char>(content[place] ^ change);
                    if (declaredSize(content) < 1 << 24) tryOut(content);
                }
        }
    }
}

TEST_F(BitmapFiles, AMappedBitmapIsTheFile) {
    Picture const picture = makePicture(5, 4, 24);
    folder_.write("a.bmp", picture.file());
    CDib bitmap, other;
    ASSERT_EQ(bitmap.AttachMapFile(path("a.bmp").c_str(), 0), 1);
    EXPECT_EQ(other.AttachMapFile(path("a.bmp").c_str(), 1), 0);  // it is in use
    EXPECT_EQ(user_.messages(), "Empty bitmap file|");
    EXPECT_EQ(bitmap.CopyToMapFile(path("a.bmp").c_str()), 0);
    bitmap.image[0] = 'x';
    EXPECT_EQ(folder_.read("a.bmp")[54], 'x');
    folder_.write("bad", "no bitmap at all, but long enough to hold the headers of one.....");
    EXPECT_EQ(bitmap.AttachMapFile(path("bad").c_str(), 0), 0);
    EXPECT_EQ(user_.messages(), "Invalid bitmap file|");
    EXPECT_EQ(bitmap.GetDimensions(), CSize(5, 4));

    folder_.write("b.bmp", std::string(1000, 'o'));  // longer than what comes
    EXPECT_EQ(bitmap.CopyToMapFile(path("b.bmp").c_str()), 1);
    EXPECT_EQ(folder_.read("b.bmp").size(), picture.file().size());
    EXPECT_EQ(other.AttachMapFile(path("a.bmp").c_str(), 0), 1);
    other.Empty();
    EXPECT_EQ(bitmap.CopyToMapFile(path("none/c.bmp").c_str()), 0);

    rlimit const before = [] {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        return limit;
    }();
    signal(SIGXFSZ, SIG_IGN);
    rlimit const small{70, before.rlim_max};
    folder_.write("old.bmp", "old");
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ(bitmap.CopyToMapFile(path("old.bmp").c_str()), 0);
    EXPECT_EQ(bitmap.CopyToMapFile(path("new.bmp").c_str()), 0);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(folder_.read("old.bmp"), "old");
    EXPECT_FALSE(std::filesystem::exists(path("new.bmp")));
    EXPECT_EQ(bitmap.image[0], 'x');
    EXPECT_EQ(bitmap.AttachMapFile(path("b.bmp").c_str(), 0), 0);  // its own file, kept
    EXPECT_EQ(bitmap.GetDimensions(), CSize(5, 4));
}

TEST_F(BitmapFiles, RunLengthCodeAndBack) {
    for (unsigned const bitCount : {4u, 8u})
        for (int width = 1; width < 700; width += width < 40 ? 1 : 97) {
            Picture const picture = makePicture(width, 3, bitCount, static_cast<unsigned>(width));
            CDib bitmap;
            ASSERT_EQ(read(bitmap, picture.file()), 1);
            ASSERT_EQ(bitmap.Compress(nullptr, 1), 1);
            EXPECT_EQ(bitmap.header->biCompression, bitCount == 8 ? BI_RLE8 : BI_RLE4);
            EXPECT_EQ(bitmap.header->biSizeImage, bitmap.imageSize);
            ASSERT_TRUE(shows(bitmap, picture)) << bitCount << " " << width;
            ASSERT_EQ(bitmap.Compress(nullptr, 0), 1);
            std::string const bits(reinterpret_cast<char const *>(bitmap.image), bitmap.imageSize);
            ASSERT_EQ(bits, picture.bits) << width;
        }
    CDib colors;
    ASSERT_EQ(read(colors, makePicture(3, 3, 24).file()), 1);
    EXPECT_EQ(colors.Compress(nullptr, 1), 0);
    EXPECT_EQ(CDib().Compress(nullptr, 1), 0);
    CDib upsideDown;
    ASSERT_EQ(read(upsideDown, makePicture(3, -3, 8).file()), 1);
    EXPECT_EQ(upsideDown.Compress(nullptr, 1), 0);
    EXPECT_EQ(user_.messages(), "Unable to compress this DIB|");
}

TEST_F(BitmapFiles, OddRunLengthCodes) {
    struct Row {
        unsigned bitCount;
        std::string code, indices;  ///< of 4 by 3 pixels, from the upper left on
    } const rows[] = {
        {8, std::string("\4\1\0\0\4\2\0\0\4\3\0\1", 12), "333322221111"},
        {8, std::string("\2\1\0\2\1\1\3\2", 8), "000000021100"},
        {8, std::string("\xFF\1\0\0\0\4\1\2\3\4\0\1", 12), "000012341111"},
        {8, std::string("\0\5\1\2\3\4\5\0\0\0\1\7", 12), "000070001234"},
        {8, std::string("\0\3\1\2", 4), "000000001200"},
        {8, std::string("\0\2\1\xFF\4\1", 6), "000000000000"},
        {4, std::string("\3\x12\0\0\0\3\x34\x50\0\1", 10), "000034501210"},
        {8, "\1", "000000000000"},
    };
    for (auto const &[bitCount, code, indices] : rows) {
        Picture picture = makePicture(4, 3, bitCount);
        picture.bits = code;
        picture.header.biCompression = bitCount == 8 ? BI_RLE8 : BI_RLE4;
        picture.header.biSizeImage = static_cast<std::uint32_t>(code.size());
        CDib bitmap;
        ASSERT_EQ(read(bitmap, picture.file()), 1);
        std::transform(indices.begin(), indices.end(), picture.pixels.begin(), [&](char index) {
            return tqplatform::pixelOf(picture.colors[static_cast<std::size_t>(index - '0')]);
        });
        EXPECT_TRUE(shows(bitmap, picture)) << indices;
        ASSERT_EQ(bitmap.Compress(nullptr, 0), 1);
        EXPECT_TRUE(shows(bitmap, picture)) << indices;
    }
}

TEST_F(BitmapFiles, ArchivesHoldBitmaps) {
    Picture const picture = makePicture(6, 6, 8);
    CDib bitmap;
    ASSERT_EQ(read(bitmap, picture.file()), 1);
    {
        CFile file(path("a").c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        archive.WriteObject(&bitmap);
        archive.WriteObject(nullptr);
    }
    CFile file(path("a").c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    CDib *loaded = nullptr;
    archive >> loaded;
    std::unique_ptr<CDib> const owned(loaded);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(shows(*loaded, picture));
    archive >> loaded;
    EXPECT_EQ(loaded, nullptr);
    try {
        archive >> loaded;
        ADD_FAILURE() << "read beyond the end";
    } catch (CException *error) {
        error->Delete();
    }
}

TEST_F(BitmapFiles, BlocksAreFreedByTheirOwner) {
    std::string const block = makePicture(3, 3, 8).block();
    CDib bitmap;
    void *const own = ::operator new(block.size());
    std::memcpy(own, block.data(), block.size());
    EXPECT_EQ(bitmap.AttachMemory(own, 1, nullptr), 1);
    EXPECT_EQ(bitmap.headerAlloc, CDib::AllocNew);
    HGLOBAL const global = GlobalAlloc(0, block.size());
    std::memcpy(GlobalLock(global), block.data(), block.size());
    EXPECT_EQ(bitmap.AttachMemory(GlobalLock(global), 1, global), 1);
    EXPECT_EQ(bitmap.headerAlloc, CDib::AllocGlobal);
    EXPECT_EQ(bitmap.globalHandle, global);
    EXPECT_EQ(bitmap.Compress(nullptr, 1), 1);
    EXPECT_EQ(bitmap.headerAlloc, CDib::AllocNew);
}

}  // namespace
