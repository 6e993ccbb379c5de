#pragma once

// The buffer between a classic stream and its source or sink. It moves blocks; translating line
// ends between the host's and the stream's is done here, on the way out of the read block.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <mutex>

#include "tqplatform/runtime/Export.h"

namespace classic {

/// A position or distance in a file, in bytes. -1 stands for no position.
using streampos = std::int64_t;
using streamoff = std::int64_t;

/// Base of the buffers. A text buffer reads CR LF and LF both as one newline; it writes bytes as
/// they are, so that lines end with LF. Positions are offsets in the file in either mode.
///
/// A derived class supplies blocks: fill() and drain() are called when the block at hand is used
/// up. Not for copying: streams that are copied share one buffer object.
class TQPLATFORM_API streambuf {
  public:
    streambuf() = default;
    streambuf(streambuf const &) = delete;
    streambuf &operator=(streambuf const &) = delete;
    virtual ~streambuf();

    /// What takeUntil() met.
    struct Taken {
        std::size_t count = 0;   ///< bytes taken, the delimiter not counted
        bool delimiter = false;  ///< the delimiter was met, and taken if that was asked for
        bool end = false;        ///< the end of the source was met
    };

    /// The next character without taking it, 0 to 255, or -1 at the end of the source or where an
    /// error hides what follows; see readFailed().
    int sgetc() {
        if (next_ < readEnd_ && *next_ != '\r') return static_cast<unsigned char>(*next_);
        return peekSlowly();
    }

    /// Takes the next character, 0 to 255, or gives -1 where sgetc() does.
    int sbumpc();

    /// Takes characters up to `delimiter`, at most `limit`, into `target`, or drops them if that is
    /// null. No terminator is added. The delimiter is taken as well if `takeDelimiter` says so.
    /// Looks for the delimiter a block at a time.
    Taken takeUntil(char *target, std::size_t limit, char delimiter, bool takeDelimiter);

    /// The next `count` characters as they lie in the block, line ends included, or null if it
    /// hasn't that many. skip() takes some of them.
    char const *ahead(std::size_t count) const {
        return count <= static_cast<std::size_t>(readEnd_ - next_) ? next_ : nullptr;
    }
    void skip(std::size_t count) { next_ += count; }

    /// True if the last read that met an end met an error instead: the source gave one, or what was
    /// written before couldn't be sent out.
    bool readFailed() const { return readFailed_; }

    /// Writes `count` characters. The result is how many were taken.
    std::size_t sputn(char const *text, std::size_t count) {
        if (count - 1 < static_cast<std::size_t>(writeEnd_ - write_)) {  // 0 goes the slow way
            std::memcpy(write_, text, count);
            write_ += count;
            return count;
        }
        return putSlowly(text, count);
    }

    /// Room for `count` characters in the block, for text to be formed in place, or null if it
    /// can't be had at once. taken() then tells how many of them count as written.
    char *room(std::size_t count) {
        return count <= static_cast<std::size_t>(writeEnd_ - write_) ? write_ : nullptr;
    }
    void taken(std::size_t count) { write_ += count; }

    /// Moves to the absolute offset `position`; the result is that offset, or -1.
    virtual streampos seekpos(streampos position) = 0;

    /// Moves by `distance` from `origin` (SEEK_SET, SEEK_CUR, SEEK_END); the result is the new
    /// offset from the beginning, or -1.
    virtual streampos seekoff(streamoff distance, int origin) = 0;

    /// Hands everything written to the sink; 0, or -1 if it didn't take all of it. What it didn't
    /// take stays, and goes out with the next call that succeeds.
    virtual int sync() = 0;

    /// The lock that streams on this buffer share.
    std::recursive_mutex *lock() { return &lock_; }

  protected:
    /// Brings at least one more character behind those not taken yet, which stay. False at the end
    /// of the source.
    virtual bool fill() = 0;

    /// Makes room for at least one more character. False if the sink doesn't take what is there.
    virtual bool drain() = 0;

    char *next_ = nullptr;      ///< next character to take
    char *readEnd_ = nullptr;   ///< behind the last character read
    char *write_ = nullptr;     ///< where the next character written goes
    char *writeEnd_ = nullptr;  ///< end of the room for writing
    bool text_ = false;         ///< CR LF is read as one newline
    bool readFailed_ = false;   ///< there was an error instead of an end, see readFailed()

  private:
    struct Segment {
        char *end;              ///< behind the last character
        char *behindDelimiter;  ///< behind the delimiter that follows, or null if none is in sight
    };

    Segment nextSegment(std::size_t room, char delimiter);
    int peekSlowly();
    bool atCrLf();
    std::size_t putSlowly(char const *text, std::size_t count);
    Taken takeTranslated(char *target, std::size_t limit, char delimiter, bool takeDelimiter);

    std::recursive_mutex lock_;
};

}  // namespace classic
