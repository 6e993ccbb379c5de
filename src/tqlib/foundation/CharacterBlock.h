#pragma once

// Eight characters of a number text at a time, in the bytes of a 64-bit word.

#include <bit>
#include <cstdint>
#include <cstring>

namespace tqlib::detail {

/// Eight characters as a word, the first one lowest.
inline std::uint64_t loadWord(char const *text) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}
inline void storeWord(char *text, std::uint64_t word) {
    std::memcpy(text, &word, sizeof word);
}

/// Joins eight digits, the first one lowest: neighbours to pairs, pairs to fours, fours to eight.
inline std::uint64_t joinDigits(std::uint64_t digits) {
    digits = (digits * 10 + (digits >> 8)) & 0x00FF00FF00FF00FF;
    digits = (digits * 100 + (digits >> 16)) & 0x0000FFFF0000FFFF;
    return (digits * 10000 + (digits >> 32)) & 0xFFFFFFFF;
}

/// Eight characters of a text, the first one lowest, with the digits as 0 to 9.
struct CharacterBlock {
    static constexpr std::uint64_t first = 0xFF;

    std::uint64_t characters;
    std::uint64_t others;  ///< bit 7 of each character that is no digit

    /// The block at `text`.
    static CharacterBlock load(char const *text) { return of(loadWord(text)); }

    /// The block of the characters in `word`.
    static CharacterBlock of(std::uint64_t word) {
        word ^= 0x3030303030303030;  // what isn't a digit becomes more than 9
        return {word,
                (((word & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | word) & 0x8080808080808080};
    }

    // Signs of data are hard to guess, and what follows a number waits for its length. So a sign
    // takes no jump, and the length is there before it is known whether there is one.

    /// True if the first character is a digit or, as `sign` says, a sign.
    bool startsWithDigit(bool sign) const {
        return (others & first & (std::uint64_t{sign} - 1)) == 0;
    }

    /// The block with that first character as a digit, a sign as 0.
    CharacterBlock withFirstDigit(bool sign) const {
        return {characters & ~(first & (0 - std::uint64_t{sign})), others & ~first};
    }

    /// The number of digits at the start, 0 to 8.
    unsigned digitCount() const { return static_cast<unsigned>(std::countr_zero(others)) / 8; }

    /// The number that the digits at the start make; there are at most seven.
    std::uint64_t wholeNumber() const {
        auto const unused = static_cast<unsigned>(63 - std::countr_zero(others));
        return joinDigits(characters << 8 << unused);  // zeros in front
    }

    /// The same as decimals, in units of 1E-8.
    std::uint64_t decimals() const {
        return joinDigits(characters & (~others & (others - 1)) >> 7);  // zeros behind
    }
};

}  // namespace tqlib::detail
