#pragma once

// Writes a text file of fixed columns in the manner of the edit descriptors A, I, F and X.
//
//     TQFortranOutput file("table.txt");
//     file.A(6, "abc");
//     file.X(2);
//     file.I(5, 42);
//     file.F(10, 3, 3.14159);
//     file.NL();                                         // abc        42     3.142
//
// Each field has exactly its width, whatever goes into it, so that columns stay where they are.
// TQFortranInput reads what this class writes.

#include <cstddef>

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/streams/ofstream.h"

/// A writer of fixed columns. Widths are in characters. Nothing is thrown: what the file doesn't
/// take sets the stream's state, and a failed stream takes nothing more.
///
/// Copying and assigning give a writer on the same file, which is closed with the last of them.
/// What the file can't take when it is closed that way is lost without a report: call flush() or
/// close() and ask fail() to know.
class TQLIB_API TQFortranOutput : public classic::ofstream {
  public:
    /// A writer without a file; open() may give it one. Its name stays empty.
    TQFortranOutput();

    /// Creates or empties the file `name`; a file that can't be opened leaves the stream failed.
    explicit TQFortranOutput(char const *name);

    TQFortranOutput(TQFortranOutput const &) = default;
    TQFortranOutput &operator=(TQFortranOutput const &) = default;
    ~TQFortranOutput() override;

    /// Writes a text with blanks behind it; null is the empty text. One longer than the field gives
    /// asterisks.
    void A(unsigned int width, char const *text);

    /// Writes a whole number with blanks ahead of it. One longer than the field gives asterisks.
    void I(unsigned int width, int value);

    /// Writes a number with blanks ahead of it, rounded to `decimals`, with a point in every
    /// locale; with 0 decimals, or less, there is no point. A number longer than the field is cut
    /// at its end: 1234.5 in three characters is 123.
    void F(unsigned int width, int decimals, double value);

    /// Writes `count` blanks.
    void X(unsigned int count);

    /// Ends the line.
    void NL();

    /// The name given at construction.
    TQString getName() const { return name_; }

  private:
    template <typename Form>
    TQLIB_INTERNAL bool writeInPlace(unsigned int width, Form form);
    TQLIB_INTERNAL void writeAnyWhole(unsigned int width, int value);
    TQLIB_INTERNAL void writeAnyReal(unsigned int width, int decimals, double value);
    TQLIB_INTERNAL void fill(std::size_t count, char c);

    TQString name_;
};
