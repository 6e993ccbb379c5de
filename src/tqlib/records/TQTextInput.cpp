#include "tqlib/records/TQTextInput.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "tqlib/records/NumberField.h"

namespace {

using tqlib::detail::assignText;
using tqlib::detail::NumberReading;

constexpr char blank = ' ';
constexpr char doubleQuote = '"';
constexpr char separators[] = " =";

bool separates(char c) {
    return c == blank || c == '=';
}

bool isOneOf(std::string_view set, char c) {
    return set.find(c) != std::string_view::npos;
}

}  // namespace

TQTextInput::TQTextInput() = default;

TQTextInput::TQTextInput(char const *name, int ascii)
    : classic::ifstream(name, in | nocreate), ascii_(ascii), name_(name) {}

TQTextInput::~TQTextInput() = default;

void TQTextInput::nextline() {
    position_ = buffer_.fetch(*this);
    ++lineNo_;
}

char const *TQTextInput::currentLine() {
    toLine();
    return buffer_.begin();
}

int TQTextInput::setAscii(int ascii) {
    return std::exchange(ascii_, ascii);
}

void TQTextInput::toLine() {
    if (position_ == nullptr) nextline();
}

void TQTextInput::toItem() {
    toLine();
    position_ += std::strspn(position_, separators);
}

// Gathers the next number, cut to its room; null at the end of the line.
char *TQTextInput::getNumber(char *field) {
    toItem();
    if (*position_ == '\0') return nullptr;
    std::size_t const length = std::strcspn(position_, separators);
    tqlib::detail::gatherNumber(field, position_, position_ + length);
    position_ += length;
    return field;
}

// Takes a number of the form `Form` where it stands on the line. False, with nothing taken, if the
// item has another form or there is no line yet.
template <typename Form, typename Value>
[[gnu::always_inline]] inline bool TQTextInput::readInPlace(Value &value) {
    char const point = tqlib::detail::pointInPlace<Value>(separates);
    char *item = position_;
    if (item == nullptr || point == '\0') return false;
    while (separates(*item))
        ++item;
    char *const end = Form::read(item, point, separates, value);
    if (end == nullptr) return false;
    position_ = end;
    return true;
}

TQTextInput &TQTextInput::operator>>(double *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(float *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(long *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(short *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(int *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(unsigned long *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(unsigned short *target) {
    return NumberReading::read(*this, target);
}
TQTextInput &TQTextInput::operator>>(unsigned int *target) {
    return NumberReading::read(*this, target);
}

// The characters of `quotes` strip themselves.
TQTextInput &TQTextInput::readText(CString &target, std::string_view quotes) {
    constexpr char stoppers[] = " =\"'";
    target.Empty();
    toItem();
    position_ += isOneOf(quotes, *position_);
    if (*position_ == '\0') throw Failure();
    char *const end = position_ + std::strcspn(position_, stoppers);
    assignText(target, position_, end);
    position_ = end + isOneOf(quotes, *end);
    return *this;
}

TQTextInput &TQTextInput::operator>>(TQString &target) {
    return readText(target, "\"'");
}

TQTextInput &TQTextInput::operator>>(CString &target) {
    return readText(target, "\"");
}

TQTextInput &TQTextInput::operator>>(char *target) {
    constexpr char stoppers[] = " =\"";
    toLine();
    position_ += *position_ == blank;
    position_ += *position_ == doubleQuote;
    if (*position_ == '\0') throw Failure();
    char *const end = position_ + std::strcspn(position_, stoppers);
    assignText(target, position_, end);
    position_ = end + (*end == doubleQuote);
    return *this;
}
