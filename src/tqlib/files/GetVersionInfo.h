#pragma once

#include "tqlib/files/TQFilename.h"
#include "tqlib/foundation/Export.h"

/// The file version of a program or library file, as one number to show and to compare:
///
///     TQFilename file("C:\\app\\draw.exe");      // of version 2.5.3.7
///     GetVersionInfo(file);                      // 2.537
///
/// Each of the four numbers of the version counts a tenth of the one ahead of it. A number of 10 or
/// more runs into its neighbour: 1.12.0.0 gives 2.2, as 2.2.0.0 does.
///
/// The result is 0.0 if the file can't be read or carries no version (tqplatform/kernel/Version.h
/// tells where it is looked for), or the path has more than 255 characters. `file` stays as it is.
TQLIB_API double GetVersionInfo(TQFilename &file);
