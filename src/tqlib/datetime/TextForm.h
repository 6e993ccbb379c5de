#pragma once

// What the texts of dates and times have in common: numbers in columns.

#include <cstddef>

#include "tqplatform/streams/istream.h"

namespace tqlib::detail {

/// Where a text form is written or read: some are for TQString alone.
enum class FormUse : unsigned char { none, everywhere, stringsOnly };

inline bool isFor(FormUse use, bool isString) {
    return use == FormUse::everywhere || (use == FormUse::stringsOnly && isString);
}

/// Room for a text of four numbers of any size with separators, its NUL included.
inline constexpr int textFormRoom = 48;

/// putNumber() for any number.
char *putAnyNumber(char *target, int value, unsigned width, char fill);

/// Writes the digits of a number below 100.
inline char *putPair(char *target, unsigned value) {
    unsigned const tens = value * 103 >> 10;
    target[0] = static_cast<char>('0' + tens);
    target[1] = static_cast<char>('0' + (value - 10 * tens));
    return target + 2;
}

/// Writes `value` to `target` as printf does with "%02d" and its like: at least `width` characters,
/// filled at the left with `fill`, which is a zero or a blank. No NUL is added. The result is the
/// place behind the number.
inline char *putNumber(char *target, int value, unsigned width, char fill) {
    auto const number = static_cast<unsigned>(value);
    if (width == 2 && number < 100 && (fill == '0' || number >= 10)) return putPair(target, number);
    if (width == 4 && number < 10000 && (fill == '0' || number >= 1000))
        return putPair(putPair(target, number / 100), number % 100);
    return putAnyNumber(target, value, width, fill);
}

/// Reads a text column by column. Beyond the end of the text every column is empty.
class Columns {
  public:
    /// `text` must outlive the columns; null counts as empty.
    explicit Columns(char const *text) : next_(text == nullptr ? "" : text) {}

    /// Takes `width` columns, ten at most. The result is what atoi makes of them.
    int take(unsigned width) {
        int value = 0;
        for (unsigned i = 0; i < width; ++i) {
            auto const digit = static_cast<unsigned>(next_[i] - '0');
            if (digit > 9) [[unlikely]] {
                Taken const taken = takeAny(next_, width);
                next_ = taken.behind;
                return taken.value;
            }
            value = value * 10 + static_cast<int>(digit);
        }
        next_ += width;
        return value;
    }

    /// Passes over one column.
    void skip() {
        if (*next_ != '\0') ++next_;
    }

  private:
    struct Taken {
        char const *behind;
        int value;
    };

    // Gets and gives the place by value, so that it can stay in a register.
    static Taken takeAny(char const *next, unsigned width);

    char const *next_;
};

/// Reads one word of less than `room` characters from `stream` and assigns it to `value`, if there
/// is one.
template <int room, typename Value>
classic::istream &readWord(classic::istream &stream, Value &value) {
    char word[room];
    stream.width(room);
    stream >> word;
    if (word[0] != '\0') value = static_cast<char const *>(word);
    return stream;
}

}  // namespace tqlib::detail
