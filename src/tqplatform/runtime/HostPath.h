#pragma once

// The border between paths as the library thinks of them, with a drive letter and backslashes, and
// the host's paths with slashes. Every platform call that takes a path converts it here, once.
//
//     toHostPath("C:\\tmp\\a")  is "/tmp/a"        the host's root is drive C:, the only drive
//     toHostPath("\\tmp\\a")    is "/tmp/a"
//     toHostPath("sub\\a")      is "sub/a"
//     toHostPath("C:a")         is "a"
//     toHostPath("/tmp/a")      is "/tmp/a"        a path with a slash passes as it is

#include <string>
#include <string_view>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// True if `path` begins with a drive: a letter and a colon.
TQPLATFORM_API bool hasDrive(std::string_view path);

/// The host's form of `path`. A path on any drive but C: has none: the result is empty then, which
/// the host's file calls refuse as a name that doesn't exist.
TQPLATFORM_API std::string toHostPath(std::string_view path);

/// The form with drive and backslashes of the host's path `path`; an absolute path gets the drive
/// C:. A path that already holds a backslash passes as it is.
TQPLATFORM_API std::string fromHostPath(std::string_view path);

}  // namespace tqplatform
