#pragma once

#include <bit>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tqlib::detail {

/// The capital of `c` in the locale in force; toupper is asked only for what it may change.
inline char toCapital(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return byte < 'a' ? c : static_cast<char>(std::toupper(byte));
}

inline constexpr std::size_t keyLength = sizeof(std::uint64_t);

/// The key that `text`, in capitals and of at most eight characters, has as a token.
constexpr std::uint64_t keyOf(std::string_view text) {
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        key |= std::uint64_t{static_cast<unsigned char>(text[i])} << 8 * i;
    return key;
}

/// True if a byte of `key` is 0x60 or more: a small letter is among these.
inline bool mayChangeInCapitals(std::uint64_t key) {
    std::uint64_t const bits5And6 = key & key << 1 & 0x4040404040404040;
    return (bits5And6 | (key & 0x8080808080808080)) != 0;
}

/// The key of `text` in capitals.
std::uint64_t keyInCapitals(std::string_view text);

/// A token of a calculator's text, and its first eight characters packed into a number, the first
/// one lowest.
struct TQHpToken {
    std::string_view text;
    std::uint64_t key;

    /// Turns the key into that of the token in capitals; false if it is the same.
    bool capitalise() {
        if (!mayChangeInCapitals(key)) return false;
        key = keyInCapitals(text);
        return true;
    }
};

template <typename Word>
std::uint64_t loadWord(char const *text) {
    static_assert(std::endian::native == std::endian::little);
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// The first eight characters of `text`, which isn't empty, as they are. Shorter texts are put
/// together from two loads that overlap.
inline std::uint64_t rawKeyOf(std::string_view text) {
    char const *const first = text.data();
    std::size_t const length = text.size();
    if (length == 1) return loadWord<std::uint8_t>(first);
    if (length >= keyLength) return loadWord<std::uint64_t>(first);
    if (length >= 4)
        return loadWord<std::uint32_t>(first) | loadWord<std::uint32_t>(first + length - 4)
                                                    << 8 * (length - 4);
    return loadWord<std::uint16_t>(first) | loadWord<std::uint16_t>(first + length - 2)
                                                << 8 * (length - 2);
}

/// Takes the first token off `rest`, as it stands there; an empty one at the end of the text. Only
/// the blank separates.
inline TQHpToken takeToken(char const *&rest) {
    while (*rest == ' ')
        ++rest;
    char const *const first = rest;
    while ((*rest & ~' ') != 0)  // neither a blank nor the NUL
        ++rest;
    std::string_view const text(first, static_cast<std::size_t>(rest - first));
    return {text, text.empty() ? 0 : rawKeyOf(text)};
}

}  // namespace tqlib::detail
