#include "tqplatform/kernel/Version.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "tqplatform/runtime/Descriptor.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using namespace std::string_view_literals;
using tqplatform::openFile;
using tqplatform::readFileAt;
using tqplatform::systemCalls;

// Records are taken from files as they lie there.
static_assert(std::endian::native == std::endian::little);

// The beginning of a version block.
struct BlockHead {
    std::uint16_t length;       // of the whole block
    std::uint16_t valueLength;  // of `fixed`
    std::uint16_t type;
    char16_t key[16];
    std::uint16_t padding;
    VS_FIXEDFILEINFO fixed;
};
static_assert(offsetof(BlockHead, key) == 6 && offsetof(BlockHead, fixed) == 40);
static_assert(sizeof(BlockHead) == 92);

constexpr char16_t blockKey[] = u"VS_VERSION_INFO";

bool hasFixedRecord(std::span<std::byte const> block) {
    BlockHead head;
    if (block.size() < sizeof head) return false;
    std::memcpy(&head, block.data(), sizeof head);
    return head.length == block.size() && head.valueLength >= sizeof head.fixed &&
           std::ranges::equal(head.key, blockKey) && head.fixed.dwSignature == VS_FFI_SIGNATURE;
}

/// A place in a file.
struct Range {
    std::uint64_t offset;
    std::uint64_t size;
};

/// A file of which the ranges asked for are read. One that doesn't lie in the file from end to end
/// isn't there at all, and neither is a table of more than 64 KiB.
class ProgramFile {
  public:
    explicit ProgramFile(char const *path)
        : file_(openFile(tqplatform::toHostPath(path).c_str(), flags, 0)) {
        struct stat status {};
        bool const known = file_.isOpen() && systemCalls.status(file_.number(), &status) == 0;
        if (known && S_ISREG(status.st_mode)) size_ = static_cast<std::uint64_t>(status.st_size);
    }

    template <typename Record>
    std::optional<Record> record(std::uint64_t offset) const {
        Record record;
        return read(offset, &record, sizeof record) ? std::optional(record) : std::nullopt;
    }

    /// A table of `count` records; empty if it isn't there.
    template <typename Record>
    std::vector<Record> records(std::uint64_t offset, std::uint64_t count) const {
        if (count > mostBytes / sizeof(Record)) return {};
        std::vector<Record> table(static_cast<std::size_t>(count));
        if (!read(offset, table.data(), table.size() * sizeof(Record))) table.clear();
        return table;
    }

  private:
    static constexpr int flags = O_RDONLY | O_NONBLOCK;  // doesn't wait for a pipe's other end
    static constexpr std::size_t mostBytes = 64 * 1024;

    bool read(std::uint64_t offset, void *target, std::size_t count) const {
        if (offset > size_ || count > size_ - offset) return false;
        auto *const bytes = static_cast<std::byte *>(target);
        for (std::size_t done = 0; done < count;) {
            ssize_t const got = readFileAt(file_.number(), bytes + done, count - done,
                                           static_cast<off_t>(offset + done));
            if (got <= 0) return false;
            done += static_cast<std::size_t>(got);
        }
        return true;
    }

    tqplatform::Descriptor file_;
    std::uint64_t size_ = 0;
};

// Windows program files. An address there is the one that the bytes get in memory, counted from
// where the file is loaded to.

constexpr std::uint64_t headerOffsetPlace = 60;  // holds the offset of the header

struct ProgramHeader {
    std::uint32_t magic;  // PE and two NULs
    std::uint16_t machine;
    std::uint16_t sections;
    std::uint32_t unused[3];
    std::uint16_t optionalSize;  // of what follows, up to the table of sections
    std::uint16_t characteristics;
    std::uint16_t optionalMagic;  // tells where the directories stand
};
constexpr std::size_t optionalOffset = offsetof(ProgramHeader, optionalMagic);
static_assert(offsetof(ProgramHeader, optionalSize) == 20 && optionalOffset == 24);

struct Directories {
    std::uint32_t count;
    struct {
        std::uint32_t address, size;
    } exports, imports, resources;  // more may follow
};
static_assert(sizeof(Directories) == 28);

struct Section {
    char name[8];
    std::uint32_t size;
    std::uint32_t address;
    std::uint32_t sizeInFile;
    std::uint32_t offsetInFile;
    std::uint32_t unused[4];
};
static_assert(sizeof(Section) == 40);

struct ResourceDirectory {
    std::uint32_t unused[3];
    std::uint16_t named, numbered;  // entries that follow
};
static_assert(sizeof(ResourceDirectory) == 16);

struct ResourceEntry {
    std::uint32_t id;
    std::uint32_t offset;  // from the root; with isDirectory of a directory, else of ResourceData
};
static_assert(sizeof(ResourceEntry) == 8);

struct ResourceData {
    std::uint32_t address;
    std::uint32_t size;
    std::uint32_t unused[2];
};
static_assert(sizeof(ResourceData) == 16);

constexpr std::uint32_t isDirectory = 0x80000000;
constexpr std::uint32_t versionType = 16;

// Where Directories stand in the optional header with `magic`.
std::optional<std::size_t> directoriesOffset(std::uint16_t magic) {
    switch (magic) {
        case 0x10B:  // 32 bits
            return 92;
        case 0x20B:  // 64 bits
            return 108;
        default:
            return {};
    }
}

// From `address` to the end of what the file has of its section.
std::optional<Range> rangeAt(std::vector<Section> const &sections, std::uint32_t address) {
    auto const found = std::ranges::find_if(sections, [=](Section const &section) {
        return address >= section.address && address - section.address < section.sizeInFile;
    });
    if (found == sections.end()) return {};
    std::uint32_t const skipped = address - found->address;
    return Range{std::uint64_t{found->offsetInFile} + skipped, found->sizeInFile - skipped};
}

// The entry with the number `id`, or the first one if there is no `id`.
std::optional<ResourceEntry> findEntry(ProgramFile const &file, std::uint64_t directory,
                                       std::optional<std::uint32_t> id) {
    auto const head = file.record<ResourceDirectory>(directory);
    if (!head) return {};
    auto const entries = file.records<ResourceEntry>(directory + sizeof *head,
                                                     std::uint64_t{head->named} + head->numbered);
    auto const found = std::ranges::find_if(
        entries, [&](ResourceEntry const &entry) { return !id || entry.id == *id; });
    return found == entries.end() ? std::nullopt : std::optional(*found);
}

// The directory at `root` lists types of resources, each with a directory of names, and each of
// those with one of languages.
std::optional<ResourceData> findVersionResource(ProgramFile const &file, std::uint64_t root) {
    constexpr std::optional<std::uint32_t> levels[] = {versionType, {}, {}};
    std::uint32_t offset = isDirectory;
    for (auto const &id : levels) {
        if ((offset & isDirectory) == 0) return {};
        auto const entry = findEntry(file, root + (offset & ~isDirectory), id);
        if (!entry) return {};
        offset = entry->offset;
    }
    if ((offset & isDirectory) != 0) return {};
    return file.record<ResourceData>(root + offset);
}

std::optional<Range> findInWindowsFile(ProgramFile const &file) {
    auto const start = file.record<std::uint32_t>(headerOffsetPlace);
    auto const header = start ? file.record<ProgramHeader>(*start) : std::nullopt;
    if (!header || header->magic != 0x4550) return {};
    auto const offset = directoriesOffset(header->optionalMagic);
    if (!offset || *offset + sizeof(Directories) > header->optionalSize) return {};
    std::uint64_t const optionalHeader = std::uint64_t{*start} + optionalOffset;
    auto const directories = file.record<Directories>(optionalHeader + *offset);
    if (!directories || directories->count < 3) return {};

    auto const sections =
        file.records<Section>(optionalHeader + header->optionalSize, header->sections);
    auto const root = rangeAt(sections, directories->resources.address);
    auto const data = root ? findVersionResource(file, root->offset) : std::nullopt;
    auto const place = data ? rangeAt(sections, data->address) : std::nullopt;
    if (!place) return {};
    return Range{place->offset, std::min<std::uint64_t>(place->size, data->size)};
}

constexpr auto elfSectionName = ".rsrc.version\0"sv;

template <typename FileHeader, typename SectionHeader>
std::optional<Range> findInElf(ProgramFile const &file) {
    auto const header = file.record<FileHeader>(0);
    if (!header || header->e_shentsize != sizeof(SectionHeader)) return {};
    auto const sections = file.records<SectionHeader>(header->e_shoff, header->e_shnum);
    if (header->e_shstrndx >= sections.size()) return {};
    auto const &text = sections[header->e_shstrndx];
    auto const names = file.records<char>(text.sh_offset, text.sh_size);

    auto const found = std::ranges::find_if(sections, [&](SectionHeader const &section) {
        std::string_view const rest(names.data(), names.size());
        return section.sh_type == SHT_PROGBITS && section.sh_name < rest.size() &&
               rest.substr(section.sh_name).starts_with(elfSectionName);
    });
    if (found == sections.end()) return {};
    return Range{found->sh_offset, found->sh_size};
}

struct Format {
    std::string_view magic;  // what the file begins with
    std::optional<Range> (*find)(ProgramFile const &);
};
constexpr Format formats[] = {
    {"MZ", findInWindowsFile},
    {ELFMAG "\2\1"sv, findInElf<Elf64_Ehdr, Elf64_Shdr>},  // 64 bits, little-endian
    {ELFMAG "\1\1"sv, findInElf<Elf32_Ehdr, Elf32_Shdr>},  // 32 bits
};

std::optional<Range> findBlock(ProgramFile const &file) {
    auto const begin = file.record<std::array<char, 6>>(0);
    if (!begin) return {};
    auto const *const format = std::ranges::find_if(formats, [&](Format const &candidate) {
        return std::string_view(begin->data(), begin->size()).starts_with(candidate.magic);
    });
    return format == std::end(formats) ? std::nullopt : format->find(file);
}

// The version block of the file `path`, with a fixed record in it; empty if there is none.
std::vector<std::byte> readBlock(char const *path) {
    ProgramFile const file(path == nullptr ? "" : path);
    auto const place = findBlock(file);
    auto const length = place ? file.record<std::uint16_t>(place->offset) : std::nullopt;
    if (!length || *length > place->size) return {};
    auto block = file.records<std::byte>(place->offset, *length);
    if (!hasFixedRecord(block)) block.clear();
    return block;
}

}  // namespace

unsigned int GetFileVersionInfoSizeA(char const *path, std::uint32_t *handle) {
    if (handle != nullptr) *handle = 0;
    return static_cast<unsigned int>(readBlock(path).size());
}

int GetFileVersionInfoA(char const *path, std::uint32_t /*handle*/, unsigned int size, void *data) {
    auto const block = readBlock(path);
    if (block.empty() || block.size() > size) return 0;
    std::memcpy(data, block.data(), block.size());
    return 1;
}

int VerQueryValueA(void const *block, char const *subBlock, void **value, unsigned int *length) {
    if (block == nullptr || subBlock == nullptr || subBlock != "\\"sv) return 0;
    std::uint16_t size;
    std::memcpy(&size, block, sizeof size);
    auto const *const bytes = static_cast<std::byte const *>(block);
    if (!hasFixedRecord({bytes, size})) return 0;
    *value = const_cast<std::byte *>(bytes) + offsetof(BlockHead, fixed);
    *length = sizeof(VS_FIXEDFILEINFO);
    return 1;
}
