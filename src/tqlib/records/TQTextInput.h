#pragma once

// Reads a text file of blank-separated items, line by line and item by item. The equals sign
// separates as a blank does, so files of the form "key = value" can be read as well.
//
//     TQTextInput file("limits.txt");                    // width = 1.5
//     TQString key;
//     double value;
//     for (file.nextline(); *file.currentLine() != '\0'; file.nextline())
//         file >> key >> &value;
//
// The loop ends at the end of the file or at a blank line. Both set the end-of-file bit; clear()
// and then peek() tells them apart, which is -1 at the end of the file alone, and
// rdbuf()->readFailed() whether that was an error. eof() is no condition for the loop: the last
// line of a file without a final newline sets that bit too.
//
// A quote strips itself and protects nothing: a blank between quotes ends the item. A tab is part
// of an item. A number may have anything behind it, but no quote ahead.

#include <string_view>

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqlib/records/LineBuffer.h"
#include "tqplatform/streams/ifstream.h"

/// A reader of blank-separated items. Lines have at most 9191 characters; what is longer comes as
/// several lines. A number has at most 199 characters; a longer one is cut there.
///
/// Copying and assigning give a reader with the same field values on the same file and the same
/// line block: when one of the two fetches a line, it is the current line of both. The last of them
/// releases the block and the file.
class TQLIB_API TQTextInput : public classic::ifstream {
  public:
    /// Thrown by value by a read that finds no item left on the line, or a number that doesn't
    /// convert. The type alone is the information.
    class TQLIB_API Failure {};

    /// A reader without a file; open() may give it one. Its name stays empty.
    TQTextInput();

    /// Opens the file `name` for reading; a file that can't be opened leaves the stream failed.
    /// `ascii` is stored only.
    explicit TQTextInput(char const *name, int ascii = 0);

    TQTextInput(TQTextInput const &) = default;
    TQTextInput &operator=(TQTextInput const &) = default;
    ~TQTextInput() override;

    /// Read the next item as sscanf does, by the decimal point of the locale in force. The short
    /// types take the low 16 bits. Fetch the first line if none was fetched, and never another one.
    /// Throw Failure, with the target unchanged; an item that doesn't convert is taken all the
    /// same.
    TQTextInput &operator>>(double *target);
    TQTextInput &operator>>(float *target);
    TQTextInput &operator>>(long *target);
    TQTextInput &operator>>(short *target);
    TQTextInput &operator>>(int *target);
    TQTextInput &operator>>(unsigned long *target);
    TQTextInput &operator>>(unsigned short *target);
    TQTextInput &operator>>(unsigned int *target);

    /// Read the next item as a text, one quote stripped on each side: double quotes and apostrophes
    /// by the first form, double quotes by the second, though an apostrophe ends its item too.
    /// Quotes need not match. Throw Failure, with the target empty.
    TQTextInput &operator>>(TQString &target);
    TQTextInput &operator>>(CString &target);

    /// The same into a block of the caller's with room for the longest item, at most 9192 bytes,
    /// with rules of its own: it passes over one blank at most and over no equals sign, so that it
    /// stands on each further separator and gives the empty text; an apostrophe is a letter. On
    /// Failure the target is unchanged.
    TQTextInput &operator>>(char *target);

    /// Fetches the next line. A blank line and the end of the file both set the stream's state to
    /// exactly the end-of-file bit. A line that the end of the file cuts sets that bit, one that a
    /// read error cuts the bad bit as well.
    void nextline();

    /// The whole current line, valid until the next line is fetched; fetches the first line if none
    /// was fetched.
    char const *currentLine();

    /// One more than the number of lines that have been fetched: 2 while the first is current.
    long lineNumber() const { return lineNo_; }

    /// The name given at construction.
    TQString getName() const { return name_; }

    /// Stores a flag that nothing else uses, and gives the previous one.
    int setAscii(int ascii);

  private:
    friend class tqlib::detail::NumberReading;

    template <typename Form, typename Value>
    TQLIB_INTERNAL bool readInPlace(Value &value);
    TQLIB_INTERNAL char *getNumber(char *field);
    TQLIB_INTERNAL TQTextInput &readText(CString &target, std::string_view quotes);
    TQLIB_INTERNAL void toLine();
    TQLIB_INTERNAL void toItem();

    long lineNo_ = 1;
    tqlib::detail::LineBuffer buffer_ = tqlib::detail::LineBuffer::make();
    char *position_ = nullptr;  ///< next unread character of the line; null before the first line
    int ascii_ = 0;
    TQString name_;
};
