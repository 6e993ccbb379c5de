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
inline constexpr std::size_t textFormRoom = 48;

/// Writes `value` to `target` as printf does with "%02d" and its like: at least `width` characters,
/// filled at the left with `fill`, which is a zero or a blank. No NUL is added. The result is the
/// place behind the number.
char *putNumber(char *target, int value, unsigned width, char fill);

/// Reads a text column by column. Beyond the end of the text every column is empty.
class Columns {
  public:
    /// `text` must outlive the columns; null counts as empty.
    explicit Columns(char const *text) : next_(text == nullptr ? "" : text) {}

    /// Takes `width` columns. The result is what atoi makes of them.
    int take(unsigned width);

    /// Passes over one column.
    void skip() {
        if (*next_ != '\0') ++next_;
    }

  private:
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
