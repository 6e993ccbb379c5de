#include "tqplatform/runtime/CodePage1252.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tqplatform {
namespace {

// Capitals stand 32 below their small letters, in ASCII as in the accented range 0xC0 to 0xDE
// (0xD7 is the multiplication sign). Four more pairs lie apart.
constexpr std::array<unsigned char, 256> makeLowerTable() {
    std::array<unsigned char, 256> table{};
    for (unsigned c = 0; c < 256; ++c) {
        bool const capital = (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
        table[c] = static_cast<unsigned char>(capital ? c + 32 : c);
    }
    table[0x8A] = 0x9A;  // S with caron
    table[0x8C] = 0x9C;  // OE ligature
    table[0x8E] = 0x9E;  // Z with caron
    table[0x9F] = 0xFF;  // Y with diaeresis
    return table;
}

constexpr auto lowerTable = makeLowerTable();

// Bytes are Unicode characters of their number, but for the range 0x80 to 0x9F.
constexpr unsigned int specialBegin = 0x80;
constexpr char16_t specials[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 0x80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 0x88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 0x90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 0x98
};

bool isSpecial(unsigned int byte) {
    return byte - specialBegin < std::size(specials);
}

}  // namespace

char toLower1252(char c) {
    return static_cast<char>(lowerTable[static_cast<unsigned char>(c)]);
}

char16_t toUnicode(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return isSpecial(byte) ? specials[byte - specialBegin] : char16_t{byte};
}

char fromUnicode(char32_t character) {
    if (character < 0x100 && !isSpecial(character)) return static_cast<char>(character);
    auto const *const found = std::ranges::find(specials, character);
    if (found == std::end(specials)) return '\0';
    return static_cast<char>(specialBegin + (found - specials));
}

std::string toUtf8(std::string_view text) {
    std::string result;
    for (char const c : text) {
        unsigned int const character = toUnicode(c);
        if (character < 0x80) {
            result += c;
            continue;
        }
        if (character < 0x800) {
            result += static_cast<char>(0xC0 | character >> 6);
        } else {
            result += static_cast<char>(0xE0 | character >> 12);
            result += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        }
        result += static_cast<char>(0x80 | (character & 0x3F));
    }
    return result;
}

}  // namespace tqplatform
