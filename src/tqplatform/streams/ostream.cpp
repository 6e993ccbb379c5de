#include "tqplatform/streams/ostream.h"

#include <charconv>
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
    if (!fail() && (rdbuf() == nullptr || rdbuf()->sync() != 0)) state_ |= badbit;
    return *this;
}

ostream &ostream::seekp(streampos position) {
    if (!fail() && (rdbuf() == nullptr || rdbuf()->seekpos(position) < 0)) state_ |= badbit;
    return *this;
}

streampos ostream::tellp() {
    return fail() || rdbuf() == nullptr ? -1 : rdbuf()->seekoff(0, SEEK_CUR);
}

ostream &ostream::operator<<(char const *text) {
    return text == nullptr ? *this : write(std::string_view(text));
}

ostream &ostream::operator<<(long long value) {
    return putWhole(*this, value);
}

ostream &ostream::operator<<(unsigned long long value) {
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
