#pragma once

#include <algorithm>
#include <clocale>
#include <string>

/// `text` with every point replaced by the decimal point of the locale in force.
inline std::string localized(std::string text) {
    std::ranges::replace(text, '.', *std::localeconv()->decimal_point);
    return text;
}
