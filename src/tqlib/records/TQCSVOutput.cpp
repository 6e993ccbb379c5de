#include "tqlib/records/TQCSVOutput.h"

#include <cstring>
#include <utility>

#include "tqlib/foundation/FormatNumber.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

constexpr std::size_t numberFieldSize = 200;  // its NUL included
constexpr char semicolon = ';';
constexpr char doubleQuote = '"';

// The length of a number text without the zeros behind its last decimal character.
std::size_t lengthWithoutZeros(std::string_view text, char decimal) {
    std::size_t const point = decimal == '\0' ? std::string_view::npos : text.rfind(decimal);
    if (point == std::string_view::npos) return text.size();
    std::size_t length = text.size();
    while (length > point + 1 && text[length - 1] == '0')
        --length;
    return length;
}

}  // namespace

TQCSVOutput::TQCSVOutput() {
    Init();
}

TQCSVOutput::TQCSVOutput(char const *name, int ascii, int quoted, char /*unread*/, int separated,
                         char separator, char decimal)
    : classic::ofstream(name, out), name_(name) {
    Init();
    quoted_ = quoted;
    ascii_ = ascii;
    separated_ = separated;
    if (decimal != 0) cDezimalzeichen_ = decimal;
    if (separator != 0) cTrennzeichen_ = separator;
}

TQCSVOutput::~TQCSVOutput() = default;

void TQCSVOutput::Init() {
    firstField_ = 1;
    ascii_ = 0;
    separated_ = 1;
    cTrennzeichen_ = semicolon;
    cDezimalzeichen_ = tqlib::detail::decimalPointByte();
    quoted_ = 1;
    cQuote_ = doubleQuote;
}

int TQCSVOutput::setAscii(int ascii) {
    return std::exchange(ascii_, ascii);
}

void TQCSVOutput::ZeroCheck(char *text) const {
    if (text != nullptr) text[lengthWithoutZeros(text, cDezimalzeichen_)] = '\0';
}

void TQCSVOutput::check() const {
    if (fail()) throw Failure();
}

bool TQCSVOutput::separatorIsDue() const {
    return firstField_ == 0 && separated_ != 0;
}

void TQCSVOutput::startField() {
    if (separatorIsDue()) put(cTrennzeichen_);
    firstField_ = 0;
}

// Forms a field where it is going to be written. `form` gets the place for the text and gives the
// place behind it, or null if it needs another way. False if nothing has happened.
template <typename Form>
bool TQCSVOutput::writeInPlace(Form form) {
    char *const start = room(1 + tqlib::detail::plainNumberRoom);
    if (start == nullptr) return false;
    *start = cTrennzeichen_;
    char *const end = form(start + (separatorIsDue() ? 1 : 0));
    if (end == nullptr) return false;
    firstField_ = 0;
    ios::rdbuf()->taken(static_cast<std::size_t>(end - start));
    return true;
}

TQCSVOutput &TQCSVOutput::writeField(std::string_view text) {
    startField();
    write(text);
    check();
    return *this;
}

template <typename Whole>
TQCSVOutput &TQCSVOutput::writeWhole(Whole value) {
    auto const form = [value](char *target) { return tqlib::detail::formatNumber(target, value); };
    return writeInPlace(form) ? *this : writeAnyWhole(value);
}

template <typename Whole>
[[gnu::noinline]] TQCSVOutput &TQCSVOutput::writeAnyWhole(Whole value) {
    char digits[tqlib::detail::plainNumberRoom];
    char const *const end = tqlib::detail::formatNumber(digits, value);
    return writeField({digits, static_cast<std::size_t>(end - digits)});
}

TQCSVOutput &TQCSVOutput::writeReal(double value) {
    // The zeros go if the character to look for is the decimal point that comes.
    char const point = tqlib::detail::decimalPoint();
    bool const trim = point == cDezimalzeichen_;
    auto const form = [=](char *target) {
        return tqlib::detail::formatPlainNumber(target, value, point, trim);
    };
    if (trim && writeInPlace(form)) return *this;
    return writeAnyReal(value);
}

[[gnu::noinline]] TQCSVOutput &TQCSVOutput::writeAnyReal(double value) {
    char field[numberFieldSize];
    std::size_t const length = tqlib::detail::formatSixDecimals(field, sizeof field, value);
    return writeField({field, lengthWithoutZeros({field, length}, cDezimalzeichen_)});
}

TQCSVOutput &TQCSVOutput::operator<<(double value) {
    return writeReal(value);
}
TQCSVOutput &TQCSVOutput::operator<<(float value) {
    return writeReal(static_cast<double>(value));
}
TQCSVOutput &TQCSVOutput::operator<<(long value) {
    return writeWhole(value);
}
TQCSVOutput &TQCSVOutput::operator<<(int value) {
    return writeWhole(value);
}
TQCSVOutput &TQCSVOutput::operator<<(short value) {
    return writeWhole(value);
}
TQCSVOutput &TQCSVOutput::operator<<(unsigned long value) {
    return writeWhole(value);
}
TQCSVOutput &TQCSVOutput::operator<<(unsigned int value) {
    return writeWhole(value);
}
TQCSVOutput &TQCSVOutput::operator<<(unsigned short value) {
    return writeWhole(value);
}

TQCSVOutput &TQCSVOutput::operator<<(char value) {
    startField();
    if (value != '\0') put(value);
    check();
    return *this;
}

TQCSVOutput &TQCSVOutput::operator<<(unsigned char value) {
    return *this << static_cast<char>(value);
}

TQCSVOutput &TQCSVOutput::writeText(std::string_view text) {
    startField();
    if (quoted_ != 0) put(cQuote_);
    check();
    write(text);
    check();
    if (quoted_ != 0) put(cQuote_);
    check();
    return *this;
}

TQCSVOutput &TQCSVOutput::operator<<(char const *text) {
    return writeText(text == nullptr ? std::string_view() : std::string_view(text));
}

TQCSVOutput &TQCSVOutput::operator<<(TQString const &text) {
    return writeText(text.text());
}

TQCSVOutput &TQCSVOutput::operator<<(CString const &text) {
    return writeText(text.text());
}

void TQCSVOutput::nextline() {
    if (separated_ != 0) put(cTrennzeichen_);
    put('\n');
    check();
    firstField_ = 1;
}
