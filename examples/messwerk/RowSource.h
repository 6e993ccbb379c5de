#pragma once

// Where rows come from: the lines of a file as an editor numbers them, and the fields on them. The
// library's readers are lenient. They cut a long line into several, end the text of a line at a NUL
// character, and give an empty line for a blank one and for the end of the file alike; quotes
// protect nothing. A line on which that would matter is told apart here.

#include <cstdint>
#include <memory>
#include <string>

#include "Errors.h"
#include "Options.h"

namespace messwerk {

enum class LineKind {
    Fields,   ///< something to read is on it
    Blank,    ///< nothing at all is on it
    TooLong,  ///< longer than the readers' room; all of it is passed over
    HasNul,   ///< holds a NUL character
    End,      ///< there is no further line
};

class RowSource {
  public:
    /// The input in its form. Throws RunError if it can't be read.
    static std::unique_ptr<RowSource> open(Options const &options);

    RowSource(RowSource const &) = delete;
    RowSource &operator=(RowSource const &) = delete;
    virtual ~RowSource();

    /// Fetches the next line. Throws RunError if the file can't be read to its end.
    LineKind next();

    /// What is wrong with a line that has fields, as a whole; empty if nothing is.
    virtual std::string fault() = 0;

    /// Takes the next field of such a line, that of the column number `index`, as its text.
    virtual void take(std::size_t index, TQString &text) = 0;

    /// The number of the line at hand; the first is 1.
    long number() const { return number_; }

    /// The bytes read so far, and the size of the file, 0 if it isn't known.
    virtual std::int64_t position() = 0;
    std::int64_t length() const { return length_; }

  protected:
    /// A source for the file `path`, of which the library's reader is `file`. Throws RunError if
    /// that has failed.
    RowSource(std::string const &path, classic::ios const &file);

    /// Fetches the next line; End means that nothing could be read.
    virtual LineKind fetch() = 0;

    RunError readError(int reason) const;

  private:
    std::string path_;
    std::int64_t length_ = 0;
    long number_ = 0;
};

}  // namespace messwerk
