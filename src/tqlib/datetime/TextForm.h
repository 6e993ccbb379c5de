#pragma once

// What the texts of dates and times have in common: numbers in columns.

#include <array>
#include <cstddef>
#include <cstring>

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

/// The two digits of each number below 100.
inline constexpr auto digitPairs = [] {
    std::array<std::array<char, 2>, 100> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)};
    return pairs;
}();

/// Writes the digits of a number below 100.
inline char *putPair(char *target, unsigned value) {
    std::memcpy(target, &digitPairs[value], 2);
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
        unsigned i = width % 2;
        unsigned const first = i == 0 ? 0 : digitAt(next_);
        bool digits = first < 10;
        unsigned value = first;
        for (; digits && i < width; i += 2) {
            unsigned const pair = pairAt(next_ + i);
            digits = pair < 100;
            value = 100 * value + pair;
        }
        if (!digits) [[unlikely]] {
            Taken const taken = takeAny(next_, width);
            next_ = taken.behind;
            return taken.value;
        }
        next_ += width;
        return static_cast<int>(value);
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

    // The digit at `text`, or more than 9 if there is none.
    static unsigned digitAt(char const *text) { return static_cast<unsigned>(*text - '0'); }

    // The number of the two digits at `text`, or more than 99 if there aren't two. What stands
    // behind a NUL isn't read.
    static unsigned pairAt(char const *text) {
        unsigned const tens = digitAt(text);
        unsigned const ones = tens > 9 ? tens : digitAt(text + 1);
        return ones > 9 ? 100 : 10 * tens + ones;
    }

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
