#pragma once

// Letters of the code page Windows-1252, in which the library's texts are held.

#include <cstddef>
#include <string>
#include <string_view>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// The lower-case letter of `c`, or `c` itself where it has none.
TQPLATFORM_API char toLower1252(char c);

/// The first byte whose Unicode character has another number, and the characters of the 32 bytes
/// from there on.
inline constexpr unsigned int specialBegin = 0x80;
inline constexpr char16_t specials[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 0x80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 0x88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 0x90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 0x98
};

/// The Unicode character of `c`. The five bytes without one stand for controls of their number.
constexpr char16_t toUnicode(char c) {
    unsigned int const byte = static_cast<unsigned char>(c);
    unsigned int const place = byte - specialBegin;
    return place < 32 ? specials[place] : static_cast<char16_t>(byte);
}

/// The letter of a Unicode character, or NUL where the code page has none.
TQPLATFORM_API char fromUnicode(char32_t character);

/// A character in UTF-8.
struct Utf8Character {
    std::size_t bytes;   ///< that it takes; 0 if the text ends inside of it
    char32_t character;  ///< NUL for bytes that are none
};

/// The character at the front of a text, which isn't empty.
TQPLATFORM_API Utf8Character readUtf8(std::string_view text);

/// A text in UTF-8 as one of this code page, with `?` for characters it hasn't. A text that isn't
/// UTF-8 stays as it is.
TQPLATFORM_API std::string fromUtf8(std::string_view text);

/// Appends a character in UTF-8.
TQPLATFORM_API void appendUtf8(std::string &text, char16_t character);

/// A text in UTF-8.
TQPLATFORM_API std::string toUtf8(std::string_view text);

}  // namespace tqplatform

/// 1 for a letter of the code page, umlauts and other accented ones included, else 0.
TQPLATFORM_API int IsCharAlphaA(char c);
