#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tqplatform {

/// Copies the first and the last `Block` of `count` bytes, which overlap if there are less than two
/// of them. Both are read before one is written.
template <typename Block>
inline void copyEnds(char *target, char const *source, std::size_t count) {
    Block first, last;
    std::memcpy(&first, source, sizeof first);
    std::memcpy(&last, source + count - sizeof last, sizeof last);
    std::memcpy(target, &first, sizeof first);
    std::memcpy(target + count - sizeof last, &last, sizeof last);
}

/// Copies `count` bytes as memmove does. Short texts, as most are, take a few instructions in place
/// of a call. Nothing is read of an empty text, which may have no address.
inline void copyText(char *target, char const *source, std::size_t count) {
    struct Sixteen {
        std::uint64_t halves[2];
    };
    if (count > 2 * sizeof(Sixteen))
        std::memmove(target, source, count);
    else if (count >= sizeof(Sixteen))
        copyEnds<Sixteen>(target, source, count);
    else if (count >= 8)
        copyEnds<std::uint64_t>(target, source, count);
    else if (count >= 4)
        copyEnds<std::uint32_t>(target, source, count);
    else if (count >= 2)
        copyEnds<std::uint16_t>(target, source, count);
    else if (count == 1)
        *target = *source;
}

}  // namespace tqplatform
