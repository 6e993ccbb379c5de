#include "tqlib/calc/TQHpKeywords.h"

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

struct Slots {
    std::array<KeywordSlot, keywordSlotCount> slots{};
    bool unique = true;
};

constexpr Slots fillSlots() {
    Slots table;
    for (Keyword const &keyword : keywords) {
        if (keyword.text == nullptr) break;
        std::uint64_t const key = keyOf(keyword.text);
        KeywordSlot &slot = table.slots[keywordSlotOf(key)];
        table.unique = table.unique && slot.key == 0;
        slot = {key, keyword.number};
    }
    return table;
}

constexpr Slots table = fillSlots();
static_assert(table.unique);

}  // namespace

constinit std::array<KeywordSlot, keywordSlotCount> const keywordSlots = table.slots;

}  // namespace tqlib::detail
