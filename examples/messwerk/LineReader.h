#pragma once

// The lines of a file as an editor numbers them, with those told apart that the library's reader
// alone shows as something else: it cuts a long line into several, ends the text of a line at a NUL
// character, and gives an empty line for a blank one and for the end of the file alike.

#include <cstdint>
#include <string>

#include "Errors.h"
#include "tqlib/tqlib.h"

namespace messwerk {

enum class LineKind {
    Fields,   ///< something to read is on it
    Blank,    ///< nothing at all is on it
    TooLong,  ///< longer than the reader's room; all of it is passed over
    HasNul,   ///< holds a NUL character
    End,      ///< there is no further line
};

class LineReader {
  public:
    /// Opens the file `path`. Throws RunError if it can't be read.
    LineReader(std::string const &path, char separator);

    /// Fetches the next line. Throws RunError if the file can't be read to its end.
    LineKind next();

    /// The number of the line at hand; the first is 1.
    long number() const { return number_; }

    /// The bytes read so far.
    std::int64_t position() { return file_.tellg(); }

    /// The size of the file in bytes; 0 if it isn't known.
    unsigned long fileLength() const { return file_.getFileLength(); }

    /// The reader, to take the fields of the line at hand.
    TQCSVInput &fields() { return file_; }

  private:
    /// What one call of the library's nextline() took from the file, in bytes.
    struct Piece {
        std::int64_t taken;    ///< the line end included
        std::int64_t content;  ///< NUL characters included
        std::int64_t visible;  ///< up to the first NUL
    };

    Piece takePiece();
    bool isCut(Piece const &piece);
    bool endsEarly();
    RunError readError(int reason) const;

    std::string path_;
    TQCSVInput file_;
    long number_ = 0;
};

}  // namespace messwerk
