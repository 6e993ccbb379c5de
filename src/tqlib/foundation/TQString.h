#pragma once

// The library's string: the framework's CString with tokens, wildcards, edits of single characters,
// resource texts and conversions to and from numbers.
//
//     TQString line = "a,b;;c";
//     TQString token;
//     for (int at = 0; at != -1;) {
//         at = line.GetToken(token, at, ",;", 1);    // a, b, c
//         ...
//     }
//     line.Search("*;c");                            // true

#include <concepts>

#include "tqlib/foundation/Export.h"
#include "tqplatform/framework/CString.h"

class CFile;

/// A text with the operations below. It adds no data to CString, whose stream operators for std
/// streams serve it as well, and a value of either converts to the other. Operations that edit
/// single characters cut the text at its first NUL.
class TQLIB_API TQString : public CString {
  public:
    TQString() = default;
    TQString(TQString const &) = default;
    TQString(TQString &&) noexcept = default;
    TQString(CString const &text) : CString(text) {}
    TQString(CString &&text) noexcept : CString(static_cast<CString &&>(text)) {}

    /// The text up to the terminator; null counts as empty.
    TQString(char const *text) : CString(text) {}

    /// The character repeated `count` times. The second form keeps a plain int count apart from the
    /// resource constructors; a negative one is 0.
    TQString(char c, unsigned int count);
    template <std::same_as<char> Character>
    TQString(Character c, int count) : CString(c, count) {}

    /// The string resource `id`; empty if there is none.
    TQString(unsigned int id);

    /// Not to be had: a single character would count as the number of a resource.
    template <std::same_as<char> Character>
    TQString(Character c) = delete;

    /// The string resource `id`, or nothing if there is none, directly followed by `number`.
    TQString(unsigned int id, int number);

    TQString &operator=(TQString const &) = default;
    TQString &operator=(TQString &&) noexcept = default;
    TQString &operator=(CString const &text) {
        CString::operator=(text);
        return *this;
    }
    TQString &operator=(CString &&text) noexcept {
        CString::operator=(static_cast<CString &&>(text));
        return *this;
    }
    TQString &operator=(char const *text) {
        CString::operator=(text);
        return *this;
    }

    /// Takes the text of a value that has one, such as a date.
    template <typename Value>
    requires(!std::derived_from<Value, CString>) && requires(Value const &value) {
        value.operator TQString();
    }
    TQString &operator=(Value const &value) { return *this = value.operator TQString(); }

    /// Replaces this text by the string resource `id`, or by nothing if there is none, and gives a
    /// copy of it. Note that this text changes too.
    TQString LoadStringA(unsigned int id);

    /// Appends the string resource `id`. The result is 1, or 0 if there is none: the text is
    /// unchanged then.
    int AppendString(unsigned int id);

    /// Appends `c` in every case, then acts as the form above.
    int AppendString(unsigned int id, char c);

    /// The last character; NUL for an empty text.
    char Last() const { return (*this)[GetLength() - 1]; }

    /// Removes white space at both ends.
    TQString &Trim();

    /// Sets `token` to the text from index `start` up to the next separator and gives the index for
    /// the following call, or -1 if this was the last token. Each character of `separators` is one.
    /// With `skip` not 0 a run of separators behind the token counts as one; separators at `start`
    /// itself always give an empty token. A `start` beyond the end gives an empty last token, a
    /// negative one counts as 0. Takes time in proportion to the token, not to the rest of the
    /// text.
    int GetToken(TQString &token, int start, TQString const &separators, int skip) const;

    /// True if the whole of `text` fits `pattern`: `?` is any one character, `*` any run of
    /// characters, everything else stands for itself, byte by byte. Null counts as empty. Takes
    /// time in proportion to the product of the lengths at worst.
    static bool Match(char const *pattern, char const *text);

    /// The step of Match() for one `*`, on which `pattern` stands: moves `pattern` behind it and
    /// `text` to the first place from which the rest of the pattern fits the rest of the text. At
    /// the end of the pattern that is the end of the text. The result is false, with `text` at its
    /// end, if there is no such place. Neither may be null.
    static bool Scan(char *&pattern, char *&text);

    /// True if this whole text fits `pattern`; to find a part put a `*` on either side.
    bool Search(char const *pattern) const { return Match(pattern, *this); }

    /// Replaces every `from` by `to` and gives the number of replacements. Replacing by NUL cuts
    /// the text at the first one.
    int ReplaceChar(char from, char to);

    /// The number of occurrences of `c`.
    int CountChar(char c) const;

    /// Removes every character that occurs in `chars`.
    void RemoveChars(TQString const &chars);

    /// Replaces every carriage return by a comma and every line feed by a blank.
    void ConvertCtrlEnterToCSV();

    /// Replaces every comma that a blank follows by carriage return and line feed in their place.
    void ConvertCSVToCtrlEnter();

    /// Turns the seven German letters of the DOS code page into those of Windows-1252.
    void ConvertDosToWindows();

    /// Write this text to `file`, without terminator or line end, after replacing it by `text` or
    /// by the string resource `id` in the second and third form. A null file skips the writing
    /// only. What CFile::Write throws passes through.
    void Write(CFile *file) const;
    void Write(CFile *file, TQString const &text);
    void Write(CFile *file, unsigned int id);

    /// Replaces this text by `value` as a mantissa with two places, "E" and the decimal exponent:
    /// 1234.5 gives 1.23E3. The mantissa isn't normalised after rounding: 999.999 gives 10.00E2. A
    /// value that isn't finite gives infE0, -infE0 or nanE0, and one below 1E-323, whose power
    /// of ten is 0, infE-324. Always 1.
    int DoubleFormat(double value);

    /// Replaces this text by the string resource "Ja" for a value other than 0, else by "Nein".
    /// Always 1.
    int BoolFormat(int value);

    /// The first number anywhere in the text, 0.0 if there is none. The decimal point is "."
    /// whatever the locale. Whole part and decimals are held in 32 bits each: beyond 2147483647, or
    /// beyond nine decimals, they wrap.
    double GetDouble() const;

    /// Read the number at the beginning of the text as sscanf does with "%lf" or "%d", in the C
    /// locale in force. The result is 0 if the text begins with no number. It is 1 otherwise, for
    /// an empty or blank text too; `value` is changed only if there was a number.
    int Scanf(double &value) const;
    int Scanf(int &value) const;

    /// Removes the digits at the end of the text.
    void RemoveLastDigits();

  private:
    TQLIB_INTERNAL static double ToDouble(char const *text, unsigned long length);
    TQLIB_INTERNAL static double __ToDouble(char const *text, unsigned long length,
                                            unsigned long &pos);
};
