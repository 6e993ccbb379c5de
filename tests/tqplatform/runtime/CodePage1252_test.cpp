#include "tqplatform/runtime/CodePage1252.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <string>

namespace {

// The code point of a byte of Windows-1252, or 0 where the code page has none.
char32_t codePoint(int byte) {
    iconv_t const converter = iconv_open("UCS-4LE", "CP1252");
    char in = static_cast<char>(byte);
    char32_t out = 0;
    char *from = &in;
    char *to = reinterpret_cast<char *>(&out);
    std::size_t inLeft = 1, outLeft = sizeof out;
    bool const known = iconv(converter, &from, &inLeft, &to, &outLeft) != std::size_t(-1);
    iconv_close(converter);
    return known ? out : 0;
}

// Small letters of Unicode for the capitals that Windows-1252 has.
char32_t smallLetter(char32_t c) {
    if ((c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return c + 32;
    if (c == 0x178) return 0xFF;                               // Y with diaeresis
    if (c == 0x152 || c == 0x160 || c == 0x17D) return c + 1;  // OE, S and Z with caron
    return c;
}

TEST(CodePage1252, LowersEveryByteAsItsCharacterIsLowered) {
    for (int byte = 0; byte < 256; ++byte) {
        int const lower =
            static_cast<unsigned char>(tqplatform::toLower1252(static_cast<char>(byte)));
        if (codePoint(byte) == 0)
            EXPECT_EQ(lower, byte);
        else
            EXPECT_EQ(codePoint(lower), smallLetter(codePoint(byte))) << byte;
    }
}

TEST(CodePage1252, ComesBackFromUtf8) {
    using tqplatform::fromUtf8;
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(fromUtf8(tqplatform::toUtf8(all)), all);
    EXPECT_EQ(fromUtf8("\xE2\x82\xAD"), "?");
    for (char const *const other :
         {"\xE4", "a\xC3", "\xC3\x41", "\xE2\x82", "\x80", "\xF5\x80\x80\x80", "\xC0\xAF",
          "\xE0\x80\xAF", "\xF0\x80\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
        EXPECT_EQ(fromUtf8(other), other);
}

TEST(CodePage1252, KnowsItsLetters) {
    std::string letters;
    for (int byte = 0; byte < 256; ++byte)
        if (IsCharAlphaA(static_cast<char>(byte)) != 0) letters += static_cast<char>(byte);
    EXPECT_EQ(letters.size(), 52u + 11 + 62);
    for (char const c : letters)
        EXPECT_NE(letters.find(tqplatform::toLower1252(c)), std::string::npos);
    for (char const c : {'1', '_', '\x80', '\xA0', '\xD7', '\xF7', '\xBF'})
        EXPECT_EQ(IsCharAlphaA(c), 0);
}

}  // namespace
