#pragma once

// Paths of the library and of the standard library. The library's have a drive letter and
// backslashes, and the host's root is its drive C:.
//
//     std::filesystem::remove(hostPath(TQFilename("C:\\tmp\\a.txt")));       // removes /tmp/a.txt
//     TQFilename file = fromHostPath("/tmp/a.txt");                          // C:\tmp\a.txt

#include <filesystem>

#include "tqlib/files/TQFilename.h"
#include "tqplatform/runtime/HostPath.h"

/// The host's path of `file`; empty for a drive that the host doesn't have.
inline std::filesystem::path hostPath(TQFilename const &file) {
    return tqplatform::toHostPath(file.text());
}

/// The library's path of the host's `path`. Host names with white space at their ends, a colon in
/// second place or a backslash mean something else there: hostPath() of the result shows it.
inline TQFilename fromHostPath(std::filesystem::path const &path) {
    return TQFilename(tqplatform::fromHostPath(path.native()).c_str());
}
