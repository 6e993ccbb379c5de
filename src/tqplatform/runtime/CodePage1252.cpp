#include "tqplatform/runtime/CodePage1252.h"

#include <array>

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

}  // namespace

char toLower1252(char c) {
    return static_cast<char>(lowerTable[static_cast<unsigned char>(c)]);
}

}  // namespace tqplatform
