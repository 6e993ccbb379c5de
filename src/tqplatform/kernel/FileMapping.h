#pragma once

// Files in memory.
//
//     HANDLE const file = CreateFileA("C:\\data\\a.bmp", GENERIC_READ | GENERIC_WRITE, 0, nullptr,
//                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
//     HANDLE const mapping = CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, 0, nullptr);
//     void *const view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0);
//     ...                                  // changes in the view are changes of the file
//     UnmapViewOfFile(view);
//     CloseHandle(mapping);
//     CloseHandle(file);
//
// Nothing guards a view against another program that shortens the file meanwhile.

#include <cstddef>
#include <cstdint>

#include "tqplatform/kernel/Handle.h"
#include "tqplatform/runtime/Export.h"

inline constexpr unsigned int GENERIC_READ = 0x80000000;
inline constexpr unsigned int GENERIC_WRITE = 0x40000000;
inline constexpr unsigned int FILE_SHARE_READ = 1;
inline constexpr unsigned int CREATE_NEW = 1;
inline constexpr unsigned int OPEN_EXISTING = 3;
inline constexpr unsigned int FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr unsigned int PAGE_READWRITE = 4;
inline constexpr unsigned int FILE_MAP_WRITE = 2;

/// Opens the file `path` for reading and writing, the only `access`: one that is there already for
/// OPEN_EXISTING, a new one for CREATE_NEW. The file is then refused to everyone else who opens it
/// in this way, also where `share` would let them read: they want to write. `security` and
/// `pattern` are null. Null if the file can't be opened, or is in use.
TQPLATFORM_API HANDLE CreateFileA(char const *path, unsigned int access, unsigned int share,
                                  void const *security, unsigned int disposition,
                                  unsigned int attributes, HANDLE pattern);

/// The bytes of an open file, of which `high` gets the upper half; 0xFFFFFFFF in both if they can't
/// be told.
TQPLATFORM_API std::uint32_t GetFileSize(HANDLE file, std::uint32_t *high);

/// Cuts an open file to `size` bytes; 0 if that can't be.
TQPLATFORM_API int SetFileSize(HANDLE file, std::uint64_t size);

/// Makes a mapping of the first bytes of a file, as many as the two halves of the size say, or of
/// the whole file for 0. A file that is shorter gets that size: the system has the room for all of
/// them then, or the file stays as it was. `protection` is PAGE_READWRITE, `security` and `name`
/// are null. Null for an empty file, or if it can't be.
TQPLATFORM_API HANDLE CreateFileMappingA(HANDLE file, void const *security, unsigned int protection,
                                         std::uint32_t sizeHigh, std::uint32_t sizeLow,
                                         char const *name);

/// The memory in which the file of a mapping shows: all that the mapping has. `access` is
/// FILE_MAP_WRITE, the others are 0. It stays until UnmapViewOfFile(). Null if it can't be had.
TQPLATFORM_API void *MapViewOfFile(HANDLE mapping, unsigned int access, std::uint32_t offsetHigh,
                                   std::uint32_t offsetLow, std::size_t size);

namespace tqplatform {

/// The bytes of a view; 0 if there is none at that place.
TQPLATFORM_API std::size_t viewSize(void const *view);

}  // namespace tqplatform

/// Ends a view; 0 if there is none at that place.
TQPLATFORM_API int UnmapViewOfFile(void const *view);
