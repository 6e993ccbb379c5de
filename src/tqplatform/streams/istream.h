#pragma once

#include <memory>
#include <string>
#include <utility>

#include "tqplatform/streams/ios.h"

namespace classic {

/// A stream to read from.
class TQPLATFORM_API istream : virtual public ios {
  public:
    /// Reads from `buffer`, which is shared with the caller.
    explicit istream(std::shared_ptr<streambuf> buffer) { init(std::move(buffer)); }

    /// Takes at most `limit` - 1 characters, up to `delimiter`, into `target` and ends them with a
    /// NUL; a null target drops them. The delimiter stays in the stream. Meeting the end of the
    /// file sets the end-of-file bit, and the fail bit as well if nothing was taken; a read error
    /// sets the bad bit on top. gcount() tells how many characters were taken.
    istream &get(char *target, int limit, int delimiter = '\n') {
        return take(target, limit, static_cast<char>(delimiter), false);
    }

    /// The same into a text that grows with what is taken.
    istream &get(std::string &target, int limit, int delimiter = '\n');

    /// The line read: the same with the delimiter taken and not stored.
    istream &getline(char *target, int limit, char delimiter = '\n') {
        return take(target, limit, delimiter, true);
    }

    /// Takes one character, 0 to 255. At the end of the file the result is -1 and the end-of-file
    /// bit is set.
    int get();

    /// The next character without taking it, 0 to 255, or -1 at the end of the file or on a stream
    /// that isn't good.
    int peek();

    /// The number of characters taken by the last unformatted read, the delimiter not counted.
    int gcount() const { return count_; }

    /// Moves to the absolute offset `position` of the file; sets the bad bit if that can't be.
    istream &seekg(streampos position);

    /// The offset in the file of the next character, or -1 on a failed stream.
    streampos tellg();

    /// Skips white space, then takes a word, up to the next white space, and ends it with a NUL.
    /// The word is cut at width() - 1 characters if a width is set; the rest stays in the stream.
    /// Without a word the target, which isn't null, becomes empty and the fail bit is set.
    istream &operator>>(char *target);

  protected:
    istream() = default;

    /// The next `count` characters as they lie in the buffer's block, line ends included, or null
    /// if it hasn't that many. takeAhead() takes some of them as an unformatted read does.
    char const *ahead(std::size_t count) const {
        return rdbuf() == nullptr ? nullptr : rdbuf()->ahead(count);
    }
    void takeAhead(int count) {
        rdbuf()->skip(static_cast<std::size_t>(count));
        count_ = count;
    }

  private:
    istream &take(char *target, int limit, char delimiter, bool takeDelimiter);
    bool ready();
    void setEnd(int more);

    int count_ = 0;
};

}  // namespace classic
