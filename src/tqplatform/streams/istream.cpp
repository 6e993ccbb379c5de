#include "tqplatform/streams/istream.h"

#include <algorithm>
#include <cstdio>

namespace classic {
namespace {

bool isBlank(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

}  // namespace

bool istream::ready() {
    count_ = 0;
    if (good() && rdbuf() != nullptr) return true;
    state_ |= failbit;
    return false;
}

// Sets the end-of-file bit and `more`, and the bad bit if the end is an error.
void istream::setEnd(int more) {
    state_ |= eofbit | more | (rdbuf()->readFailed() ? badbit : goodbit);
}

istream &istream::take(char *target, int limit, char delimiter, bool takeDelimiter) {
    if (target != nullptr && limit > 0) target[0] = '\0';
    if (!ready()) return *this;
    auto const room = static_cast<std::size_t>(limit > 1 ? limit - 1 : 0);
    auto const taken = rdbuf()->takeUntil(target, room, delimiter, takeDelimiter);
    count_ = static_cast<int>(taken.count);
    if (target != nullptr && limit > 0) target[taken.count] = '\0';
    if (taken.end) setEnd(taken.count == 0 ? failbit : goodbit);
    return *this;
}

istream &istream::get(std::string &target, int limit, int delimiter) {
    target.clear();
    if (!ready()) return *this;
    auto left = static_cast<std::size_t>(limit > 1 ? limit - 1 : 0);
    streambuf::Taken taken;
    do {
        char piece[512];
        taken = rdbuf()->takeUntil(piece, std::min(left, sizeof piece),
                                   static_cast<char>(delimiter), false);
        target.append(piece, taken.count);
        left -= taken.count;
    } while (left > 0 && !taken.delimiter && !taken.end);
    count_ = static_cast<int>(target.size());
    if (taken.end) setEnd(count_ == 0 ? failbit : goodbit);
    return *this;
}

int istream::get() {
    if (!ready()) return -1;
    int const c = rdbuf()->sbumpc();
    if (c < 0) setEnd(goodbit);
    count_ = c < 0 ? 0 : 1;
    return c;
}

int istream::peek() {
    return good() && rdbuf() != nullptr ? rdbuf()->sgetc() : -1;
}

istream &istream::seekg(streampos position) {
    if (rdbuf() == nullptr || rdbuf()->seekpos(position) < 0) state_ |= badbit;
    return *this;
}

streampos istream::tellg() {
    return fail() || rdbuf() == nullptr ? -1 : rdbuf()->seekoff(0, SEEK_CUR);
}

istream &istream::operator>>(char *target) {
    int const room = width(0);
    target[0] = '\0';
    if (!ready()) return *this;
    int c = rdbuf()->sgetc();
    while (isBlank(c)) {
        rdbuf()->sbumpc();
        c = rdbuf()->sgetc();
    }
    int length = 0;
    while (c >= 0 && !isBlank(c) && (room <= 0 || length < room - 1)) {
        target[length++] = static_cast<char>(rdbuf()->sbumpc());
        c = rdbuf()->sgetc();
    }
    target[length] = '\0';
    if (c < 0) setEnd(goodbit);
    if (length == 0) state_ |= failbit;
    return *this;
}

}  // namespace classic
