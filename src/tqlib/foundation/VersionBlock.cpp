#include "tqlib/foundation/VersionBlock.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "tqplatform/kernel/Version.h"

namespace tqlib::detail {
namespace {

constexpr std::uint32_t fixedStructureVersion = 0x00010000;
constexpr std::uint32_t versionHigh = 0x00010000;  // 1.0
constexpr std::uint32_t versionLow = 0x00000001;   // 0.1
constexpr std::uint32_t allFlags = 0x3F;
constexpr std::uint32_t systemWindows32 = 0x00040004;
constexpr std::uint32_t typeLibrary = 2;

constexpr std::uint16_t binaryValue = 0;
constexpr std::uint16_t textValue = 1;

struct Text {
    std::string_view key;
    std::string_view value;
};

constexpr Text texts[] = {
    {"FileDescription", "tqlib DLL"},
    {"FileVersion", "1.0.0.1"},
    {"InternalName", "tqlib"},
    {"OriginalFilename", "tqlib.DLL"},
    {"ProductName", "tqlib Dynamic Link Library"},
    {"ProductVersion", "1.0.0.1"},
};

// Language 1031 (German) and code page 1252, as the string table's key and as the translation pair.
constexpr std::string_view languageKey = "040704E4";
constexpr std::uint16_t language = 0x0407;
constexpr std::uint16_t codePage = 0x04E4;

/// Appends little-endian values to a block of fixed size.
struct Writer {
    std::array<std::byte, 1024> bytes{};
    std::size_t size = 0;

    constexpr void put16(std::size_t at, std::uint32_t value) {
        bytes[at] = static_cast<std::byte>(value & 0xFF);
        bytes[at + 1] = static_cast<std::byte>(value >> 8 & 0xFF);
    }
    constexpr void add16(std::uint32_t value) {
        put16(size, value);
        size += 2;
    }
    constexpr void add32(std::uint32_t value) {
        add16(value & 0xFFFF);
        add16(value >> 16);
    }
    constexpr void align() { size = (size + 3) & ~std::size_t{3}; }
    constexpr void addText(std::string_view text) {
        for (char const c : text)
            add16(static_cast<unsigned char>(c));
        add16(0);
    }

    /// Begins a block and gives its offset; end() stores the length.
    constexpr std::size_t begin(std::string_view key, std::size_t valueLength, std::uint16_t type) {
        align();
        std::size_t const start = size;
        add16(0);
        add16(static_cast<std::uint32_t>(valueLength));
        add16(type);
        addText(key);
        align();
        return start;
    }
    constexpr void end(std::size_t start) {
        put16(start, static_cast<std::uint32_t>(size - start));
    }
};

constexpr void addFixedInformation(Writer &writer) {
    constexpr std::uint32_t fields[] = {
        VS_FFI_SIGNATURE,
        fixedStructureVersion,
        versionHigh,
        versionLow,  // of the file
        versionHigh,
        versionLow,  // of the product
        allFlags,
        0,
        systemWindows32,
        typeLibrary,
        0,
        0,
        0,  // no date
    };
    for (std::uint32_t const field : fields)
        writer.add32(field);
}

constexpr std::size_t fixedSize = 13 * 4;

constexpr Writer makeBlock() {
    Writer writer;
    auto const root = writer.begin("VS_VERSION_INFO", fixedSize, binaryValue);
    addFixedInformation(writer);
    auto const strings = writer.begin("StringFileInfo", 0, textValue);
    auto const table = writer.begin(languageKey, 0, textValue);
    for (Text const &text : texts) {
        auto const entry = writer.begin(text.key, text.value.size() + 1, textValue);
        writer.addText(text.value);
        writer.end(entry);
    }
    writer.end(table);
    writer.end(strings);
    auto const variables = writer.begin("VarFileInfo", 0, textValue);
    auto const translation = writer.begin("Translation", 4, binaryValue);
    writer.add16(language);
    writer.add16(codePage);
    writer.end(translation);
    writer.end(variables);
    writer.end(root);
    return writer;
}

constexpr Writer block = makeBlock();

static_assert(block.size == versionBlockSize);

constexpr auto exactBlock() {
    std::array<std::byte, versionBlockSize> exact{};
    for (std::size_t i = 0; i < exact.size(); ++i)
        exact[i] = block.bytes[i];
    return exact;
}

}  // namespace

[[gnu::section(
    ".rsrc.version")]] constinit std::array<std::byte, versionBlockSize> const versionBlock =
    exactBlock();

}  // namespace tqlib::detail
