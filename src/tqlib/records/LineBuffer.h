#pragma once

#include <cstddef>
#include <memory>

namespace tqlib::detail {

/// The block that holds a reader's current line; copies of a reader share it.
class LineBuffer {
  public:
    /// Bytes of the block: a line has at most one character less, for the NUL.
    static constexpr int size = 9192;

    /// A new block with an empty line. Its last byte is always NUL, so that a reader whose line was
    /// replaced through a copy never runs out of the block.
    LineBuffer() : block_(std::make_shared<char[]>(size)) {}

    char *begin() const { return block_.get(); }

  private:
    std::shared_ptr<char[]> block_;
};

}  // namespace tqlib::detail
