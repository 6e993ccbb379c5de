#pragma once

// Writes a text file of separated fields.
//
//     TQCSVOutput file("result.csv");
//     file << 1 << 2.5 << "abc" << 100.0;
//     file.nextline();                      // 1;2.5;"abc";100.;
//
// Every line ends with a separator as well as a newline. Texts go out as they are: a separator, a
// quote or a newline inside one is not escaped. TQCSVInput reads what this class writes as long as
// no text holds such a character; it must be told the same separator.

#include <string_view>

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/streams/ofstream.h"

/// A writer of separated fields. The text of a number has at most 199 characters; a longer one is
/// cut there.
///
/// Copying and assigning give a writer with the same field values on the same file, which is closed
/// with the last of them. What the file can't take when it is closed that way is lost without a
/// report: call flush() or close() and ask fail() to know.
class TQLIB_API TQCSVOutput : public classic::ofstream {
  public:
    /// Thrown by value by a write that leaves the stream failed, or finds it so. The type alone is
    /// the information. What the stream took before stays in the file.
    class TQLIB_API Failure {};

    /// A writer without a file; open() may give it one. Its name stays empty.
    TQCSVOutput();

    /// Creates or empties the file `name`; a file that can't be opened leaves the stream failed.
    /// `ascii` is stored only, `unread` isn't read. With `quoted` not 0 texts are put in double
    /// quotes, with `separated` 0 no separators are written. `separator` replaces the semicolon and
    /// `decimal` the character that ZeroCheck() looks for unless they are 0.
    explicit TQCSVOutput(char const *name, int ascii = 0, int quoted = 1, char unread = 0,
                         int separated = 1, char separator = 0, char decimal = 0);

    TQCSVOutput(TQCSVOutput const &) = default;
    TQCSVOutput &operator=(TQCSVOutput const &) = default;
    ~TQCSVOutput() override;

    /// Gives every field but the name its first value. The file stays where it is.
    void Init();

    /// Write the value as one field, bare: floating-point numbers with six decimals, by the decimal
    /// point of the locale in force, less trailing zeros; characters as they are, NUL as nothing.
    /// Throw Failure.
    TQCSVOutput &operator<<(double value);
    TQCSVOutput &operator<<(float value);
    TQCSVOutput &operator<<(long value);
    TQCSVOutput &operator<<(int value);
    TQCSVOutput &operator<<(short value);
    TQCSVOutput &operator<<(unsigned long value);
    TQCSVOutput &operator<<(unsigned int value);
    TQCSVOutput &operator<<(unsigned short value);
    TQCSVOutput &operator<<(char value);
    TQCSVOutput &operator<<(unsigned char value);

    /// Write the text as one field, in quotes if that is set: the first form up to its NUL (null is
    /// empty), the others in their whole length. Throw Failure.
    TQCSVOutput &operator<<(char const *text);
    TQCSVOutput &operator<<(TQString const &text);
    TQCSVOutput &operator<<(CString const &text);

    /// Ends the line with a separator and a newline. Throws Failure; the line is not ended then.
    void nextline();

    /// Sets the separator of the fields that follow.
    void setTrennzeichen(char separator) { cTrennzeichen_ = separator; }

    /// Sets the character that ZeroCheck() looks for. It doesn't change the decimal point of
    /// numbers, which is that of the locale: where the two differ, no zeros are removed.
    void setcDezimalzeichen(char decimal) { cDezimalzeichen_ = decimal; }

    /// Removes the zeros at the end of `text` that stand behind its last decimal character, which
    /// stays: 2.500000 becomes 2.5 and 2.000000 becomes "2.". Null and texts without a decimal
    /// character are left alone.
    void ZeroCheck(char *text) const;

    /// Stores a flag that nothing else uses, and gives the previous one.
    int setAscii(int ascii);

    /// The name given at construction.
    TQString getName() const { return name_; }

  private:
    template <typename Whole>
    TQLIB_INTERNAL TQCSVOutput &writeWhole(Whole value);
    template <typename Whole>
    TQLIB_INTERNAL TQCSVOutput &writeAnyWhole(Whole value);
    TQLIB_INTERNAL TQCSVOutput &writeReal(double value);
    TQLIB_INTERNAL TQCSVOutput &writeAnyReal(double value);
    TQLIB_INTERNAL TQCSVOutput &writeField(std::string_view text);
    TQLIB_INTERNAL TQCSVOutput &writeText(std::string_view text);
    template <typename Form>
    TQLIB_INTERNAL bool writeInPlace(Form form);
    TQLIB_INTERNAL bool separatorIsDue() const;
    TQLIB_INTERNAL void startField();
    TQLIB_INTERNAL void check() const;

    int firstField_;
    int ascii_;
    TQString name_;
    int separated_;
    char cTrennzeichen_;
    char cDezimalzeichen_;
    int quoted_;
    char cQuote_;
};
