#include "tqlib/foundation/VersionBlock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <string>

#include "tqlib/foundation/Resources.h"

namespace {

// Reads the tree of the block: paths of keys, with texts for text values.
struct Reader {
    unsigned char const *bytes;
    std::map<std::string, std::string> texts;
    std::uint32_t fileVersion[2] = {};

    unsigned word(std::size_t at) const { return bytes[at] | bytes[at + 1] << 8; }
    std::string text(std::size_t &at) const {
        std::string result;
        for (; word(at) != 0; at += 2)
            result += static_cast<char>(word(at));
        at += 2;
        return result;
    }
    void read(std::size_t at, std::string path) {
        std::size_t const end = at + word(at), valueLength = word(at + 2), isText = word(at + 4);
        at += 6;
        path += "/" + text(at);
        at = (at + 3) & ~std::size_t{3};
        if (path == "/VS_VERSION_INFO") {
            std::uint32_t signature;
            std::memcpy(&signature, bytes + at, 4);
            EXPECT_EQ(signature, 0xFEEF04BDu);
            std::memcpy(fileVersion, bytes + at + 8, 8);
        }
        std::size_t value = at;
        if (isText != 0 && valueLength != 0) texts[path] = text(value);
        at += isText != 0 ? 2 * valueLength : valueLength;
        for (at = (at + 3) & ~std::size_t{3}; at < end; at = (at + word(at) + 3) & ~std::size_t{3})
            read(at, path);
    }
};

TEST(VersionBlock, NamesTheLibraryAndItsVersion) {
    auto const *resource = tqplatform::findResource(tqlib::detail::libraryModule,
                                                    tqplatform::ResourceKind::version, 1);
    ASSERT_NE(resource, nullptr);
    Reader reader{static_cast<unsigned char const *>(resource->data), {}};
    reader.read(0, "");
    EXPECT_EQ(reader.word(0), resource->size);
    EXPECT_EQ(reader.fileVersion[0], 0x00010000u);
    EXPECT_EQ(reader.fileVersion[1], 0x00000001u);
    std::string const table = "/VS_VERSION_INFO/StringFileInfo/040704E4/";
    EXPECT_EQ(reader.texts[table + "FileDescription"], "tqlib DLL");
    EXPECT_EQ(reader.texts[table + "InternalName"], "tqlib");
    EXPECT_EQ(reader.texts[table + "OriginalFilename"], "tqlib.DLL");
    EXPECT_EQ(reader.texts[table + "ProductName"], "tqlib Dynamic Link Library");
    EXPECT_EQ(reader.texts[table + "FileVersion"], "1.0.0.1");
}

}  // namespace
