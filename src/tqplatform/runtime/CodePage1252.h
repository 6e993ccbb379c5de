#pragma once

// Letters of the code page Windows-1252, in which the library's texts are held.

#include <string>
#include <string_view>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// The lower-case letter of `c`, or `c` itself where it has none.
TQPLATFORM_API char toLower1252(char c);

/// The Unicode character of `c`. The five bytes without one stand for controls of their number.
TQPLATFORM_API char16_t toUnicode(char c);

/// The letter of a Unicode character, or NUL where the code page has none.
TQPLATFORM_API char fromUnicode(char32_t character);

/// A text in UTF-8.
TQPLATFORM_API std::string toUtf8(std::string_view text);

}  // namespace tqplatform
