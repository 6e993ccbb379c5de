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

/// The length of a character by its first byte, and the bits that this holds of it; 0 for a byte
/// that begins none.
struct Lead {
    std::size_t length;
    unsigned int bits;
};
/// The first characters that take two, three and four bytes: a shorter one has no longer form.
constexpr char32_t firstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};

bool isCharacter(char32_t character, std::size_t length) {
    bool const isHalf = character >= 0xD800 && character <= 0xDFFF;
    return character >= firstOfLength[length] && character <= 0x10FFFF && !isHalf;
}

Lead leadOf(unsigned char byte) {
    if (byte < 0x80) return {1, byte};
    if (byte >= 0xC2 && byte < 0xE0) return {2, byte & 0x1FU};
    if (byte >= 0xE0 && byte < 0xF0) return {3, byte & 0x0FU};
    if (byte >= 0xF0 && byte < 0xF5) return {4, byte & 0x07U};
    return {0, 0};
}

bool isSpecial(unsigned int byte) {
    return byte - specialBegin < std::size(specials);
}

}  // namespace

char toLower1252(char c) {
    return static_cast<char>(lowerTable[static_cast<unsigned char>(c)]);
}

char fromUnicode(char32_t character) {
    if (character < 0x100 && !isSpecial(character)) return static_cast<char>(character);
    auto const *const found = std::ranges::find(specials, character);
    if (found == std::end(specials)) return '\0';
    return static_cast<char>(specialBegin + (found - specials));
}

Utf8Character readUtf8(std::string_view text) {
    auto const [length, bits] = leadOf(static_cast<unsigned char>(text[0]));
    if (length == 0) return {1, U'\0'};
    char32_t character = bits;
    for (std::size_t i = 1; i < length; ++i) {
        if (i == text.size()) return {0, U'\0'};
        auto const byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80) return {i, U'\0'};
        character = character << 6 | (byte & 0x3FU);
    }
    return {length, isCharacter(character, length) ? character : U'\0'};
}

std::string fromUtf8(std::string_view text) {
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        auto const [bytes, character] = readUtf8(rest);
        if (bytes == 0 || (character == U'\0' && rest[0] != '\0')) return std::string(text);
        char const letter = fromUnicode(character);
        result += letter == '\0' && character != U'\0' ? '?' : letter;
        rest.remove_prefix(bytes);
    }
    return result;
}

void appendUtf8(std::string &text, char16_t character) {
    unsigned int const bits = character;
    if (bits < 0x80) {
        text += static_cast<char>(bits);
        return;
    }
    if (bits < 0x800) {
        text += static_cast<char>(0xC0 | bits >> 6);
    } else {
        text += static_cast<char>(0xE0 | bits >> 12);
        text += static_cast<char>(0x80 | (bits >> 6 & 0x3F));
    }
    text += static_cast<char>(0x80 | (bits & 0x3F));
}

std::string toUtf8(std::string_view text) {
    std::string result;
    for (char const c : text)
        appendUtf8(result, toUnicode(c));
    return result;
}

}  // namespace tqplatform

int IsCharAlphaA(char c) {
    // Letters apart from the two alphabets, and small letters that have no capital here.
    constexpr std::string_view others = "\x83\x8A\x8C\x8E\x9A\x9C\x9E\x9F\xAA\xB5\xBA";
    auto const byte = static_cast<unsigned char>(c);
    bool const isPlain = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    bool const isAccented = byte >= 0xC0 && byte != 0xD7 && byte != 0xF7;
    return isPlain || isAccented || others.find(c) != std::string_view::npos ? 1 : 0;
}
