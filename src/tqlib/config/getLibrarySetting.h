#pragma once

#include "tqlib/foundation/Export.h"

/// The library's setting `name`: the environment variable of that name with TQ in front, which may
/// be empty, or else the value `name` in the category TQ of the file that the environment variable
/// TQINI names. The names in use are DIR and TRACE (the trace log), PATH, PRINT, EDIT and VIEW
/// (file operations). The result is the caller's, from malloc and to be released with free; null if
/// there is no setting or the name has more than 1021 characters.
TQLIB_API char *getLibrarySetting(char const *name);
