#pragma once

// Reads a text file of separated fields, line by line and field by field.
//
//     TQCSVInput file("co2.csv", 0, 1, 0, ',');
//     TQString date;
//     double value;
//     file.nextline();                                   // the header
//     for (file.nextline(); *file.currentLine() != '\0'; file.nextline())
//         file >> date >> &value;
//
// The loop ends at the end of the file or at a blank line. Both set the end-of-file bit; clear()
// and then peek() tells them apart, which is -1 at the end of the file alone, and
// rdbuf()->readFailed() whether that was an error. eof() is no condition for the loop: the last
// line of a file without a final newline sets that bit too.
//
// A quote strips itself and protects nothing: a separator between quotes ends the field. A
// separator at the end of a line opens no further field, and one at its start is passed over, so
// that an empty first field isn't seen. A number may have anything behind it.

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqlib/records/LineBuffer.h"
#include "tqplatform/streams/ifstream.h"

/// A reader of separated fields. Lines have at most 9191 characters; what is longer comes as
/// several lines. A number field has at most 199 characters; a longer one is cut there.
///
/// Copying and assigning give a reader with the same field values on the same file and the same
/// line block: when one of the two fetches a line, it is the current line of both. The last of them
/// releases the block and the file.
class TQLIB_API TQCSVInput : public classic::ifstream {
  public:
    /// Thrown by value by a read that finds no field left on the line, or a number field that
    /// doesn't convert. The type alone is the information.
    class TQLIB_API Failure {};

    /// A reader without a file; open() may give it one. Its name stays empty.
    TQCSVInput();

    /// Opens the file `name` for reading; a file that can't be opened leaves the stream failed.
    /// `ascii` and `quoted` are stored only, `unread` isn't read. `separator` replaces the
    /// semicolon and `decimal` the stored decimal character unless they are 0.
    explicit TQCSVInput(char const *name, int ascii = 0, int quoted = 1, char unread = 0,
                        char separator = 0, char decimal = 0);

    TQCSVInput(TQCSVInput const &) = default;
    TQCSVInput &operator=(TQCSVInput const &) = default;
    ~TQCSVInput() override;

    /// Gives every field but the name its first value: separator settings and current line are
    /// lost. The file stays where it is.
    void Init();

    /// Read the next field as sscanf does, by the decimal point of the locale in force. An empty
    /// field is 0; the short types take the low 16 bits. Fetch the first line if none was fetched,
    /// and never another one. Throw Failure, with the target unchanged.
    TQCSVInput &operator>>(double *target);
    TQCSVInput &operator>>(float *target);
    TQCSVInput &operator>>(long *target);
    TQCSVInput &operator>>(short *target);
    TQCSVInput &operator>>(int *target);
    TQCSVInput &operator>>(unsigned long *target);
    TQCSVInput &operator>>(unsigned short *target);
    TQCSVInput &operator>>(unsigned int *target);

    /// Read the next field as a text, one quote stripped on each side. Throw Failure, with the
    /// target empty.
    TQCSVInput &operator>>(TQString &target);
    TQCSVInput &operator>>(CString &target);

    /// The same into a block of the caller's with room for the longest field, at most 9192 bytes.
    /// On Failure the target is unchanged.
    TQCSVInput &operator>>(char *target);

    /// Fetches the next line. A blank line and the end of the file both set the stream's state to
    /// exactly the end-of-file bit. A line that the end of the file cuts sets that bit, one that a
    /// read error cuts the bad bit as well.
    void nextline();

    /// Calls nextline() and assigns the new line to `target`.
    void ReadLine(CString &target);

    /// The whole current line, valid until the next line is fetched; fetches the first line if none
    /// was fetched.
    char const *currentLine();

    /// Sets the stream state to `state` and goes back to the start of the file. Reads go on in the
    /// line at hand until the next one is fetched.
    void Reset(int state = 0);

    /// How many lines have been fetched since the file was opened, or since Init() or Reset().
    long lineNumber() const { return lineNo_; }

    /// How many fields of the current line have been taken, those that failed to convert included.
    int fieldNumber() const { return fieldNo_; }

    /// The name given at construction.
    TQString getName() const { return name_; }

    /// Stores a flag that nothing else uses, and gives the previous one.
    int setAscii(int ascii);

    /// The size of the file in bytes; 4294967295 with no file open.
    unsigned long getFileLength() const;

  private:
    friend class tqlib::detail::NumberReading;

    template <typename Text>
    TQLIB_INTERNAL TQCSVInput &readText(Text &target);
    template <typename Form, typename Value>
    TQLIB_INTERNAL bool readInPlace(Value &value);
    TQLIB_INTERNAL char *getNumber(char *field);
    TQLIB_INTERNAL void skipSeparator();
    TQLIB_INTERNAL bool toTextField();
    TQLIB_INTERNAL void setSeparator(char separator);

    long lineNo_;
    tqlib::detail::LineBuffer buffer_;
    char *position_;  ///< next unread character of the line; null before the first line
    int ascii_;
    TQString name_;
    char cTrennzeichen_;
    char cDezimalzeichen_;
    int quoted_;
    char cQuote_;
    int fieldNo_;
    bool plainSeparator_;  ///< the separator can't be part of a number
};
