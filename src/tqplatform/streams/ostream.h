#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "tqplatform/streams/ios.h"

namespace classic {

/// A stream to write to. On a failed stream every operation does nothing but keep it failed.
class TQPLATFORM_API ostream : virtual public ios {
  public:
    /// Writes to `buffer`, which is shared with the caller.
    explicit ostream(std::shared_ptr<streambuf> buffer) { init(std::move(buffer)); }

    /// Writes one character; sets the bad bit if it isn't taken.
    ostream &put(char c) { return write(&c, 1); }

    /// Write `count` characters, or a whole text; set the bad bit if not all are taken. A negative
    /// count is 0, and then the text may be null.
    ostream &write(char const *text, int count) {
        return write({text, static_cast<std::size_t>(count < 0 ? 0 : count)});
    }
    ostream &write(std::string_view text) {
        if (!fail() &&
            (rdbuf() == nullptr || rdbuf()->sputn(text.data(), text.size()) != text.size()))
            state_ |= badbit;
        return *this;
    }

    /// Hands everything to the file; sets the bad bit if it can't take all of it.
    ostream &flush();

    /// Moves to the absolute offset `position` of the file; sets the bad bit if that can't be.
    ostream &seekp(streampos position);

    /// The offset in the file of the next character, or -1 on a failed stream.
    streampos tellp();

    /// Write a text up to its NUL (null writes nothing), a character, a whole number in decimals, a
    /// floating-point number as "%g".
    ostream &operator<<(char const *text);
    ostream &operator<<(char c) { return put(c); }
    ostream &operator<<(unsigned char c) { return put(static_cast<char>(c)); }
    ostream &operator<<(int value) { return *this << static_cast<long>(value); }
    ostream &operator<<(unsigned int value) { return *this << static_cast<unsigned long>(value); }
    ostream &operator<<(long value) { return *this << static_cast<long long>(value); }
    ostream &operator<<(unsigned long value) {
        return *this << static_cast<unsigned long long>(value);
    }
    ostream &operator<<(long long value);
    ostream &operator<<(unsigned long long value);
    ostream &operator<<(double value);

    /// Applies a manipulator such as endl.
    ostream &operator<<(ostream &(*manipulator)(ostream &)) { return manipulator(*this); }

  protected:
    ostream() = default;

    /// Room for `count` characters in the buffer's block, for text to be formed where it is going
    /// to be written, or null if it can't be had at once or the stream has failed. taken() of the
    /// buffer then tells how many of them count as written.
    char *room(std::size_t count) {
        return fail() || rdbuf() == nullptr ? nullptr : rdbuf()->room(count);
    }
};

/// Writes a newline and flushes.
TQPLATFORM_API ostream &endl(ostream &stream);

}  // namespace classic
