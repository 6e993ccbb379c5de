#pragma once

// A bitmap in the layout of BMP files: a header, a colour table, and the bits of the pixels.
//
//     CFile file("C:\\data\\a.bmp", CFile::modeRead);
//     CDib bitmap;
//     if (bitmap.Read(&file) == 1) {
//         RGBQUAD const corner = bitmap.GetPixel(0, 0);        // upper left
//         bitmap.Draw(&dc, CPoint(0, 0), CSize(320, 200));
//     }
//
// Header and bits may be the object's own memory, a block of the caller's, a file in memory or a
// section of the graphics system. The fields tell where they are, whichever it is; lines go from
// the bottom to the top. A caller who changes fields must leave a bitmap that they describe: where
// the header promises more than there is, the bitmap isn't drawn, written or compressed.

#include <cstdint>

#include "tqlib/foundation/Export.h"
#include "tqplatform/framework/CArchive.h"
#include "tqplatform/framework/CFile.h"
#include "tqplatform/framework/CObject.h"
#include "tqplatform/graphics/CDC.h"
#include "tqplatform/graphics/Dib.h"
#include "tqplatform/graphics/Geometry.h"
#include "tqplatform/graphics/Objects.h"
#include "tqplatform/kernel/GlobalMemory.h"
#include "tqplatform/kernel/Handle.h"

/// A bitmap, or none. Every operation that brings one in gives up the one before. A null `CDC *` is
/// a context without a surface.
class TQLIB_API CDib : public CObject {
  public:
    /// Who frees a block.
    enum Ownership {
        AllocNone = 0,    ///< somebody else
        AllocNew = 1,     ///< the object, with operator delete
        AllocGlobal = 2,  ///< the object, as the memory block `globalHandle`; headers only
    };

    /// No bitmap.
    CDib();

    /// A bitmap of `size` with `bitCount` bits a pixel and a black colour table, but without bits:
    /// image is null. Sizes below 0, bits beyond 2^31 - 1 bytes and bit counts that a header hasn't
    /// make no bitmap that can be shown.
    CDib(CSize size, int bitCount);

    /// Frees the bitmap, as Empty() does.
    ~CDib() override;

    /// A new object without a bitmap, the caller's.
    static CObject *CreateObject();

    /// The record of this class, and that of its base.
    CRuntimeClass const *GetRuntimeClass() const override;
    static CRuntimeClass const *_GetBaseClass();

    /// The record of this class.
    static CRuntimeClass classCDib;

    /// Width and height in pixels; (0, 0) without a bitmap.
    CSize GetDimensions() const;

    /// The bytes of the bits, and of the header with its colour table.
    int GetSizeImage() const { return static_cast<int>(imageSize); }
    int GetSizeHeader() const { return headerSize + 4 * colorCount; }

    /// Frees the bitmap and all that belongs to it.
    void Empty();

    /// Makes the palette of the colour table. 1, or 0 with the present palette kept if there are no
    /// colours.
    int MakePalette();

    /// Takes the halftone palette for a bitmap without colour table: 1; 0 for any other.
    int SetSystemPalette(CDC *dc);

    /// Selects and realises the palette and gives what RealizePalette() gives; 0 without one.
    unsigned int UsePalette(CDC *dc, int background);

    /// Draws the bitmap, stretched to `size`, with its upper left corner at `origin`; a negative
    /// size mirrors it. 1, also if it can't be shown: its form isn't known, or its bits are fewer
    /// than its lines take. 0 without a bitmap.
    int Draw(CDC *dc, CPoint origin, CSize size);

    /// A bitmap of the graphics system with the same picture, the caller's; null if there is no
    /// picture.
    HBITMAP CreateBitmap(CDC *dc);

    /// Gives a bitmap without bits a section of the graphics system for them. The handle, which the
    /// object keeps, or null.
    HBITMAP CreateSection(CDC *dc);

    /// Attaches the bitmap resource with the low 16 bits of `id` as its number. 1, or 0 with the
    /// present bitmap kept if there is none; 0 with a message, and no bitmap then, if it isn't one.
    int LoadBitmapA(unsigned int id);

    // The pixel at `x` from the left and `y` from the top of a bitmap of 4, 8 or 24 bits that isn't
    // compressed. Any other depth shows a message. An index beyond the colour table is black.

    /// The colour; white outside the bitmap, 0, 0, 0 for another depth.
    RGBQUAD GetPixel(int x, int y) const;

    /// Red * 65536 + green * 256 + blue; 0 outside the bitmap and for another depth.
    unsigned long GetRGBColor(int x, int y) const;

    /// The index in the colour table; -1 outside the bitmap and for other depths than 4 and 8, of
    /// which 24 shows no message.
    int Get256Color(int x, int y) const;

    /// Reads a BMP file from the place where `file` stands. Its bits are where its header says;
    /// what the file is too short for is 0. 1, or 0 with a message for what isn't a BMP file with a
    /// header of 40 bytes, lacks more than 1 MB of the colour table or 64 MB of the bits, or for
    /// lack of memory. What was read by then, a header at most, stays, without bits.
    int Read(CFile *file);

    /// The same, uncompressed files only, into a section of the graphics system, whose palette is
    /// used in `dc`.
    int ReadSection(CFile *file, CDC *dc);

    /// Writes a BMP file. 1, or 0 with a message if the file doesn't take it or there is no bitmap.
    int Write(CFile *file);

    /// Writes the bitmap to the file of an archive, or reads it from there.
    void Serialize(CArchive &archive) override;

    /// Uses the bitmap in the file `path` where it is: changes of the bits are changes of the file,
    /// which nobody else may change meanwhile, and nobody can map, whatever `share` is. 1, or 0
    /// with a message and the present bitmap kept; for another header than that of 40 bytes no
    /// bitmap is left.
    int AttachMapFile(char const *path, int share);

    /// Moves the bitmap to a file in memory, in place of the content of one that is there, and goes
    /// on there. 1, or 0 with the bitmap and the content of the file kept.
    int CopyToMapFile(char const *path);

    /// Uses a block at an even address that holds a header, a colour table and bits. It is freed
    /// with the bitmap if `mustDelete` isn't 0, at once if the result is 0: as the memory block
    /// `global`, or with operator delete if that is null. The caller answers for the block being as
    /// long as its header says. 1, or 0 with a message, and no bitmap then.
    int AttachMemory(void *block, int mustDelete, void *global);

    /// Turns a bitmap of 4 or 8 bits into its run-length code, or back if `compress` is 0. 1, or 0
    /// with the bitmap kept.
    int Compress(CDC *dc, int compress);

    RGBQUAD *colorTable;           ///< behind the header
    HBITMAP bitmapHandle;          ///< the section that has the bits, or null
    std::uint8_t *image;           ///< the bits, or null
    BITMAPINFOHEADER *header;      ///< null without a bitmap
    HGLOBAL globalHandle;          ///< the memory block of the header, if it is one
    Ownership headerAlloc;         ///< of the header and its colour table
    Ownership imageAlloc;          ///< of the bits
    std::uint32_t imageSize;       ///< bytes of the bits
    std::int32_t colorCount;       ///< entries of the colour table
    HANDLE fileHandle, mapHandle;  ///< of a file in memory, or null
    void *fileView;                ///< its first byte
    HPALETTE paletteHandle;        ///< or null

  private:
    static constexpr int headerSize = 40;

    /// Where a pixel is.
    enum class Place { inside, outside, otherDepth };

    Place find(int x, int y, std::uint32_t &value) const {
        if (header == nullptr || image == nullptr) return Place::outside;
        bool const isOutside = x < 0 || y < 0 || x >= header->biWidth || y >= header->biHeight;
        if (isOutside) return Place::outside;
        std::uint64_t const stride = tqplatform::lineBytes(header->biWidth, header->biBitCount);
        auto const line = static_cast<std::uint64_t>(header->biHeight - y - 1);
        if ((line + 1) * stride > imageSize) return Place::outside;
        return read(image + line * stride, x, value);
    }

    Place read(std::uint8_t const *line, int x, std::uint32_t &value) const {
        switch (header->biBitCount) {
            case 4:
                value = tqplatform::valueAt(line, 4, x);
                return Place::inside;
            case 8:
                value = tqplatform::valueAt(line, 8, x);
                return Place::inside;
            case 24:
                value = tqplatform::valueAt(line, 24, x);
                return Place::inside;
            default:
                return Place::otherDepth;
        }
    }

    /// The colour of an index, or of the three bytes of a pixel of 24 bits.
    RGBQUAD colorOf(std::uint32_t value) const {
        auto const byte = [=](unsigned int shift) {
            return static_cast<std::uint8_t>(value >> shift);
        };
        if (header->biBitCount == 24) return {byte(0), byte(8), byte(16), 0};
        if (static_cast<std::int64_t>(value) >= colorCount) return {0, 0, 0, 0};
        auto const [blue, green, red, reserved] = colorTable[value];
        return {blue, green, red, 0};
    }

    BITMAPINFO *info() const { return reinterpret_cast<BITMAPINFO *>(header); }

    /// True if there is a header with the colours that it promises; with the bits as well.
    bool hasColors() const {
        return header != nullptr && header->biSize == headerSize &&
               static_cast<std::int64_t>(tqplatform::colorsOf(*header)) <= colorCount;
    }
    bool isComplete() const { return hasColors() && tqplatform::bitsOf(*header) <= imageSize; }
    std::uint8_t *completeBits() const { return isComplete() ? image : nullptr; }

    static void tellOtherDepth();

    TQLIB_INTERNAL void forget();
    TQLIB_INTERNAL void ComputePaletteSize(int bitCount);
    TQLIB_INTERNAL void ComputeMetrics();
    TQLIB_INTERNAL void DetachMapFile();
    TQLIB_INTERNAL void readHeader(CFile &file);
    TQLIB_INTERNAL int attach(void *block, std::uint64_t size);
    TQLIB_INTERNAL int takeCompressed(CDC *dc, HBITMAP bitmap, int compress);
};

inline RGBQUAD CDib::GetPixel(int x, int y) const {
    std::uint32_t value = 0;
    Place const place = find(x, y, value);
    if (place == Place::inside) return colorOf(value);
    if (place == Place::outside) return {255, 255, 255, 0};
    tellOtherDepth();
    return {0, 0, 0, 0};
}

inline unsigned long CDib::GetRGBColor(int x, int y) const {
    std::uint32_t value = 0;
    Place const place = find(x, y, value);
    if (place == Place::inside) return tqplatform::pixelOf(colorOf(value));
    if (place == Place::otherDepth) tellOtherDepth();
    return 0;
}

inline int CDib::Get256Color(int x, int y) const {
    std::uint32_t value = 0;
    Place const place = find(x, y, value);
    if (place == Place::otherDepth) tellOtherDepth();
    if (place != Place::inside || header->biBitCount == 24) return -1;
    return static_cast<int>(value);
}

/// Makes the next object of an archive `bitmap`, which is the caller's then; null if that was
/// stored. Throws what CArchive::ReadObject() throws.
TQLIB_API CArchive &operator>>(CArchive &archive, CDib *&bitmap);
