#pragma once

// Reads a text file of fixed columns in the manner of the edit descriptors A, I, F and X.
//
//     TQFortranInput file("table.txt");                  // abc        42     3.142
//     TQString name;
//     int count;
//     double value;
//     for (; file.peek() >= 0; file.NL()) {
//         file.A(6, name);
//         file.X(2);
//         file.I(5, count);
//         file.F(10, 3, value);
//     }
//
// Fields come straight from the stream: its place is the column. A field never crosses the end of a
// line. Once the line is used up, texts are empty and numbers 0, until nextline() is called.

#include <string>

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/streams/ifstream.h"

/// A reader of fixed columns. Widths are in characters; a negative one counts as 0.
///
/// Every field operation clears the stream's state before it reads; the end of the file is no
/// failure and shows in the state behind the field. The result of each is 0.
///
/// Copying and assigning give a reader with the same field values on the same file and at the same
/// place, which moves with the reads of either. The last of them releases the file.
class TQLIB_API TQFortranInput : public classic::ifstream {
  public:
    /// Thrown by value by a field that is neither a number nor blank. The type alone is the
    /// information.
    class TQLIB_API Failure {};

    /// A reader without a file; open() may give it one. Its name stays empty.
    TQFortranInput();

    /// Opens the file `name` for reading; a file that can't be opened leaves the stream failed.
    explicit TQFortranInput(char const *name);

    TQFortranInput(TQFortranInput const &) = default;
    TQFortranInput &operator=(TQFortranInput const &) = default;
    ~TQFortranInput() override;

    /// Read a text field; see readftn().
    int A(unsigned int width, char *target);
    int A(unsigned int width, TQString &target);

    /// Read a field of a whole number; see readftn().
    int I(unsigned int width, short &target);
    int I(unsigned int width, int &target);
    int I(unsigned int width, long &target);

    /// Reads a field of a number with decimals; see readftn(). There is no implied point:
    /// `decimals` changes no result.
    int F(unsigned int width, int decimals, double &target);

    /// Skips `count` characters, or less at the end of the line.
    int X(unsigned int count);

    /// nextline().
    void NL() { nextline(); }

    /// Read a number as sscanf does, whatever stands behind it in the field. The short types take
    /// the low 16 bits. A point is the decimal point also where the locale in force has a comma. A
    /// field of blanks is 0 up to a width of 20; a wider one isn't, nor is one that the end of the
    /// line cuts, unless just 20 are left. Throw Failure, with the target unchanged and the field
    /// taken. `decimals` isn't needed: reading is fastest where it is right.
    int readftn(long *target, int width);
    int readftn(unsigned long *target, int width);
    int readftn(int *target, int width);
    int readftn(short *target, int width);
    int readftn(unsigned short *target, int width);
    int readftn(double *target, int width, double decimals);

    /// Read a text, blanks included, ended with a NUL: the first two into a block with room for
    /// `width` + 1 characters, the third up to a NUL in the field, and with the German letters of
    /// the DOS code page converted as TQString::ConvertDosToWindows() does.
    int readftn(char *target, int width);
    int readftn(unsigned char *target, int width);
    int readftn(TQString &target, int width);

    /// Reads one character, which may be the end of the line. lineNumber() doesn't know of that. At
    /// the end of the file it is 0xFF.
    int readftn(char &target);

    /// Goes to the start of the next line. A rest of more than 32000 characters ends there: what is
    /// behind them is the next line.
    void nextline();

    /// Goes back to the start of the current line.
    void reReadLine();

    /// The text of the current line, from its beginning. The stream stands behind the line then,
    /// though lineNumber() stays: call reReadLine() to go on in the line. The text belongs to all
    /// readers together; it is valid until the next call for any of them, which makes it a function
    /// for one thread of a process at a time.
    char const *currentLine();

    /// The number of the current line, from 1 on.
    long lineNumber() const { return lineNo_; }

    /// The name given at construction.
    TQString getName() const { return name_; }

  private:
    template <typename Number>
    TQLIB_INTERNAL int readWhole(Number *target, int width);
    TQLIB_INTERNAL int readReal(double *target, int width, unsigned int decimals);
    TQLIB_INTERNAL char const *fieldAhead(int width) const;
    TQLIB_INTERNAL void takeField(int width);
    template <typename Value>
    TQLIB_INTERNAL Value convert(int width);
    TQLIB_INTERNAL std::string take(int width);
    TQLIB_INTERNAL void makeGood();

    long lineNo_ = 1;
    classic::streampos lineStart_ = 0;  ///< of the current line
    TQString name_;
};
