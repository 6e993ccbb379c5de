#pragma once

// Times of files. They are UTC.
//
//     if (HANDLE const file = OpenFile("C:\\data\\co2.csv", OF_READ)) {
//         FILETIME written;
//         SYSTEMTIME moment;
//         GetFileTime(file, nullptr, nullptr, &written);
//         FileTimeToSystemTime(&written, &moment);
//         CloseHandle(file);
//     }

#include <cstdint>

#include "tqplatform/kernel/Handle.h"
#include "tqplatform/runtime/Export.h"

/// A moment as a count of 100 nanoseconds since 1 January 1601.
struct FILETIME {
    std::uint32_t dwLowDateTime;
    std::uint32_t dwHighDateTime;
};

/// A moment by the calendar, from year 1601 to 30827. The weekday is 0 for Sunday.
struct SYSTEMTIME {
    std::uint16_t wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};

inline constexpr unsigned int OF_READ = 0;
inline constexpr unsigned int OF_WRITE = 1;

/// Opens the file `path` for reading or for writing; null if that can't be. The caller closes the
/// handle.
TQPLATFORM_API HANDLE OpenFile(char const *path, unsigned int mode);

/// Gives the times of an open file; each may be null. A system that doesn't know the time of
/// creation gives 0 for it. 0 if it can't be told, else 1.
TQPLATFORM_API int GetFileTime(HANDLE file, FILETIME *created, FILETIME *accessed,
                               FILETIME *written);

/// Sets the times of an open file; one that is null stays, and that of the creation can't be set. 0
/// if that can't be, else 1.
TQPLATFORM_API int SetFileTime(HANDLE file, FILETIME const *created, FILETIME const *accessed,
                               FILETIME const *written);

/// Turn a moment into the other form. 0 if it isn't one, or is out of range; else 1. The weekday
/// isn't looked at.
TQPLATFORM_API int FileTimeToSystemTime(FILETIME const *time, SYSTEMTIME *result);
TQPLATFORM_API int SystemTimeToFileTime(SYSTEMTIME const *time, FILETIME *result);
