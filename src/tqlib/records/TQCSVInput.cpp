#include "tqlib/records/TQCSVInput.h"

#include <cstdint>
#include <string_view>

#include "tqlib/records/NumberField.h"
#include "tqplatform/runtime/CRuntime.h"

namespace {

using tqlib::detail::assignText;
using tqlib::detail::LineBuffer;
using tqlib::detail::NumberReading;

constexpr char semicolon = ';';
constexpr char doubleQuote = '"';

/// The size reported while no file is open: -1 as an unsigned number of 32 bits.
constexpr std::uint32_t noFileLength = 0xFFFFFFFF;

/// What an empty number field counts as.
constexpr std::string_view zeroField = "0";

/// Characters that a plain number is made of, but for the decimal point.
constexpr std::string_view numberCharacters = "0123456789+-eExX";

}  // namespace

TQCSVInput::TQCSVInput() {
    Init();
}

TQCSVInput::TQCSVInput(char const *name, int ascii, int quoted, char /*unread*/, char separator,
                       char decimal)
    : classic::ifstream(name, in | nocreate), name_(name) {
    Init();
    quoted_ = quoted;
    ascii_ = ascii;
    if (decimal != 0) cDezimalzeichen_ = decimal;
    if (separator != 0) setSeparator(separator);
}

TQCSVInput::~TQCSVInput() = default;

void TQCSVInput::Init() {
    lineNo_ = 0;
    buffer_ = LineBuffer::make();
    position_ = nullptr;
    ascii_ = 0;
    setSeparator(semicolon);
    cDezimalzeichen_ = tqlib::detail::decimalPointByte();
    quoted_ = 1;
    cQuote_ = doubleQuote;
    fieldNo_ = 0;
}

void TQCSVInput::setSeparator(char separator) {
    cTrennzeichen_ = separator;
    plainSeparator_ = numberCharacters.find(separator) == std::string_view::npos;
}

void TQCSVInput::nextline() {
    position_ = buffer_.fetch(*this);
    ++lineNo_;
    fieldNo_ = 0;
}

void TQCSVInput::ReadLine(CString &target) {
    nextline();
    target = buffer_.begin();
}

char const *TQCSVInput::currentLine() {
    if (position_ == nullptr) nextline();
    return buffer_.begin();
}

void TQCSVInput::Reset(int state) {
    Lock const lock(*this);
    clear(state);
    seekg(0);
    lineNo_ = 0;
}

int TQCSVInput::setAscii(int ascii) {
    return std::exchange(ascii_, ascii);
}

unsigned long TQCSVInput::getFileLength() const {
    long const length = rdbuf() == nullptr ? -1 : _filelength(rdbuf()->fd());
    return length < 0 ? noFileLength : static_cast<unsigned long>(length);
}

// Moves over the separator that ended the field before, and no more. It isn't known whether there
// was a field before, so a separator at the start of a line goes the same way.
void TQCSVInput::skipSeparator() {
    if (position_ == nullptr) nextline();
    if (*position_ == cTrennzeichen_) ++position_;
}

// Gathers the next number field, cut to its room; null at the end of the line.
char *TQCSVInput::getNumber(char *field) {
    skipSeparator();
    if (*position_ == '\0') return nullptr;
    ++fieldNo_;
    if (*position_ == cTrennzeichen_) {  // empty, which counts as 0
        assignText(field, zeroField.begin(), zeroField.end());
        return field;
    }
    char const separators[] = {cTrennzeichen_, '\0'};
    std::size_t const length = std::strcspn(position_, separators);
    tqlib::detail::gatherNumber(field, position_, position_ + length);
    position_ += length;
    return field;
}

// Takes a number of the form `Form` where it stands on the line. False, with nothing taken, if the
// field has another form or there is no line yet.
template <typename Form, typename Value>
[[gnu::always_inline]] inline bool TQCSVInput::readInPlace(Value &value) {
    auto const separates = [separator = cTrennzeichen_](char c) { return c == separator; };
    char const point = tqlib::detail::pointInPlace<Value>(separates);
    char *field = position_;
    if (!plainSeparator_ || field == nullptr || point == '\0') return false;
    if (separates(*field)) [[likely]]
        ++field;
    char *const end = Form::read(field, point, separates, value);
    if (end == nullptr) return false;
    position_ = end;
    ++fieldNo_;
    return true;
}

TQCSVInput &TQCSVInput::operator>>(double *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(float *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(long *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(short *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(int *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(unsigned long *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(unsigned short *target) {
    return NumberReading::read(*this, target);
}
TQCSVInput &TQCSVInput::operator>>(unsigned int *target) {
    return NumberReading::read(*this, target);
}

// Moves to the next text field, behind its opening quote; false at the end of the line.
bool TQCSVInput::toTextField() {
    skipSeparator();
    if (*position_ == cQuote_) ++position_;
    if (*position_ == '\0') return false;
    ++fieldNo_;
    return true;
}

template <typename Text>
TQCSVInput &TQCSVInput::readText(Text &target) {
    if (!toTextField()) throw Failure();
    char const stoppers[] = {cTrennzeichen_, cQuote_, '\0'};
    bool const empty = *position_ == cTrennzeichen_;
    char *const end = empty ? position_ : position_ + std::strcspn(position_, stoppers);
    assignText(target, position_, end);
    position_ = !empty && *end == cQuote_ ? end + 1 : end;
    return *this;
}

TQCSVInput &TQCSVInput::operator>>(CString &target) {
    target.Empty();
    return readText(target);
}

TQCSVInput &TQCSVInput::operator>>(TQString &target) {
    return *this >> static_cast<CString &>(target);
}

TQCSVInput &TQCSVInput::operator>>(char *target) {
    return readText(target);
}
