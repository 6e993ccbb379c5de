#pragma once

// The framework's string: a value of single-byte characters, Windows-1252 where a byte means a
// letter, with a known length and a NUL behind it.

#include <algorithm>
#include <compare>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "tqplatform/runtime/CopyText.h"
#include "tqplatform/runtime/Export.h"

/// A text. Indices and lengths are in bytes; a length is at most 2147483646, and a request beyond
/// that or beyond the memory throws std::bad_alloc and leaves the text as it was; Format() has a
/// rule of its own. Texts of up to 22 characters need no memory of their own. A null `char const *`
/// counts as the empty text.
///
///     CString name = "co2";
///     name += ".csv";
///     name.Find("csv");   // 4
class TQPLATFORM_API CString {
  public:
    CString() noexcept : text_(small_), length_(0), capacity_(smallCapacity) { small_[0] = '\0'; }
    CString(char const *text) : CString() { assign(viewOf(text)); }
    CString(CString const &other) : CString() { assign(other.text()); }
    CString(CString &&other) noexcept : CString() { take(other); }

    /// `count` times the character `c`; a negative count is 0.
    CString(char c, int count);

    ~CString() {
        if (text_ != small_) release();
    }

    /// Replace the text by another one, which may be a part of this text. A text that is moved from
    /// is empty afterwards.
    CString &operator=(CString const &other) {
        if (this != &other) assign(other.text());
        return *this;
    }
    CString &operator=(CString &&other) noexcept {
        if (this != &other) take(other);
        return *this;
    }
    CString &operator=(char const *text) {
        assign(viewOf(text));
        return *this;
    }
    void assign(std::string_view text) {
        if (text.size() > capacity_) reserve(text.size());
        tqplatform::copyText(text_, text.data(), text.size());
        length_ = text.size();
        text_[length_] = '\0';
    }

    /// Append to the text; what is appended may be a part of it.
    CString &operator+=(char c) {
        if (length_ == capacity_) grow(1);
        char *const end = text_ + length_++;  // kept: writing a char may change any member
        end[0] = c;
        end[1] = '\0';
        return *this;
    }
    CString &operator+=(CString const &text) {
        append(text.text());
        return *this;
    }
    CString &operator+=(char const *text) {
        append(viewOf(text));
        return *this;
    }

    /// The text, never null; valid until the string changes.
    operator char const *() const { return text_; }

    /// The text as a view, NUL characters inside it included; valid until the string changes.
    std::string_view text() const { return {text_, length_}; }

    /// The number of bytes; whether there are none.
    int GetLength() const { return static_cast<int>(length_); }
    bool IsEmpty() const { return length_ == 0; }

    /// The character at `index`; NUL for an index outside the text.
    template <std::integral Index>
    char operator[](Index index) const {
        auto const place = static_cast<std::uint64_t>(index);  // huge for a negative index
        return place < length_ ? text_[static_cast<std::size_t>(place)] : '\0';
    }

    /// Makes the text empty and gives its memory back.
    void Empty();

    /// A writable buffer of at least `room` characters and a NUL that holds the text, valid until
    /// ReleaseBuffer(). The length stays; a negative room counts as 0.
    char *GetBuffer(int room) {
        reserve(notNegative(room));
        return text_;
    }

    /// The same with the length set to `length`; characters that this adds are undefined.
    char *GetBufferSetLength(int length);

    /// Ends the use of the buffer and sets the length: to the place of the first NUL for -1, and
    /// otherwise to `length`, which is cut to the room of the buffer.
    void ReleaseBuffer(int length = -1) {
        setLength(length < 0 ? strnlen(text_, capacity_)
                             : std::min(notNegative(length), capacity_));
    }

    /// The first or last `count` characters: all of them if there are fewer, none for a negative
    /// count.
    CString Left(int count) const;
    CString Right(int count) const;

    /// The characters from `first` on, to the end or at most `count` of them. A negative `first` or
    /// `count` counts as 0; a `first` beyond the end gives an empty text.
    CString Mid(int first) const { return Mid(first, GetLength()); }
    CString Mid(int first, int count) const;

    /// The first index of `text`, or -1; the empty text is found at 0.
    int Find(char const *text) const;

    /// The first index of any character of `set`, or -1.
    int FindOneOf(char const *set) const;

    /// The last index of `c`, or -1.
    int ReverseFind(char c) const;

    /// Remove white space (blank, tab, line feed, vertical tab, form feed, carriage return) at the
    /// left or right end.
    void TrimLeft();
    void TrimRight();

    /// Turns all letters of Windows-1252 into small ones.
    void MakeLower();

    /// Replaces the text by what printf makes of `format` and the arguments, which may point into
    /// this text. A format that printf refuses, such as one with a width beyond what printf counts,
    /// gives the empty text.
    void Format(char const *format, ...) __attribute__((format(printf, 2, 3)));

    /// Replaces the text by the string resource `id` of the module chain, or by nothing if there is
    /// none. The result is 1 or 0 accordingly.
    int LoadStringA(unsigned int id);

    /// One text behind the other.
    friend CString operator+(CString const &left, CString const &right) {
        return concatenate(left.text(), right.text());
    }
    friend CString operator+(CString const &left, char const *right) {
        return concatenate(left.text(), viewOf(right));
    }
    friend CString operator+(char const *left, CString const &right) {
        return concatenate(viewOf(left), right.text());
    }
    friend CString operator+(CString const &left, char right) {
        return concatenate(left.text(), {&right, 1});
    }
    friend CString operator+(char left, CString const &right) {
        return concatenate({&left, 1}, right.text());
    }
    friend CString operator+(CString &&left, CString const &right) {
        left.append(right.text());
        return static_cast<CString &&>(left);
    }
    friend CString operator+(CString &&left, char const *right) {
        left.append(viewOf(right));
        return static_cast<CString &&>(left);
    }
    friend CString operator+(CString &&left, char right) {
        left += right;
        return static_cast<CString &&>(left);
    }

    /// Comparison byte by byte.
    friend bool operator==(CString const &left, CString const &right) {
        return left.text() == right.text();
    }
    friend bool operator==(CString const &left, char const *right) {
        return left.text() == viewOf(right);
    }
    friend std::strong_ordering operator<=>(CString const &left, CString const &right) {
        return left.text() <=> right.text();
    }
    friend std::strong_ordering operator<=>(CString const &left, char const *right) {
        return left.text() <=> viewOf(right);
    }

    /// Writes the text; reads one word of any length.
    friend std::ostream &operator<<(std::ostream &stream, CString const &text) {
        return stream << text.text();
    }
    friend std::istream &operator>>(std::istream &stream, CString &text) {
        std::string word;
        if (stream >> word) text.assign(word);
        return stream;
    }

  protected:
    /// The most characters that assignShort() takes.
    static constexpr std::size_t shortSize = 16;

    /// Replaces the text by the `length` characters at `text`, at most shortSize of them, where
    /// shortSize characters can be read. They may be a part of this text.
    void assignShort(char const *text, std::size_t length) {
        static_assert(shortSize <= smallCapacity);
        std::memmove(text_, text, shortSize);
        length_ = length;
        text_[length] = '\0';
    }

    /// Appends `text`, which may be a part of this text.
    void append(std::string_view text);

  private:
    static constexpr std::size_t smallCapacity = 22;

    static std::string_view viewOf(char const *text) {
        return text == nullptr ? std::string_view() : std::string_view(text);
    }
    static CString concatenate(std::string_view left, std::string_view right);

    void grow(std::size_t more);
    static std::size_t notNegative(int count) {
        return static_cast<std::size_t>(std::max(count, 0));
    }

    // Makes room for `capacity` characters, keeping the text.
    void reserve(std::size_t capacity) {
        if (capacity > capacity_) enlarge(capacity);
    }
    void setLength(std::size_t length) {
        length_ = length;
        text_[length] = '\0';
    }

    void enlarge(std::size_t capacity);
    void take(CString &other) noexcept;
    void release();

    char *text_;            ///< small_ or a block from malloc
    std::size_t length_;    ///< characters, the NUL not counted
    std::size_t capacity_;  ///< room for characters, the NUL not counted
    char small_[smallCapacity + 1];
};
