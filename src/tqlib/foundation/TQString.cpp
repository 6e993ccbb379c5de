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

/// Which of 16 places hold a character of a set.
class Hits {
  public:
    /// Looks at the `count` places from `first` on, at most 16.
    Hits(char const *first, std::size_t count, std::string_view set) {
        static_assert(std::endian::native == std::endian::little);
        Block text{};
        if (count == sizeof text)
            std::memcpy(&text, first, sizeof text);
        else
            std::memcpy(&text, first, count);
        Block hits{};
        for (char const c : set)
            hits |= static_cast<Block>(text == static_cast<unsigned char>(c));
        std::uint64_t halves[2];
        std::memcpy(halves, &hits, sizeof hits);
        bits_ = gather(halves[0]) | gather(halves[1]) << 8;
    }

    /// The first place that is a hit; 16 if there is none.
    std::size_t first() const {
        return static_cast<std::size_t>(std::countr_zero(bits_ | 1U << sizeof(Block)));
    }

    /// The first place behind the hit `place` that is none; 16 if all are.
    std::size_t firstMiss(std::size_t place) const {
        return place + static_cast<std::size_t>(std::countr_one(bits_ >> place));
    }

  private:
    // One bit of each of eight bytes, which are 0xFF or 0: byte i keeps its bit i, and the product
    // adds them all up in the highest byte.
    static unsigned gather(std::uint64_t bytes) {
        return static_cast<unsigned>((bytes & 0x8040201008040201) * 0x0101010101010101 >> 56);
    }

    unsigned bits_;  // bit i for place i
};

/// Where a token ends and where the next one begins.
struct TokenEnd {
    char const *stop;
    char const *next;
};

/// The end of the token that begins at `first`, and what is behind one separator, or behind all of
/// them if `skip` is set. Looks at 16 places at a time, which for the few separators of a tokeniser
/// beats building a table.
TokenEnd findTokenEnd(char const *first, char const *end, std::string_view set, bool skip) {
    char const *stop = nullptr;
    while (first != end) {
        auto const count = std::min(static_cast<std::size_t>(end - first), sizeof(Block));
        Hits const hits(first, count, set);
        std::size_t const hit = stop == nullptr ? hits.first() : 0;
        if (hit < count) {
            if (stop == nullptr) stop = first + hit;
            if (!skip) return {stop, stop + 1};
            std::size_t const miss = hits.firstMiss(hit);
            if (miss < count) return {stop, first + miss};
        }
        first += count;
    }
    return {stop == nullptr ? end : stop, end};
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

/// The first place in [`text`, `textEnd`) that the star-free part [`part`, `end`) fits, or null.
char const *findPart(char const *part, char const *end, char const *text, char const *textEnd) {
    if (part == end) return text;
    auto const length = end - part;
    for (; textEnd - text >= length; ++text) {
        if (*part != '?' && *part != *text) continue;
        if (partFits(part, end, text)) return text;
    }
    return nullptr;
}

/// True if the whole of `text` fits `pattern`, which begins with a star. The part behind the last
/// star stands at the end of the text. Taking each other part at the first place that it fits is
/// enough: a later place would only leave less text for the rest.
bool fitsFromStar(char const *pattern, char const *text) {
    char const *const lastStar = std::strrchr(pattern, '*');
    char const *const patternEnd = lastStar + std::strlen(lastStar);
    auto const tail = static_cast<std::size_t>(patternEnd - lastStar) - 1;
    std::size_t const length = std::strlen(text);
    if (length < tail) return false;
    char const *const textEnd = text + (length - tail);
    if (!partFits(lastStar + 1, patternEnd, textEnd)) return false;
    while (pattern != lastStar) {
        char const *const part = pattern + 1;
        pattern = partEnd(part);
        text = findPart(part, pattern, text, textEnd);
        if (text == nullptr) return false;
        text += pattern - part;
    }
    return true;
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
    auto const [stop, next] = findTokenEnd(first, end, separators.text(), skip != 0);
    int const result = stop == end ? -1 : static_cast<int>(next - text);
    auto const length = static_cast<std::size_t>(stop - first);
    if (length <= shortSize && static_cast<std::size_t>(end - first) >= shortSize)
        token.assignShort(first, length);
    else
        token.assign({first, length});
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
    char const *place = nullptr;
    if (*end == '*')
        place = findPart(pattern, end, text, text + left);
    else if (length <= left)
        place = findPart(pattern, end, text + (left - length), text + left);
    if (place == nullptr || (*end == '*' && !fitsFromStar(end, place + length))) {
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
    return static_cast<int>(std::ranges::count(text(), c));
}

void TQString::RemoveChars(TQString const &chars) {
    CharacterSet const set(chars.text());
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
    if (file != nullptr) file->Write(text().data(), static_cast<unsigned int>(GetLength()));
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
