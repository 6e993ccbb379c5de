#pragma once

// Holds what the library gives against what the model says. A difference ends the run with both, so
// that libFuzzer keeps the input.

#include <concepts>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>
#include <type_traits>

template <std::integral Whole>
std::string shown(Whole value) {
    return std::to_string(value);
}

template <std::floating_point Real>
std::string shown(Real value) {
    char text[80];
    std::snprintf(text, sizeof text, "%.17g (%a)", static_cast<double>(value),
                  static_cast<double>(value));
    return text;
}

inline std::string shown(std::string_view text) {
    std::string result = "\"";
    for (char const c : text) {
        char code[8];
        bool const plain = c >= ' ' && c <= '~' && c != '"' && c != '\\';
        std::snprintf(code, sizeof code, plain ? "%c" : "\\x%02X", static_cast<unsigned char>(c));
        result += code;
    }
    return result + '"';
}

[[noreturn]] inline void disagree(char const *what, std::string const &library,
                                  std::string const &model) {
    std::cerr << what << "\n  library: " << library << "\n  model:   " << model << '\n';
    std::abort();
}

/// Floating-point numbers are the same if their bits are.
template <typename Value>
requires std::is_arithmetic_v<Value>
void expectSame(char const *what, Value library, std::type_identity_t<Value> model) {
    if (std::memcmp(&library, &model, sizeof library) != 0)
        disagree(what, shown(library), shown(model));
}

inline void expectSame(char const *what, std::string_view library, std::string_view model) {
    if (library != model) disagree(what, shown(library), shown(model));
}
