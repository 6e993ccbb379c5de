// The ways of bitmaps in and out.

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "tqlib/bitmap/CDib.h"
#include "tqlib/bitmap/DibMemory.h"
#include "tqplatform/desktop/AfxMessageBox.h"
#include "tqplatform/framework/CException.h"
#include "tqplatform/framework/ModuleState.h"
#include "tqplatform/kernel/FileMapping.h"
#include "tqplatform/runtime/CRuntime.h"

using tqlib::detail::allocate;
using tqlib::detail::Block;
using tqlib::detail::contextOf;

namespace {

constexpr std::uint16_t fileType = 0x4D42;  // "BM"
constexpr std::size_t fileHeaderSize = 14;
constexpr std::size_t infoHeaderSize = sizeof(BITMAPINFOHEADER);

/// A table of more bytes makes no bitmap. Of tables and bits so many may lack in a file: they take
/// memory all the same.
constexpr std::uint64_t mostTableBytes = std::numeric_limits<std::int32_t>::max() - infoHeaderSize;
constexpr std::size_t mostMissingTable = 1 << 20, mostMissingBits = 64 << 20;

/// The header of a BMP file; its numbers are little-endian, as the host's are. The size isn't
/// looked at on reading.
struct FileHeader {
    std::uint16_t type = fileType;
    std::uint32_t size = 0;
    std::uint32_t bitsOffset = 0;

    static FileHeader load(std::uint8_t const *bytes) {
        FileHeader header;
        std::memcpy(&header.type, bytes, 2);
        std::memcpy(&header.bitsOffset, bytes + 10, 4);
        return header;
    }
    void store(std::uint8_t *bytes) const {
        std::memset(bytes, 0, fileHeaderSize);
        std::memcpy(bytes, &type, 2);
        std::memcpy(bytes + 2, &size, 4);
        std::memcpy(bytes + 10, &bitsOffset, 4);
    }
};

/// The bytes of the colour table that the header of a bitmap promises.
std::uint64_t tableBytes(BITMAPINFOHEADER const &header) {
    return std::uint64_t{tqplatform::colorsOf(header)} * sizeof(RGBQUAD);
}

// Reads `size` bytes; what the file is too short for is 0. Gives the number that it had.
std::size_t readOrZero(CFile &file, std::uint8_t *target, std::size_t size) {
    std::size_t const count = file.Read(target, static_cast<unsigned int>(size));
    std::memset(target + count, 0, size - count);
    return count;
}

void skip(CFile &file, std::uint64_t count) {
    std::uint8_t piece[4096];
    while (count > 0) {
        auto const part = static_cast<unsigned int>(std::min<std::uint64_t>(count, sizeof piece));
        if (file.Read(piece, part) < part) return;
        count -= part;
    }
}

// A block of `size` bytes that begins with the first `count` of `block`.
Block grown(Block const &block, std::size_t count, std::size_t size) {
    Block larger(allocate(size));
    if (count > 0) std::memcpy(larger.get(), block.get(), count);
    return larger;
}

// Reads on until there are `size` bytes behind the `have` ones of `block`. As many as `most` may
// lack, and are 0 then: memory is taken as the file proves to have what it promises.
Block readPromised(CFile &file, Block block, std::size_t have, std::size_t size, std::size_t most) {
    std::size_t const end = have + size;
    bool isWhole = true;
    do {
        std::size_t const room = end - have > most ? std::max(2 * have, most) : end;
        std::size_t const part = std::min(room, end) - have;
        block = grown(block, have, have + part);
        std::size_t const got = file.Read(block.get() + have, static_cast<unsigned int>(part));
        isWhole = got == part;
        have += got;
    } while (isWhole && have < end);
    if (isWhole) return block;
    if (end - have > most) throw new CException;
    block = grown(block, have, end);
    std::memset(block.get() + have, 0, end - have);
    return block;
}

// Carries out `action`. If it throws, the exception ends here, with a message, and the result is 0.
template <typename Action>
int guarded(char const *message, Action action) {
    try {
        action();
        return 1;
    } catch (CException *error) {
        error->Delete();
    } catch (std::bad_alloc const &) {
        // Lack of memory is told in the same way.
    }
    AfxMessageBox(message);
    return 0;
}

/// A file in memory that is given back unless release() takes over.
class MappedFile {
  public:
    explicit MappedFile(HANDLE file) : file_(file) {}
    MappedFile(MappedFile const &) = delete;
    MappedFile &operator=(MappedFile const &) = delete;
    ~MappedFile() {
        if (view_ != nullptr) UnmapViewOfFile(view_);
        CloseHandle(mapping_);
        CloseHandle(file_);
    }

    /// Maps the first `size` bytes, or all of them for 0.
    bool map(std::uint32_t size) {
        mapping_ = CreateFileMappingA(file_, nullptr, PAGE_READWRITE, 0, size, nullptr);
        view_ = MapViewOfFile(mapping_, FILE_MAP_WRITE, 0, 0, 0);
        return view_ != nullptr;
    }

    HANDLE file() const { return file_; }
    std::uint8_t *view() const { return static_cast<std::uint8_t *>(view_); }

    /// The bytes of the file, or nothing if they can't be told.
    std::optional<std::uint64_t> size() const {
        std::uint32_t high = 0;
        std::uint32_t const low = GetFileSize(file_, &high);
        std::uint64_t const size = std::uint64_t{high} << 32 | low;
        if (size == std::numeric_limits<std::uint64_t>::max()) return std::nullopt;
        return size;
    }

    void release(HANDLE &file, HANDLE &mapping, void *&view) {
        file = std::exchange(file_, nullptr);
        mapping = std::exchange(mapping_, nullptr);
        view = std::exchange(view_, nullptr);
    }

  private:
    HANDLE file_;
    HANDLE mapping_ = nullptr;
    void *view_ = nullptr;
};

HANDLE openForMapping(char const *path, bool share, unsigned int disposition) {
    return CreateFileA(path, GENERIC_READ | GENERIC_WRITE, share ? FILE_SHARE_READ : 0, nullptr,
                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

int refuse(char const *message) {
    AfxMessageBox(message);
    return 0;
}

// True if header, colour table and bits lie within a block of `size` bytes. A header of another
// kind is left to others.
bool liesWithin(void const *block, std::uint64_t size) {
    BITMAPINFOHEADER header;
    if (size < sizeof header.biSize) return false;
    std::memcpy(&header.biSize, block, sizeof header.biSize);
    if (header.biSize != infoHeaderSize) return true;
    if (size < infoHeaderSize) return false;
    std::memcpy(&header, block, sizeof header);
    std::uint64_t const bits = tqplatform::bitsOf(header);
    std::uint64_t const rest = size - infoHeaderSize, table = tableBytes(header);
    return table <= rest && bits <= rest - table;
}

}  // namespace

// Reads both headers and the colour table, and goes to where the bits are.
void CDib::readHeader(CFile &file) {
    std::uint8_t bytes[fileHeaderSize + infoHeaderSize];
    if (file.Read(bytes, fileHeaderSize) < fileHeaderSize) throw new CException;
    FileHeader const fileHeader = FileHeader::load(bytes);
    constexpr std::size_t smallest = fileHeaderSize + infoHeaderSize;
    if (fileHeader.type != fileType || fileHeader.bitsOffset < smallest) throw new CException;
    readOrZero(file, bytes, infoHeaderSize);
    BITMAPINFOHEADER read;
    std::memcpy(&read, bytes, sizeof read);
    std::uint64_t const room = fileHeader.bitsOffset - smallest;
    std::uint64_t const table = read.biSize == infoHeaderSize ? tableBytes(read) : 0;
    if (table > room || table > mostTableBytes) throw new CException;
    Block block(allocate(infoHeaderSize));
    std::memcpy(block.get(), &read, sizeof read);
    block = readPromised(file, std::move(block), infoHeaderSize, static_cast<std::size_t>(table),
                         mostMissingTable);
    header = reinterpret_cast<BITMAPINFOHEADER *>(block.release());
    headerAlloc = AllocNew;
    skip(file, room - table);
}

int CDib::Read(CFile *file) {
    Empty();
    return guarded("Read error", [&] {
        readHeader(*file);
        ComputeMetrics();
        ComputePaletteSize(header->biBitCount);
        MakePalette();
        image = readPromised(*file, nullptr, 0, imageSize, mostMissingBits).release();
        imageAlloc = AllocNew;
    });
}

int CDib::ReadSection(CFile *file, CDC *dc) {
    Empty();
    return guarded("ReadSection error", [&] {
        readHeader(*file);
        if (header->biCompression != BI_RGB) throw new CException;
        ComputeMetrics();
        ComputePaletteSize(header->biBitCount);
        MakePalette();
        UsePalette(dc, 0);
        if (CreateSection(dc) == nullptr) throw new CException;
        file->Read(image, imageSize);  // a new section is all 0
    });
}

int CDib::Write(CFile *file) {
    return guarded("write error", [&] {
        if (!isComplete() || (image == nullptr && imageSize > 0)) throw new CException;
        auto const headers = static_cast<unsigned int>(GetSizeHeader());
        std::uint8_t bytes[fileHeaderSize];
        FileHeader{fileType, 0, static_cast<std::uint32_t>(fileHeaderSize + headers)}.store(bytes);
        file->Write(bytes, sizeof bytes);
        file->Write(header, headers);
        file->Write(image, imageSize);
    });
}

void CDib::Serialize(CArchive &archive) {
    archive.Flush();
    if (archive.IsStoring())
        Write(archive.GetFile());
    else
        Read(archive.GetFile());
}

CArchive &operator>>(CArchive &archive, CDib *&bitmap) {
    bitmap = static_cast<CDib *>(archive.ReadObject(&CDib::classCDib));
    return archive;
}

int CDib::AttachMemory(void *block, int mustDelete, void *global) {
    Empty();
    globalHandle = static_cast<HGLOBAL>(global);
    if (mustDelete != 0) headerAlloc = global != nullptr ? AllocGlobal : AllocNew;
    return attach(block, std::numeric_limits<std::uint64_t>::max());
}

// Uses a block of at most `size` bytes, and lets go of it if that fails.
int CDib::attach(void *block, std::uint64_t size) {
    int const result = guarded("AttachMemory error", [&] {
        header = static_cast<BITMAPINFOHEADER *>(block);
        if (block == nullptr || !liesWithin(block, size)) throw new CException;
        ComputeMetrics();
        ComputePaletteSize(header->biBitCount);
        image = reinterpret_cast<std::uint8_t *>(colorTable + colorCount);
        MakePalette();
    });
    if (result == 0) Empty();
    return result;
}

int CDib::LoadBitmapA(unsigned int id) {
    unsigned int const number = id & 0xFFFF;
    HINSTANCE const module = AfxFindResourceHandle(number, RT_BITMAP);
    HRSRC const resource = FindResourceA(module, number, RT_BITMAP);
    void const *const block = LoadResource(module, resource);
    if (block == nullptr) return 0;
    Empty();
    return attach(const_cast<void *>(block), SizeofResource(module, resource));
}

int CDib::AttachMapFile(char const *path, int share) {
    MappedFile file(openForMapping(path, share != 0, OPEN_EXISTING));
    if (!file.map(0)) return refuse("Empty bitmap file");
    std::uint64_t const size = tqplatform::viewSize(file.view());
    std::uint8_t const type[] = {'B', 'M'};
    bool const isBitmap = size >= fileHeaderSize &&
                          std::memcmp(file.view(), type, sizeof type) == 0 &&
                          liesWithin(file.view() + fileHeaderSize, size - fileHeaderSize);
    if (!isBitmap) return refuse("Invalid bitmap file");
    if (AttachMemory(file.view() + fileHeaderSize, 0, nullptr) == 0) return 0;
    file.release(fileHandle, mapHandle, fileView);
    return 1;
}

int CDib::CopyToMapFile(char const *path) {
    if (!isComplete() || (image == nullptr && imageSize > 0)) return 0;
    auto const headers = static_cast<std::size_t>(GetSizeHeader());
    std::uint64_t const size = fileHeaderSize + headers + imageSize;
    if (size > std::numeric_limits<std::uint32_t>::max()) return 0;
    HANDLE const fresh = openForMapping(path, false, CREATE_NEW);
    MappedFile file(fresh != nullptr ? fresh : openForMapping(path, false, OPEN_EXISTING));
    // An old file keeps its content until nothing can fail any more.
    auto const before = file.size();
    bool const isReady =
        before && file.map(static_cast<std::uint32_t>(size)) && SetFileSize(file.file(), size) == 1;
    if (!isReady) {
        if (before) SetFileSize(file.file(), *before);
        if (fresh != nullptr) _unlink(path);
        return 0;
    }
    std::uint8_t *const view = file.view();
    FileHeader{fileType, static_cast<std::uint32_t>(size),
               static_cast<std::uint32_t>(fileHeaderSize + headers)}
        .store(view);
    std::memcpy(view + fileHeaderSize, header, headers);
    if (imageSize > 0) std::memcpy(view + fileHeaderSize + headers, image, imageSize);
    Empty();
    file.release(fileHandle, mapHandle, fileView);
    header = reinterpret_cast<BITMAPINFOHEADER *>(view + fileHeaderSize);
    image = view + fileHeaderSize + headers;
    ComputePaletteSize(header->biBitCount);
    ComputeMetrics();
    MakePalette();
    return 1;
}

void CDib::DetachMapFile() {
    if (fileHandle == nullptr) return;
    UnmapViewOfFile(fileView);
    CloseHandle(mapHandle);
    CloseHandle(fileHandle);
    fileHandle = nullptr;
}

int CDib::Compress(CDC *dc, int compress) {
    if (header == nullptr || (header->biBitCount != 4 && header->biBitCount != 8)) return 0;
    if (bitmapHandle != nullptr) return 0;
    HDC const context = contextOf(dc);
    HPALETTE const old = SelectPalette(context, paletteHandle, 0);
    HBITMAP const bitmap = CreateBitmap(dc);
    int result = 0;
    if (bitmap != nullptr) {
        result = takeCompressed(dc, bitmap, compress);
        DeleteObject(bitmap);
    }
    SelectPalette(context, old, 0);
    return result;
}

// Takes the picture of `bitmap` in place of the present one, run-length coded or not.
int CDib::takeCompressed(CDC *dc, HBITMAP bitmap, int compress) {
    auto const headers = static_cast<std::size_t>(GetSizeHeader());
    auto const lines = static_cast<unsigned int>(header->biHeight);
    try {
        Block newHeader(allocate(headers));
        std::memcpy(newHeader.get(), header, headers);
        auto *const form = reinterpret_cast<BITMAPINFO *>(newHeader.get());
        BITMAPINFOHEADER &changed = form->bmiHeader;
        // Another program may have changed the header in a mapped file this very moment.
        if (headers < infoHeaderSize + tableBytes(changed)) return 0;
        changed.biCompression = compress == 0             ? BI_RGB
                                : changed.biBitCount == 4 ? BI_RLE4
                                                          : BI_RLE8;
        auto const get = [&](void *bits) {
            return GetDIBits(contextOf(dc), bitmap, 0, lines, bits, form, DIB_RGB_COLORS);
        };
        if (get(nullptr) == 0) return compress == 0 ? 0 : refuse("Unable to compress this DIB");
        if (changed.biSizeImage == 0) return refuse("Driver can't do compression");
        Block newImage(allocate(changed.biSizeImage));
        if (get(newImage.get()) == 0) return 0;
        Empty();
        header = reinterpret_cast<BITMAPINFOHEADER *>(newHeader.release());
        image = newImage.release();
        headerAlloc = imageAlloc = AllocNew;
    } catch (std::bad_alloc const &) {
        return 0;
    }
    ComputeMetrics();
    ComputePaletteSize(header->biBitCount);
    MakePalette();
    return 1;
}
