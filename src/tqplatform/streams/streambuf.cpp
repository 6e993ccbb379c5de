#include "tqplatform/streams/streambuf.h"

#include <algorithm>

namespace classic {

streambuf::~streambuf() = default;

// True if the read position stands on CR LF that is to be read as one newline.
bool streambuf::atCrLf() {
    if (!text_ || *next_ != '\r') return false;
    if (next_ + 1 == readEnd_ && !fill()) return false;
    return next_[1] == '\n';
}

int streambuf::peekSlowly() {
    if (next_ == readEnd_ && !fill()) return -1;
    if (atCrLf()) return '\n';
    return readFailed_ ? -1 : static_cast<unsigned char>(*next_);  // what follows a CR isn't known
}

int streambuf::sbumpc() {
    int const c = sgetc();
    if (c >= 0) next_ += c == '\n' && *next_ == '\r' ? 2 : 1;
    return c;
}

std::size_t streambuf::putSlowly(char const *text, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        if (write_ == writeEnd_ && !drain()) break;
        std::size_t const part =
            std::min(count - done, static_cast<std::size_t>(writeEnd_ - write_));
        std::memcpy(write_, text + done, part);
        write_ += part;
        done += part;
    }
    return done;
}

streambuf::Taken streambuf::takeUntil(char *target, std::size_t limit, char delimiter,
                                      bool takeDelimiter) {
    // A line end is the only translation, so any other delimiter goes through the plain road.
    if (text_ && delimiter != '\n') return takeTranslated(target, limit, delimiter, takeDelimiter);

    Taken taken;
    while (taken.count < limit) {
        if (next_ == readEnd_ && !fill()) {
            taken.end = true;
            return taken;
        }
        Segment const segment = nextSegment(limit - taken.count, delimiter);
        auto const length = static_cast<std::size_t>(segment.end - next_);
        if (target != nullptr) std::memcpy(target + taken.count, next_, length);
        taken.count += length;
        next_ = segment.end;
        taken.end = length == 0 && readFailed_;  // what follows a CR isn't known
        if (taken.end) return taken;
        if (segment.behindDelimiter != nullptr) {
            taken.delimiter = true;
            if (takeDelimiter) next_ = segment.behindDelimiter;
            return taken;
        }
    }
    // Full. A delimiter directly behind belongs to what was taken.
    if (takeDelimiter) {
        int const c = sgetc();
        taken.end = c < 0;
        taken.delimiter = c == static_cast<unsigned char>(delimiter);
        if (taken.delimiter) sbumpc();
    }
    return taken;
}

// The run of at most `room` characters before the delimiter, within the block that is there. It is
// empty only in front of a delimiter, or while a CR at the end of the block waits for what follows.
streambuf::Segment streambuf::nextSegment(std::size_t room, char delimiter) {
    std::size_t const window = std::min(static_cast<std::size_t>(readEnd_ - next_), room);
    char *const found = static_cast<char *>(std::memchr(next_, delimiter, window));
    char *end = found != nullptr ? found : next_ + window;
    Segment segment{end, found != nullptr ? found + 1 : nullptr};
    if (!text_ || end == next_ || end[-1] != '\r') return segment;

    if (found == nullptr && end == readEnd_) {
        // What follows decides whether this CR ends the line. fill() moves the block.
        if (window > 1) return {end - 1, nullptr};
        bool const isText = !fill() && !readFailed_;
        return {next_ + (isText ? 1 : 0), nullptr};
    }
    if (*end == delimiter) return {end - 1, end + 1};
    return segment;
}

streambuf::Taken streambuf::takeTranslated(char *target, std::size_t limit, char delimiter,
                                           bool takeDelimiter) {
    Taken taken;
    auto const stops = [=](char c) { return c == delimiter || c == '\r'; };
    while (taken.count < limit || takeDelimiter) {
        std::size_t const window =
            std::min(static_cast<std::size_t>(readEnd_ - next_), limit - taken.count);
        char *const end = std::find_if(next_, next_ + window, stops);
        if (target != nullptr) std::copy(next_, end, target + taken.count);
        taken.count += static_cast<std::size_t>(end - next_);
        next_ = end;
        if (taken.count == limit && !takeDelimiter) break;
        int const c = sgetc();
        taken.end = c < 0;
        taken.delimiter = c == static_cast<unsigned char>(delimiter);
        if (taken.delimiter && takeDelimiter) sbumpc();
        if (taken.end || taken.delimiter || taken.count == limit) return taken;
        if (target != nullptr) target[taken.count] = static_cast<char>(c);
        ++taken.count;
        sbumpc();
    }
    return taken;
}

}  // namespace classic
