#include "tqlib/calc/TQHpKeywords.h"

#include <array>
#include <cctype>

namespace tqlib::detail {
namespace {

struct Keyword {
    char const *text;
    std::int16_t number;
};

constexpr Keyword keywords[] = {
    {"+", 3},       {"-", 4},       {"*", 5},       {"/", 6},      {"EXP", 9},    {"LN", 10},
    {"LOG10", 11},  {"SIN", 12},    {"COS", 13},    {"TAN", 14},   {"SQRT", 21},  {"SQR", 22},
    {"CLEAR", 24},  {"CLX", 23},    {"SWAP", 25},   {"PI", 26},    {"E", 27},     {"STO_0", 28},
    {"STO_1", 29},  {"STO_2", 30},  {"STO_3", 31},  {"RCL_0", 32}, {"RCL_1", 33}, {"RCL_2", 34},
    {"RCL_3", 35},  {"POW", 7},     {"ABS", 18},    {"MOD", 8},    {"FLOOR", 19}, {"CEIL", 20},
    {"ARCSIN", 17}, {"ARCCOS", 16}, {"ARCTAN", 15}, {nullptr, 0},
};

constexpr std::size_t longestKeyword = 6;

// A table of slots finds the one keyword that a token can be. The slot comes from length, first,
// last and middle character; the factors are searched at compile time so that no two keywords meet.
constexpr unsigned slotCount = 128;

struct Factors {
    unsigned first;
    unsigned last;
    unsigned middle;
};

constexpr unsigned slotOf(Factors factors, std::size_t length, char first, char middle, char last) {
    unsigned const sum = factors.first * static_cast<unsigned char>(first) +
                         factors.middle * static_cast<unsigned char>(middle) +
                         factors.last * static_cast<unsigned char>(last);
    return (sum + static_cast<unsigned>(length)) % slotCount;
}

constexpr unsigned slotOf(Factors factors, std::string_view text) {
    return slotOf(factors, text.size(), text.front(), text[text.size() / 2], text.back());
}

struct Slots {
    std::array<Keyword const *, slotCount> keywords{};
    bool unique = true;
};

constexpr Slots fillSlots(Factors factors) {
    Slots slots;
    for (Keyword const &keyword : keywords) {
        if (keyword.text == nullptr) break;
        auto &slot = slots.keywords[slotOf(factors, keyword.text)];
        slots.unique = slots.unique && slot == nullptr;
        slot = &keyword;
    }
    return slots;
}

constexpr Factors findFactors() {
    for (unsigned first = 1; first < 32; ++first)
        for (unsigned middle = 1; middle < 32; ++middle)
            for (unsigned last = 1; last < 32; ++last)
                if (fillSlots({first, last, middle}).unique) return {first, last, middle};
    return {};
}

constexpr Factors factors = findFactors();
constexpr Slots slots = fillSlots(factors);
static_assert(slots.unique);

char capital(char c) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

}  // namespace

bool equalsInCapitals(std::string_view token, char const *name) {
    if (name == nullptr) return false;
    for (char const c : token)
        if (capital(c) != *name++) return false;
    return *name == '\0';
}

int findKeyword(std::string_view token) {
    if (token.empty() || token.size() > longestKeyword) return -1;
    unsigned const slot = slotOf(factors, token.size(), capital(token.front()),
                                 capital(token[token.size() / 2]), capital(token.back()));
    Keyword const *const keyword = slots.keywords[slot];
    return keyword != nullptr && equalsInCapitals(token, keyword->text) ? keyword->number : -1;
}

}  // namespace tqlib::detail
