#pragma once

#include <array>
#include <cstdint>

#include "tqlib/calc/TQHpToken.h"

namespace tqlib::detail {

/// The number of command numbers: they go from 0 to 35.
inline constexpr int commandCount = 36;

/// A keyword is found by its key in a table of slots, each of which holds one at most.
struct KeywordSlot {
    std::uint64_t key;  ///< 0 for an empty slot; no token has that key
    std::int16_t number;
};

inline constexpr unsigned keywordSlotBits = 7;
inline constexpr std::size_t keywordSlotCount = std::size_t{1} << keywordSlotBits;
extern std::array<KeywordSlot, keywordSlotCount> const keywordSlots;

/// The slot of a key. The factor is one that keeps the keywords apart; another vocabulary may need
/// another one.
constexpr std::size_t keywordSlotOf(std::uint64_t key) {
    constexpr std::uint64_t factor = 0x4690087064851A31;
    return static_cast<std::size_t>(key * factor >> (64 - keywordSlotBits));
}

/// The command number of the keyword that `token` is as its key stands, or -1 if it is none.
inline int findKeyword(TQHpToken const &token) {
    KeywordSlot const &slot = keywordSlots[keywordSlotOf(token.key)];
    return slot.key == token.key && token.text.size() <= keyLength ? slot.number : -1;
}

}  // namespace tqlib::detail
