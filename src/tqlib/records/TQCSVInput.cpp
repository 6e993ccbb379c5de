#include "tqlib/records/TQCSVInput.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "tqlib/foundation/ScanNumber.h"
#include "tqplatform/runtime/CRuntime.h"

namespace {

using tqlib::detail::BlockwiseDigits;
using tqlib::detail::LineBuffer;

constexpr std::ptrdiff_t longestNumber = 199;  // characters of a number field
constexpr std::size_t numberFieldSize = longestNumber + 1;
constexpr char semicolon = ';';
constexpr char doubleQuote = '"';

/// The size reported while no file is open: -1 as an unsigned number of 32 bits.
constexpr std::uint32_t noFileLength = 0xFFFFFFFF;

static_assert(LineBuffer::padding >= BlockwiseDigits::padding);

/// What an empty number field counts as.
constexpr std::string_view zeroField = "0";

/// Characters that a plain number is made of, but for the decimal point.
constexpr std::string_view numberCharacters = "0123456789+-eExX";

/// The type that sscanf converts to: the short types take the low bits of an int.
template <typename Number>
struct Converted {
    using Type = Number;
};
template <>
struct Converted<short> {
    using Type = int;
};
template <>
struct Converted<unsigned short> {
    using Type = unsigned int;
};

void assignText(CString &target, char const *first, char const *end) {
    auto const length = static_cast<int>(end - first);
    std::memcpy(target.GetBufferSetLength(length), first, static_cast<std::size_t>(length));
}

void assignText(char *target, char const *first, char const *end) {
    auto const length = static_cast<std::size_t>(end - first);
    std::memcpy(target, first, length);
    target[length] = '\0';
}

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
    Lock const lock(*this);
    clear();
    buffer_.clear();
    getline(buffer_.begin(), LineBuffer::size);
    position_ = buffer_.begin();
    if (*position_ == '\0') clear(eofbit);
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
    assignText(field, position_, position_ + std::min(length, numberFieldSize - 1));
    position_ += length;
    return field;
}

// Reads a plain number where it stands on the line, with the result that the gathered field would
// give. False, with nothing taken, if it needs the gathered field.
template <typename Value>
[[gnu::always_inline]] inline bool TQCSVInput::readInPlace(Value &value) {
    char const separator = cTrennzeichen_;
    char *field = position_;
    if (!plainSeparator_ || field == nullptr) return false;
    char point = '\0';
    if constexpr (std::is_floating_point_v<Value>) {
        point = tqlib::detail::decimalPoint();
        if (point == separator) return false;
    }
    field += *field == separator;
    char *start = field;
    if (*start <= ' ')
        while (tqlib::detail::isWhiteSpace(*start) && *start != separator)
            ++start;
    char const *const behind = tqlib::detail::readPlainNumber<BlockwiseDigits>(start, point, value);
    if (behind == nullptr || behind - field > longestNumber) return false;
    char *end = field + (behind - field);
    while (*end != separator && *end != '\0')
        ++end;
    position_ = end;
    ++fieldNo_;
    return true;
}

// Reads a number as readInPlace() does if a short one is all that the field has.
template <typename Value>
[[gnu::always_inline]] inline bool TQCSVInput::readShort(Value &value) {
    if (std::is_same_v<Value, float>) return false;
    char point = '\0';
    if constexpr (std::is_floating_point_v<Value>) {
        point = tqlib::detail::decimalPoint();
        if (point == '\0') return false;
    }
    char const separator = cTrennzeichen_;
    char *start = position_;
    if (!plainSeparator_ || start == nullptr || point == separator) return false;
    if (*start == separator) [[likely]]
        ++start;
    char const *const behind = tqlib::detail::readShortNumber(start, point, separator, value);
    if (behind == nullptr) return false;
    position_ = start + (behind - start);
    ++fieldNo_;
    return true;
}

// Reads the number out of the gathered field.
template <typename Value>
void TQCSVInput::readGathered(Value &value) {
    char field[numberFieldSize];
    if (getNumber(field) == nullptr) throw Failure();
    if (tqlib::detail::scanNumber(field, value) != 1) throw Failure();
}

template <typename Number>
[[gnu::noinline]] TQCSVInput &TQCSVInput::readAnyNumber(Number *target) {
    typename Converted<Number>::Type value{};
    if (!readInPlace(value)) readGathered(value);
    *target = static_cast<Number>(value);
    return *this;
}

template <typename Number>
TQCSVInput &TQCSVInput::readNumber(Number *target) {
    typename Converted<Number>::Type value{};
    if (!readShort(value)) return readAnyNumber(target);
    *target = static_cast<Number>(value);
    return *this;
}

TQCSVInput &TQCSVInput::operator>>(double *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(float *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(long *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(short *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(int *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(unsigned long *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(unsigned short *target) {
    return readNumber(target);
}
TQCSVInput &TQCSVInput::operator>>(unsigned int *target) {
    return readNumber(target);
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
