#include "tqplatform/streams/ostream.h"

#include <charconv>
#include <climits>
#include <cstdio>

namespace classic {
namespace {

template <typename Number>
ostream &putWhole(ostream &stream, Number value) {
    char digits[24];
    auto const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return stream.write(digits, static_cast<int>(end - digits));
}

}  // namespace

ostream &ostream::flush() {
    if (!fail() && rdbuf()->sync() != 0) state_ |= badbit;
    return *this;
}

ostream &ostream::seekp(streampos position) {
    if (!fail() && rdbuf()->seekpos(position) < 0) state_ |= badbit;
    return *this;
}

streampos ostream::tellp() {
    return fail() ? -1 : rdbuf()->seekoff(0, SEEK_CUR);
}

ostream &ostream::operator<<(char const *text) {
    if (text == nullptr) return *this;
    std::size_t left = std::strlen(text);
    while (left > INT_MAX) {
        write(text, INT_MAX);
        text += INT_MAX;
        left -= INT_MAX;
    }
    return write(text, static_cast<int>(left));
}

ostream &ostream::operator<<(long value) {
    return putWhole(*this, value);
}

ostream &ostream::operator<<(unsigned long value) {
    return putWhole(*this, value);
}

ostream &ostream::operator<<(double value) {
    char text[32];
    return write(text, std::snprintf(text, sizeof text, "%g", value));
}

ostream &endl(ostream &stream) {
    return stream.put('\n').flush();
}

}  // namespace classic
