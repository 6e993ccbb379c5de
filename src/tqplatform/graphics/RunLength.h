#pragma once

// Run-length codes of bitmaps with 8 and 4 bits. Lines go from the bottom to the top. A line is a
// row of pairs of bytes: a count and the value that is repeated, which for 4 bits is two indices in
// turn. A count of 0 makes the second byte a command: 0 ends the line, 1 ends the picture, 2 moves
// the place by the next two bytes to the right and up, and a greater one is a number of indices
// that follow as they are, filled up to an even number of bytes.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// Reads the lines of a compressed picture, an index for each pixel. Pixels that no code names have
/// the index 0. What would lie to the right of a line is left out; where the code is cut, or runs
/// out of the picture, the picture ends.
class RunLengthReader {
  public:
    /// Reads `code`, for lines of `width` pixels of 8 or 4 bits.
    RunLengthReader(std::span<std::uint8_t const> code, unsigned int bitCount, std::size_t width);

    /// Fills `line`, which has room for the width, with the next line. It is all 0, or as the call
    /// before has left it.
    void next(std::uint8_t *line);

    /// True if all further lines are 0.
    bool isAtEnd() const { return end_ - code_ < 2; }

  private:
    enum class Command : std::uint8_t { endOfLine = 0, endOfPicture = 1, move = 2 };

    bool step(std::uint8_t *line);
    bool command(std::uint8_t code, std::uint8_t *line);
    bool literals(std::size_t count, std::uint8_t *line);
    void run(std::size_t count, std::uint8_t value, std::uint8_t *line);
    void advance(std::size_t count);

    std::uint8_t const *code_;
    std::uint8_t const *end_;
    bool narrow_;  ///< 4 bits
    std::size_t width_;
    std::size_t place_ = 0;     ///< in the line
    std::size_t filled_ = 0;    ///< pixels at the beginning of the line that may not be 0
    unsigned int skipped_ = 0;  ///< lines that a move passes over
};

/// Appends the code of a line of indices, its end included, to `code`. For 4 bits an index counts
/// with its low half.
TQPLATFORM_API void encodeRuns(std::span<std::uint8_t const> line, unsigned int bitCount,
                               std::vector<std::uint8_t> &code);

/// Appends the end of a picture.
inline void endRuns(std::vector<std::uint8_t> &code) {
    code.push_back(0);
    code.push_back(1);
}

}  // namespace tqplatform
