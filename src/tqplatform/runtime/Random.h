#pragma once

// The random generator of the platform's C runtime: 15 bits a number, one state for the process.

#include <atomic>
#include <cstdint>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// What the next random number is made of. Threads that draw at the same time may draw the same
/// number.
TQPLATFORM_API extern constinit std::atomic<std::uint32_t> randomState;

/// The largest random number.
inline constexpr int randomMaximum = 32767;

/// The platform's rand(): the next number, 0 to randomMaximum. The same seed gives the same numbers
/// as there.
inline int rand() {
    std::uint32_t const state = randomState.load(std::memory_order_relaxed) * 214013 + 2531011;
    randomState.store(state, std::memory_order_relaxed);
    return static_cast<int>(state >> 16) & randomMaximum;
}

/// The platform's srand(): starts the sequence of `seed`.
inline void srand(unsigned int seed) {
    randomState.store(seed, std::memory_order_relaxed);
}

}  // namespace tqplatform
