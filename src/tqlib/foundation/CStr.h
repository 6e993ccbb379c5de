#pragma once

// A string that shares its text with its copies until one of them is changed, from pooled memory
// and with a length of at most 65530 characters.
//
//     CStr line("Messwert ");
//     CStr copy = line;             // one text, counted twice
//     copy.Append(21.5, 1);         // copy has a text of its own now: "Messwert 21.5"
//     line.Format("%s: %!", "Zeile", &copy);
//
// A length or a capacity beyond the limit, and an index outside the text, end the process: see
// CStrFatal(). Memory that can't be had throws std::bad_alloc and leaves every string as it was.
//
// Strings that share a text may be used by different threads; one string is for one thread at a
// time.

#include <cstdarg>
#include <cstddef>
#include <string_view>

#include "tqlib/foundation/CStrRecord.h"
#include "tqplatform/framework/CString.h"

class CWnd;

/// Shows "CStr fatal" with a number to the user and aborts the process. The numbers: 2 for an index
/// outside the text, 3 and 4 for the directives %n and %S, 5 for a length beyond the limit.
[[noreturn]] void CStrFatal(int code);

/// A pooled string. Positions, lengths and counts are in bytes. A null `char const *` counts as the
/// empty text, and a text that an operation takes may be a part of the string's own.
class CStr {
  public:
    /// The most characters of a string.
    static constexpr unsigned int mostCharacters = 65530;

    /// The empty text, without memory of its own.
    CStr() noexcept : record_(&tqlib::detail::nullRecord) {}

    /// The empty text with room for `capacity` characters.
    explicit CStr(unsigned short capacity);

    /// A copy of a text, with room for at least `capacity` characters.
    CStr(char const *text, unsigned short capacity = 0);
    CStr(CString const &text, unsigned short capacity = 0);

    /// Share the text of `other`.
    CStr(CStr const &other) noexcept : record_(tqlib::detail::share(other.record_)) {}
    CStr &operator=(CStr const &other) noexcept;

    ~CStr() { tqlib::detail::release(record_); }

    /// Replace the text by a copy, in the present room if that is enough and isn't shared.
    CStr &operator=(char const *text);
    CStr &operator=(CString const &text);

    /// The text, valid until the string changes.
    operator char const *() const { return record_->text; }

    /// The number of characters; the number there is room for.
    unsigned short GetLength() const { return record_->length; }
    unsigned short GetCapacity() const { return record_->capacity; }

    /// Gives the string a record of its own with room for at least `length` characters.
    void Reserve(unsigned short length);

    /// Moves the text to a smaller block if there is room for more than `slack` further characters.
    void Compact(unsigned short slack);

    /// Makes the text empty and keeps the room for it.
    void Empty();

    /// Makes the text empty and gives its memory back.
    void Clear();

    /// Append a character, or a text.
    CStr &operator+=(char c);
    CStr &operator+=(char const *text);
    CStr &operator+=(CStr const &text);

    /// Append `count` characters from `text`, or from `text` + `offset`, whatever they are.
    void Append(char const *text, unsigned short count);
    void Append(char const *text, unsigned short offset, unsigned short count);

    /// Appends a number as decimals.
    void Append(int value);

    /// Appends a number with `decimals` places, 48 at most, by the decimal point of the locale in
    /// force. The number is cut to 255 characters.
    void Append(double value, unsigned int decimals);

    /// Puts a text in front.
    void Prepend(char const *text);

    /// The last character; fatal for an empty string.
    char Last() const;

    /// Replace `out` by the `count` characters from `start` on, the first or the last `count` ones,
    /// or as many as there are.
    void Mid(unsigned short start, unsigned short count, CStr &out) const;
    void Left(unsigned short count, CStr &out) const;
    void Right(unsigned short count, CStr &out) const;

    /// Cuts the text to `length` characters; one that is shorter stays.
    void Truncate(unsigned short length);

    /// Remove `count` characters at the front, or at the end; the text becomes empty if it hasn't
    /// more than that.
    void DeleteLeft(unsigned short count);
    void DeleteRight(unsigned short count);

    /// Removes `count` characters at `start`, or as many as there are. A `start` outside the text
    /// makes it empty.
    void Delete(unsigned short start, unsigned short count);

    /// The index of the first `c` from `start` on, or -1. Fatal for a `start` outside the text, but
    /// for 0.
    int Find(char c, unsigned short start = 0) const;

    /// The index of the last `c` before `start`, or in the whole text for `wholeText`, or -1. Fatal
    /// for any other `start` outside the text.
    static constexpr unsigned short wholeText = 65535;
    int ReverseFind(char c, unsigned short start = wholeText) const;

    /// -1, 0 or 1, by bytes or by bytes with the capitals A to Z as small letters, up to a NUL.
    int Compare(char const *text) const;
    int CompareNoCase(char const *text) const;

    /// 1 if the texts are the same, else 0.
    int operator==(CStr const &other) const;
    int operator==(char const *text) const;

    /// One text behind the other.
    CStr operator+(CStr const &text) const;
    CStr operator+(char const *text) const;

    /// Replaces the text by the string resource `id`, cut to 16383 characters. The result is 1, or
    /// 0 with the text unchanged if there is none.
    int LoadString(unsigned int id);

    /// Replaces the text by that of a window; null gives the empty text.
    void GetWindowText(CWnd *window);

    /// Replaces the text by what sprintf makes of `format` and the arguments, but that
    ///  - %s takes no flags and no width,
    ///  - %! appends the CStr whose address is the argument,
    ///  - a width or precision isn't taken from an argument: an asterisk means nothing,
    ///  - a number is cut to 319 characters, a directive to 63, and widths and precisions above
    ///    65535 count as that,
    ///  - %n and %S are fatal, and any other character stands for itself, as in %%.
    void Format(char const *format, ...);

    /// The same with the string resource `id` as the format, cut to 511 characters; without that
    /// the text is empty.
    void Format(unsigned int id, ...);

  private:
    struct Adopted {
        CStrRecord *record;
    };
    explicit CStr(Adopted adopted) noexcept : record_(adopted.record) {}

    void adopt(CStrRecord *record) noexcept;
    void assign(std::string_view text);
    void append(std::string_view text);
    void refill(std::string_view text);
    void cut(std::size_t length);
    void makeRoom(std::size_t length);
    CStr joined(std::string_view text) const;
    bool isPrivate() const { return tqlib::detail::isPrivate(*record_); }
    bool hasRoomFor(std::size_t length) const { return length <= record_->capacity && isPrivate(); }
    std::string_view view() const { return {record_->text, record_->length}; }
    void format(char const *format, std::va_list arguments);

    CStrRecord *record_;
};
