#pragma once

// Names of the desktop C runtime that POSIX doesn't have.

#include <cstdint>
#include <mutex>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// What _stat() tells of a file: its size in bytes.
struct FileStatus {
    std::int64_t st_size;
};

}  // namespace tqplatform

/// The size in bytes of the open file `descriptor`, or -1 if it isn't an open file. A size beyond
/// the range of `long` gives -1 as well.
TQPLATFORM_API long _filelength(int descriptor);

/// 0 if the file `path` exists and may be used as `mode` says, a sum of 2 (write) and 4 (read);
/// else -1. Mode 0 tests for existence, and so does 1.
TQPLATFORM_API int _access(char const *path, int mode);

/// Deletes the file `path`; 0, or -1 if it can't be.
TQPLATFORM_API int _unlink(char const *path);

/// Fills `result` for the file `path`, links followed; 0, or -1 with `result` unchanged if that
/// can't be.
TQPLATFORM_API int _stat(char const *path, tqplatform::FileStatus *result);

/// Writes the current directory in Windows form to `buffer`, which has `size` bytes. The result is
/// `buffer`, or null if the directory doesn't fit or can't be told.
TQPLATFORM_API char *_getcwd(char *buffer, int size);

namespace tqplatform {

/// The platform's rename(): gives the file `from` the name `to`; 0, or -1 if that can't be. Unlike
/// the host's it never replaces anything: whatever else has the name `to`, a link or a further name
/// of the same file included, makes it fail.
TQPLATFORM_API int renameFile(char const *from, char const *to);

}  // namespace tqplatform

/// Takes and gives back the lock of a stream. The owner may take it more than once.
TQPLATFORM_API void _mtlock(std::recursive_mutex *lock);
TQPLATFORM_API void _mtunlock(std::recursive_mutex *lock);
