#include "tqlib/foundation/TQString.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "tqlib/foundation/TQStringStreams.h"
#include "tqplatform/framework/CFile.h"

namespace {

constexpr int wordRoom = 256;  // of a word read from a stream, its NUL included

struct LetterPair {
    char dos;
    char windows;
};

// Sharp s, then a, o and u with diaeresis, small and capital.
constexpr LetterPair germanLetters[] = {
    {'\xE1', '\xDF'}, {'\x84', '\xE4'}, {'\x94', '\xF6'}, {'\x81', '\xFC'},
    {'\x8E', '\xC4'}, {'\x99', '\xD6'}, {'\x9A', '\xDC'},
};

/// A set of characters, one bit for each.
class CharacterSet {
  public:
    explicit CharacterSet(std::string_view characters) {
        for (char const c : characters)
            words_[index(c)] |= bit(c);
    }
    bool has(char c) const { return (words_[index(c)] & bit(c)) != 0; }

  private:
    static unsigned index(char c) { return static_cast<unsigned char>(c) >> 6; }
    static std::uint64_t bit(char c) { return std::uint64_t{1} << (static_cast<unsigned>(c) & 63); }

    std::uint64_t words_[4] = {};
};

using Block = unsigned char __attribute__((vector_size(16)));

/// The index of the first byte that isn't 0 in a block of bytes that are 0 or 0xFF; 16 if none is.
std::size_t firstSet(Block block) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t halves[2];
    std::memcpy(halves, &block, sizeof halves);
    int const bits =
        halves[0] != 0 ? std::countr_zero(halves[0]) : 64 + std::countr_zero(halves[1]);
    return static_cast<std::size_t>(bits) / 8;
}

/// A place in a text, and whether the character behind it needs a look.
struct Found {
    char const *place;
    bool look;
};

/// The first place in [`first`, `end`) that holds a character of `set`, or `end`. Looks at 16
/// places at a time, which for the few separators of a tokeniser beats building a table. No look is
/// needed behind the place where another character of the set can be ruled out.
Found findAny(char const *first, char const *end, std::string_view set) {
    while (first != end) {
        auto const part = std::min(static_cast<std::size_t>(end - first), sizeof(Block));
        Block text{};
        if (part == sizeof text)
            std::memcpy(&text, first, sizeof text);
        else
            std::memcpy(&text, first, part);
        Block hits{};
        for (char const c : set)
            hits |= static_cast<Block>(text == static_cast<unsigned char>(c));
        std::size_t const hit = firstSet(hits);
        if (hit < part) return {first + hit, hit + 1 == sizeof hits || hits[hit + 1] != 0};
        first += part;
    }
    return {end, false};
}

/// The end of the part of a pattern that begins at `pattern`: its next star or its terminator.
char const *partEnd(char const *pattern) {
    while (*pattern != '*' && *pattern != '\0')
        ++pattern;
    return pattern;
}

/// True if the star-free part [`part`, `end`) fits the beginning of `text`. A NUL in the text fits
/// nothing.
bool partFits(char const *part, char const *end, char const *text) {
    for (; part != end; ++part, ++text)
        if (*text == '\0' || (*part != '?' && *part != *text)) return false;
    return true;
}

/// The first place in `text` that the star-free part [`part`, `end`) fits, or null.
char const *findPart(char const *part, char const *end, char const *text) {
    for (; *text != '\0'; ++text)
        if (partFits(part, end, text)) return text;
    return part == end ? text : nullptr;
}

/// True if `text` fits `pattern`, which begins with a star or is at its end. Taking each part at
/// the first place that it fits is enough: a later place would only leave less text for the rest.
bool fitsFromStar(char const *pattern, char const *text) {
    while (*pattern == '*') {
        char const *const part = pattern + 1;
        char const *const end = partEnd(part);
        if (*end == '\0') {  // the last part stands at the end of the text
            auto const length = static_cast<std::size_t>(end - part);
            std::size_t const left = std::strlen(text);
            return length <= left && partFits(part, end, text + (left - length));
        }
        char const *const place = findPart(part, end, text);
        if (place == nullptr) return false;
        text = place + (end - part);
        pattern = end;
    }
    return *text == '\0';
}

}  // namespace

TQString::TQString(char c, unsigned int count) {
    constexpr auto limit = static_cast<unsigned int>(INT32_MAX);
    CString::operator=(CString(c, static_cast<int>(std::min(count, limit))));
}

TQString::TQString(unsigned int id) {
    LoadStringA(id);
}

TQString::TQString(unsigned int id, int number) {
    LoadStringA(id);
    CString digits;
    digits.Format("%d", number);
    *this += digits;
}

TQString TQString::LoadStringA(unsigned int id) {
    CString::LoadStringA(id);
    return *this;
}

int TQString::AppendString(unsigned int id) {
    CString text;
    if (text.LoadStringA(id) == 0) return 0;
    *this += text;
    return 1;
}

int TQString::AppendString(unsigned int id, char c) {
    *this += c;
    return AppendString(id);
}

TQString &TQString::Trim() {
    TrimRight();
    TrimLeft();
    return *this;
}

int TQString::GetToken(TQString &token, int start, TQString const &separators, int skip) const {
    char const *const text = *this;
    char const *const end = text + GetLength();
    char const *const first = text + std::clamp(start, 0, GetLength());
    auto const [stop, look] = findAny(first, end, separators.view());
    char const *next = stop == end ? end : stop + 1;
    if (skip != 0 && look)
        while (next != end && separators.view().find(*next) != std::string_view::npos)
            ++next;
    int const result = stop == end ? -1 : static_cast<int>(next - text);
    token.assign({first, static_cast<std::size_t>(stop - first)});
    return result;
}

bool TQString::Match(char const *pattern, char const *text) {
    if (pattern == nullptr) pattern = "";
    if (text == nullptr) text = "";
    for (; *pattern != '*'; ++pattern, ++text) {
        if (*pattern == '\0' || *text == '\0') return *pattern == *text;
        if (*pattern != '?' && *pattern != *text) return false;
    }
    return fitsFromStar(pattern, text);
}

bool TQString::Scan(char *&pattern, char *&text) {
    while (*pattern == '*' || (*pattern == '?' && *text != '\0'))
        if (*pattern++ == '?') ++text;
    if (*text == '\0') return *pattern == '\0';
    if (*pattern == '\0') {
        text += std::strlen(text);
        return true;
    }
    // If the rest doesn't fit behind the first place of this part, it doesn't behind a later one;
    // only a part that ends the pattern is tied to the end of the text instead.
    char const *const end = partEnd(pattern);
    std::size_t const left = std::strlen(text);
    auto const length = static_cast<std::size_t>(end - pattern);
    char const *place = findPart(pattern, end, text);
    if (*end == '\0')
        place = length <= left && partFits(pattern, end, text + (left - length))
                    ? text + (left - length)
                    : nullptr;
    if (place == nullptr || !fitsFromStar(end, place + length)) {
        text += left;
        return false;
    }
    text += place - text;
    return true;
}

int TQString::ReplaceChar(char from, char to) {
    int const length = GetLength();
    char *const text = GetBuffer(length);
    int const count = static_cast<int>(std::count(text, text + length, from));
    std::replace(text, text + length, from, to);
    ReleaseBuffer(-1);
    return count;
}

int TQString::CountChar(char c) const {
    return static_cast<int>(std::ranges::count(view(), c));
}

void TQString::RemoveChars(TQString const &chars) {
    CharacterSet const set(chars.view());
    int const length = GetLength();
    char *const text = GetBuffer(length);
    char *const end = std::remove_if(text, text + length, [&](char c) { return set.has(c); });
    *end = '\0';
    ReleaseBuffer(-1);
}

void TQString::ConvertCtrlEnterToCSV() {
    ReplaceChar('\r', ',');
    ReplaceChar('\n', ' ');
}

void TQString::ConvertCSVToCtrlEnter() {
    int const length = GetLength();
    char *const text = GetBuffer(length);
    // Replacing never makes a new comma and blank, so one walk does.
    for (int i = 0; i + 1 < length; ++i) {
        if (text[i] != ',' || text[i + 1] != ' ') continue;
        text[i] = '\r';
        text[i + 1] = '\n';
    }
    ReleaseBuffer(-1);
}

void TQString::ConvertDosToWindows() {
    for (LetterPair const &letter : germanLetters)
        ReplaceChar(letter.dos, letter.windows);
}

void TQString::Write(CFile *file) const {
    if (file != nullptr) file->Write(view().data(), static_cast<unsigned int>(GetLength()));
}

void TQString::Write(CFile *file, TQString const &text) {
    *this = text;
    Write(file);
}

void TQString::Write(CFile *file, unsigned int id) {
    LoadStringA(id);
    Write(file);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a value by contract
classic::ostream &operator<<(classic::ostream &stream, TQString text) {
    return stream << static_cast<char const *>(text);
}

classic::istream &operator>>(classic::istream &stream, TQString &text) {
    char word[wordRoom];
    stream.width(wordRoom);
    stream >> word;
    text = word;
    return stream;
}
