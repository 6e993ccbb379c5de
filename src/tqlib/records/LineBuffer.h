#pragma once

#include <cstring>
#include <memory>

#include "tqplatform/streams/istream.h"

namespace tqlib::detail {

class NumberReading;

/// The block that holds a reader's current line; copies of a reader share it.
class LineBuffer {
  public:
    /// Bytes of the block: a line has at most one character less, for the NUL.
    static constexpr int size = 9192;

    /// Bytes behind the block that may be read, so that digits can be looked at eight at a time.
    static constexpr int padding = 8;

    /// No block.
    LineBuffer() = default;

    /// A new block with an empty line.
    static LineBuffer make() {
        LineBuffer buffer;
        buffer.block_ = std::make_shared<char[]>(size + padding);
        return buffer;
    }

    char *begin() const { return block_.get(); }

    /// Fetches the next line of `stream`, without its line end, and gives its begin. An empty line
    /// and the end of the file both leave the state at exactly the end-of-file bit.
    char *fetch(classic::istream &stream) const {
        classic::ios::Lock const lock(stream);
        stream.clear();
        clear();
        stream.getline(begin(), size);
        if (*begin() == '\0') stream.clear(classic::ios::eofbit);
        return begin();
    }

  private:
    // If several readers share the block all of it is cleared: one that stood further on than the
    // next line reaches then stands at that line's end.
    void clear() const {
        if (block_.use_count() > 1) std::memset(begin(), 0, size);
        *begin() = '\0';
    }

    std::shared_ptr<char[]> block_;
};

}  // namespace tqlib::detail
