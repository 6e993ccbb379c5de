#pragma once

#include <clocale>

/// Puts a locale with a decimal comma in force if that is wanted and the system has one; otherwise,
/// and in the end, the "C" locale is in force.
class NumberLocale {
  public:
    explicit NumberLocale(bool comma) {
        if (comma) std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    }
    NumberLocale(NumberLocale const &) = delete;
    NumberLocale &operator=(NumberLocale const &) = delete;
    ~NumberLocale() { std::setlocale(LC_NUMERIC, "C"); }
};
