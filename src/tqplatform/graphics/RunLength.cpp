#include "tqplatform/graphics/RunLength.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tqplatform {
namespace {

constexpr std::size_t longestRun = 255;

/// Shorter runs don't end a row of literals: they would take as much room.
constexpr std::size_t shortestRun = 4;

/// Fewer literals have no code of their own.
constexpr std::size_t fewestLiterals = 3;

std::uint64_t loadWord(std::uint8_t const *bytes) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Bit 7 of each byte that is 0; bits of bytes above the first one may be set as well.
std::uint64_t zeroBytes(std::uint64_t word) {
    return (word - 0x0101010101010101) & ~word & 0x8080808080808080;
}

std::size_t firstByte(std::uint64_t marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

/// The number of bytes from `first` on that are the same, at most `most`.
std::size_t runLength(std::uint8_t const *first, std::size_t most) {
    std::uint64_t const pattern = std::uint64_t{0x0101010101010101} * *first;
    std::size_t length = 0;
    for (; length + 8 <= most; length += 8) {
        std::uint64_t const other = loadWord(first + length) ^ pattern;
        if (other != 0) return length + firstByte(other);
    }
    while (length < most && first[length] == *first)
        ++length;
    return length;
}

/// The number of bytes from `first` on, at most `most`, until a run begins that is worth a code.
std::size_t literalLength(std::uint8_t const *first, std::size_t most) {
    std::size_t length = 0;
    constexpr std::size_t reach = 8 + shortestRun - 1;
    for (; length + reach <= most; length += 8) {
        std::uint8_t const *const at = first + length;
        std::uint64_t const word = loadWord(at);
        std::uint64_t const other =
            (word ^ loadWord(at + 1)) | (word ^ loadWord(at + 2)) | (word ^ loadWord(at + 3));
        if (std::uint64_t const runs = zeroBytes(other)) return length + firstByte(runs);
    }
    while (length < most &&
           runLength(first + length, std::min(most - length, shortestRun)) < shortestRun)
        ++length;
    return length;
}

/// Puts codes behind each other in a block that has room for them.
class Writer {
  public:
    Writer(std::uint8_t *target, unsigned int bitCount) : target_(target), narrow_(bitCount == 4) {}

    void run(std::size_t count, std::uint8_t index) {
        *target_++ = static_cast<std::uint8_t>(count);
        *target_++ = narrow_ ? pair(index, index) : index;
    }

    void literals(std::uint8_t const *first, std::size_t count) {
        while (count >= fewestLiterals) {
            std::size_t const part = std::min(count, longestRun);
            piece(first, part);
            first += part;
            count -= part;
        }
        for (; count > 0; --count)
            run(1, *first++);
    }

    void endLine() {
        *target_++ = 0;
        *target_++ = 0;
    }

    std::uint8_t *end() const { return target_; }

  private:
    static std::uint8_t pair(std::uint8_t left, std::uint8_t right) {
        return static_cast<std::uint8_t>(left << 4 | (right & 15));
    }

    void piece(std::uint8_t const *first, std::size_t count) {
        *target_++ = 0;
        *target_++ = static_cast<std::uint8_t>(count);
        std::uint8_t const *const begin = target_;
        if (narrow_) {
            for (std::size_t i = 0; i < count; i += 2)
                *target_++ = pair(first[i], i + 1 < count ? first[i + 1] : std::uint8_t{0});
        } else {
            std::memcpy(target_, first, count);
            target_ += count;
        }
        if ((target_ - begin) % 2 != 0) *target_++ = 0;
    }

    std::uint8_t *target_;
    bool narrow_;
};

}  // namespace

void encodeRuns(std::span<std::uint8_t const> line, unsigned int bitCount,
                std::vector<std::uint8_t> &code) {
    // Every index takes two bytes at most, the line's end two as well.
    std::size_t const before = code.size();
    code.resize(before + 2 * line.size() + 2);
    Writer writer(code.data() + before, bitCount);
    std::uint8_t const *first = line.data();
    for (std::size_t left = line.size(); left > 0;) {
        std::size_t const literals = literalLength(first, left);
        writer.literals(first, literals);
        first += literals;
        left -= literals;
        while (left > 0) {
            std::size_t const run = runLength(first, std::min(left, longestRun));
            if (run < shortestRun) break;
            writer.run(run, *first);
            first += run;
            left -= run;
        }
    }
    writer.endLine();
    code.resize(static_cast<std::size_t>(writer.end() - code.data()));
}

RunLengthReader::RunLengthReader(std::span<std::uint8_t const> code, unsigned int bitCount,
                                 std::size_t width)
    : code_(code.data()), end_(code.data() + code.size()), narrow_(bitCount == 4), width_(width) {}

void RunLengthReader::next(std::uint8_t *line) {
    std::memset(line, 0, filled_);
    filled_ = 0;
    if (skipped_ > 0) {
        --skipped_;
        if (skipped_ > 0) return;
    }
    while (step(line)) {
    }
}

// Carries out the next code; false if the line ends with it.
bool RunLengthReader::step(std::uint8_t *line) {
    if (isAtEnd()) return false;
    std::uint8_t const count = *code_++;
    std::uint8_t const value = *code_++;
    if (count == 0) return command(value, line);
    run(count, value, line);
    return true;
}

bool RunLengthReader::command(std::uint8_t code, std::uint8_t *line) {
    switch (static_cast<Command>(code)) {
        case Command::endOfLine:
            place_ = 0;
            return false;
        case Command::endOfPicture:
            code_ = end_;
            return false;
        case Command::move:
            if (isAtEnd()) return false;
            place_ = std::min(width_, place_ + code_[0]);
            skipped_ = code_[1];
            code_ += 2;
            return skipped_ == 0;
        default:
            return literals(code, line);
    }
}

bool RunLengthReader::literals(std::size_t count, std::uint8_t *line) {
    std::size_t const bytes = narrow_ ? (count + 1) / 2 : count;
    auto const left = static_cast<std::size_t>(end_ - code_);
    std::size_t const present = std::min(count, narrow_ ? 2 * left : left);
    std::size_t const visible = std::min(present, width_ - place_);
    if (narrow_) {
        for (std::size_t i = 0; i < visible; ++i)
            line[place_ + i] = code_[i / 2] >> (i % 2 == 0 ? 4 : 0) & 15;
    } else if (visible > 0) {
        std::memcpy(line + place_, code_, visible);
    }
    advance(visible);
    code_ += std::min(left, bytes + bytes % 2);
    return true;
}

void RunLengthReader::run(std::size_t count, std::uint8_t value, std::uint8_t *line) {
    std::size_t const visible = std::min(count, width_ - place_);
    if (narrow_) {
        std::uint8_t const turns[] = {static_cast<std::uint8_t>(value >> 4),
                                      static_cast<std::uint8_t>(value & 15)};
        for (std::size_t i = 0; i < visible; ++i)
            line[place_ + i] = turns[i % 2];
    } else {
        std::memset(line + place_, value, visible);
    }
    advance(visible);
}

void RunLengthReader::advance(std::size_t count) {
    place_ += count;
    filled_ = std::max(filled_, place_);
}

}  // namespace tqplatform
