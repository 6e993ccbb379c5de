#pragma once

// How the library itself writes and reads a TQString on a classic stream. Not exported: an
// application's streams take the text as a `char const *`.

#include "tqlib/foundation/TQString.h"
#include "tqplatform/streams/istream.h"
#include "tqplatform/streams/ostream.h"

/// Writes the text up to its first NUL.
classic::ostream &operator<<(classic::ostream &stream, TQString text);

/// Reads a word of at most 255 characters; the rest of a longer one stays in the stream.
classic::istream &operator>>(classic::istream &stream, TQString &text);
