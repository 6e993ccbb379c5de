#pragma once

// What the readers of lines share in reading the fields of their line.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "tqlib/foundation/ScanNumber.h"
#include "tqlib/records/LineBuffer.h"
#include "tqplatform/framework/CString.h"

namespace tqlib::detail {

static_assert(LineBuffer::padding >= BlockwiseDigits::padding);

/// Characters of the longest number field; a longer one is cut there.
inline constexpr std::ptrdiff_t longestNumber = 199;

/// Room for a number field and its NUL.
inline constexpr std::size_t numberFieldSize = longestNumber + 1;

/// The type that sscanf converts to: the short types take the low bits of an int.
template <typename Number>
struct Converted {
    using Type = Number;
};
template <>
struct Converted<short> {
    using Type = int;
};
template <>
struct Converted<unsigned short> {
    using Type = unsigned int;
};

/// Replace a text by [`first`, `end`).
inline void assignText(CString &target, char const *first, char const *end) {
    auto const length = static_cast<int>(end - first);
    std::memcpy(target.GetBufferSetLength(length), first, static_cast<std::size_t>(length));
}
inline void assignText(char *target, char const *first, char const *end) {
    auto const length = static_cast<std::size_t>(end - first);
    std::memcpy(target, first, length);
    target[length] = '\0';
}

/// Puts the number field [`first`, `end`) into `field`, cut to its room.
inline void gatherNumber(char *field, char const *first, char const *end) {
    assignText(field, first, first + std::min(end - first, longestNumber));
}

// Two forms of numbers that can be read where they stand on the line, with the result that the
// gathered field would give. Both give the place of the character that ends the field, or null if
// the number has another form. `separates` tells of a character whether it ends fields; none that
// does can be part of a number, but for the decimal point of a locale.

/// The decimal point for reading numbers of a type in place, or NUL if that can't be done.
template <typename Value, typename Separates>
char pointInPlace(Separates separates) {
    if constexpr (std::is_floating_point_v<Value>) {
        char const point = decimalPoint();
        return separates(point) ? '\0' : point;
    }
    return '.';  // whole numbers don't ask
}

/// A short number, and nothing else in the field. Not for floats.
struct ShortNumber {
    template <typename Separates, typename Value>
    [[gnu::always_inline]] static char *read(char *field, char point, Separates separates,
                                             Value &value) {
        auto const ends = [=](char const *text) { return separates(*text) || *text == '\0'; };
        char const *const end = readShortNumber(field, point, ends, value);
        return end == nullptr ? nullptr : field + (end - field);
    }
};

/// A decimal number with white space ahead of it and anything behind it.
struct PlainNumber {
    template <typename Separates, typename Value>
    [[gnu::always_inline]] static char *read(char *field, char point, Separates separates,
                                             Value &value) {
        char *start = field;
        while (isWhiteSpace(*start) && !separates(*start))
            ++start;
        char const *const behind = readPlainNumber<BlockwiseDigits>(start, point, value);
        if (behind == nullptr || behind - field > longestNumber) return nullptr;
        char *end = field + (behind - field);
        while (!separates(*end) && *end != '\0')
            ++end;
        return end;
    }
};

/// The number reads of a reader of lines, which has these members:
///
///     template <typename Form, typename Value>
///     bool readInPlace(Value &value);      // takes a number of a form above, or nothing
///     char *getNumber(char *field);        // gathers any field; null if there is none
///     class Failure;
class NumberReading {
  public:
    /// Reads the next field of `reader` into `target`, or throws the reader's Failure.
    template <typename Reader, typename Number>
    static Reader &read(Reader &reader, Number *target) {
        if constexpr (!std::is_same_v<Number, float>) {
            typename Converted<Number>::Type value{};
            if (reader.template readInPlace<ShortNumber>(value)) [[likely]] {
                *target = static_cast<Number>(value);
                return reader;
            }
        }
        return readAny(reader, target);
    }

  private:
    template <typename Reader, typename Number>
    [[gnu::noinline]] static Reader &readAny(Reader &reader, Number *target) {
        typename Converted<Number>::Type value{};
        if (!reader.template readInPlace<PlainNumber>(value)) {
            char field[numberFieldSize];
            if (reader.getNumber(field) == nullptr || scanNumber(field, value) != 1)
                throw typename Reader::Failure();
        }
        *target = static_cast<Number>(value);
        return reader;
    }
};

}  // namespace tqlib::detail
