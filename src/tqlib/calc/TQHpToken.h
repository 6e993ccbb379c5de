#pragma once

#include <cctype>
#include <cstdint>
#include <string_view>

namespace tqlib::detail {

/// The capital of `c` in the locale in force; toupper is asked only for what it may change.
inline char toCapital(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return byte < 'a' ? c : static_cast<char>(std::toupper(byte));
}

/// A token of a calculator's text, and its first eight characters in capitals packed into a number,
/// the first one lowest.
struct TQHpToken {
    std::string_view text;
    std::uint64_t key;
};

inline constexpr std::size_t keyLength = sizeof(std::uint64_t);

/// The key that `text`, in capitals and of at most eight characters, has as a token.
constexpr std::uint64_t keyOf(std::string_view text) {
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        key |= std::uint64_t{static_cast<unsigned char>(text[i])} << 8 * i;
    return key;
}

/// Takes the first token off `rest`; an empty one at the end of the text. Only the blank separates.
inline TQHpToken takeToken(char const *&rest) {
    while (*rest == ' ')
        ++rest;
    char const *const first = rest;
    std::uint64_t key = 0;
    for (unsigned shift = 0; *rest != ' ' && *rest != '\0'; ++rest, shift += 8)
        if (shift < 8 * keyLength)
            key |= std::uint64_t{static_cast<unsigned char>(toCapital(*rest))} << shift;
    return {{first, static_cast<std::size_t>(rest - first)}, key};
}

}  // namespace tqlib::detail
