#pragma once

// Version information of program files and libraries.
//
//     char const path[] = "C:\\app\\draw.exe";
//     std::vector<std::byte> block(GetFileVersionInfoSizeA(path, nullptr));
//     auto const size = static_cast<unsigned int>(block.size());
//     void *value;
//     unsigned int length;
//     if (GetFileVersionInfoA(path, 0, size, block.data()) != 0 &&
//         VerQueryValueA(block.data(), "\\", &value, &length) != 0)
//         ...                                                  // `value` is a VS_FIXEDFILEINFO
//
// The information is a block of at most 64 KiB, a tree of length-prefixed parts whose root has the
// numbers of the version as its value. Windows program files and libraries of 32 and 64 bits carry
// it as a resource; of several names and languages the first one counts. An ELF file carries the
// same bytes in a section ".rsrc.version".

#include <cstdint>

#include "tqplatform/runtime/Export.h"

inline constexpr std::uint32_t VS_FFI_SIGNATURE = 0xFEEF04BD;

/// The fixed version record. Each version is four numbers of 16 bits: MS holds the first two, LS
/// the last two, the earlier one in its high word.
struct VS_FIXEDFILEINFO {
    std::uint32_t dwSignature;  ///< VS_FFI_SIGNATURE
    std::uint32_t dwStrucVersion;
    std::uint32_t dwFileVersionMS;
    std::uint32_t dwFileVersionLS;
    std::uint32_t dwProductVersionMS;
    std::uint32_t dwProductVersionLS;
    std::uint32_t dwFileFlagsMask;
    std::uint32_t dwFileFlags;
    std::uint32_t dwFileOS;
    std::uint32_t dwFileType;
    std::uint32_t dwFileSubtype;
    std::uint32_t dwFileDateMS;
    std::uint32_t dwFileDateLS;
};

/// The size in bytes of the version block of the file `path`; 0 if the file can't be read or has no
/// block with a fixed record. `handle`, which may be null, gets a 0.
TQPLATFORM_API unsigned int GetFileVersionInfoSizeA(char const *path, std::uint32_t *handle);

/// Copies the version block of the file `path` to `data`, which has room for `size` bytes. `handle`
/// isn't looked at. The result is 1; or 0, with `data` unchanged, if there is none or no room.
TQPLATFORM_API int GetFileVersionInfoA(char const *path, std::uint32_t handle, unsigned int size,
                                       void *data);

/// Points `value` at what stands under `subBlock` in a block of GetFileVersionInfoA(), and sets
/// `length` to its size in bytes. "\\" is the fixed record, and the only name known here. The
/// result is 1; or 0, with nothing set, if there is no such thing.
TQPLATFORM_API int VerQueryValueA(void const *block, char const *subBlock, void **value,
                                  unsigned int *length);
