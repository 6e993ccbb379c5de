#include "tqlib/records/TQFortranInput.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <type_traits>

#include "tqlib/foundation/ScanNumber.h"
#include "tqlib/foundation/SharedResult.h"
#include "tqlib/records/ColumnNumber.h"
#include "tqlib/records/NumberField.h"

namespace {

using tqlib::detail::columnReach;
using tqlib::detail::readColumn;

/// What a field is compared with to see whether it is blank.
constexpr char blanks[] = "                    ";
static_assert(sizeof blanks == 20 + 1);

/// Most characters of a line that nextline() drops, and one for the NUL.
constexpr int lineLimit = 32001;

constinit tqlib::detail::SharedResult<std::string> sharedLine;

[[gnu::destructor]] void releaseLine() {
    sharedLine.release();
}

/// A width as readftn() takes it.
int toWidth(unsigned int width) {
    return static_cast<int>(std::min(width, unsigned{INT_MAX}));
}

/// The limit of a stream's read that takes `width` characters.
int toLimit(int width) {
    return std::clamp(width, 0, INT_MAX - 1) + 1;
}

/// Makes the first point of `field` a decimal point of the locale in force if that has a comma.
void localizePoint(std::string &field) {
    std::size_t const point = field.find('.');
    if (point != std::string::npos && tqlib::detail::decimalPointByte() == ',') field[point] = ',';
}

}  // namespace

TQFortranInput::TQFortranInput() = default;

TQFortranInput::TQFortranInput(char const *name)
    : classic::ifstream(name, in | nocreate), name_(name) {}

TQFortranInput::~TQFortranInput() = default;

inline void TQFortranInput::makeGood() {
    Lock const lock(*this);
    clear();
}

// Takes a field, which may be cut short by the end of the line.
std::string TQFortranInput::take(int width) {
    std::string field;
    makeGood();
    get(field, toLimit(width));
    return field;
}

// The next field where it lies in the stream's block, or null if it isn't all there. The end of the
// line may be in it.
[[gnu::always_inline]] inline char const *TQFortranInput::fieldAhead(int width) const {
    return width <= 0 ? nullptr : ahead(static_cast<unsigned int>(width) + columnReach);
}

// Takes the field that was ahead.
[[gnu::always_inline]] inline void TQFortranInput::takeField(int width) {
    makeGood();
    takeAhead(width);
}

// Takes a field and converts it; a field of blanks is 0.
template <typename Value>
[[gnu::noinline]] Value TQFortranInput::convert(int width) {
    std::string field = take(width);
    if (field.empty()) return 0;
    if constexpr (std::is_floating_point_v<Value>) localizePoint(field);
    Value value = 0;
    if (tqlib::detail::scanNumber(field.c_str(), value) == 1) return value;
    auto const length = static_cast<std::size_t>(width);
    if (std::strncmp(field.c_str(), blanks, length) != 0) throw Failure();
    return 0;
}

template <typename Number>
[[gnu::always_inline]] inline int TQFortranInput::readWhole(Number *target, int width) {
    using Value = typename tqlib::detail::Converted<Number>::Type;
    char const *const field = fieldAhead(width);
    Value value;
    if (field != nullptr && readColumn(field, static_cast<unsigned int>(width), value))
        takeField(width);
    else
        value = convert<Value>(width);
    *target = static_cast<Number>(value);
    return 0;
}

[[gnu::always_inline]] inline int TQFortranInput::readReal(double *target, int width,
                                                           unsigned int decimals) {
    char const *const field = fieldAhead(width);
    char const point = tqlib::detail::decimalPoint();
    double value;
    if (field != nullptr && (point == '.' || point == ',') &&
        readColumn(field, static_cast<unsigned int>(width), decimals, value))
        takeField(width);
    else
        value = convert<double>(width);
    *target = value;
    return 0;
}

int TQFortranInput::readftn(long *target, int width) {
    return readWhole(target, width);
}
int TQFortranInput::readftn(unsigned long *target, int width) {
    return readWhole(target, width);
}
int TQFortranInput::readftn(int *target, int width) {
    return readWhole(target, width);
}
int TQFortranInput::readftn(short *target, int width) {
    return readWhole(target, width);
}
int TQFortranInput::readftn(unsigned short *target, int width) {
    return readWhole(target, width);
}

int TQFortranInput::readftn(double *target, int width, double decimals) {
    bool const known = decimals >= 1 && decimals < width;
    return readReal(target, width, known ? static_cast<unsigned int>(decimals) : 0);
}

int TQFortranInput::readftn(char *target, int width) {
    makeGood();
    get(target, toLimit(width));
    return 0;
}

int TQFortranInput::readftn(unsigned char *target, int width) {
    return readftn(reinterpret_cast<char *>(target), width);
}

int TQFortranInput::readftn(TQString &target, int width) {
    target = take(width).c_str();
    target.ConvertDosToWindows();
    return 0;
}

int TQFortranInput::readftn(char &target) {
    makeGood();
    target = static_cast<char>(get());
    return 0;
}

int TQFortranInput::A(unsigned int width, char *target) {
    return readftn(target, toWidth(width));
}
int TQFortranInput::A(unsigned int width, TQString &target) {
    return readftn(target, toWidth(width));
}
int TQFortranInput::I(unsigned int width, short &target) {
    return readftn(&target, toWidth(width));
}
int TQFortranInput::I(unsigned int width, int &target) {
    return readftn(&target, toWidth(width));
}
int TQFortranInput::I(unsigned int width, long &target) {
    return readftn(&target, toWidth(width));
}
int TQFortranInput::F(unsigned int width, int decimals, double &target) {
    return readReal(&target, toWidth(width), static_cast<unsigned int>(decimals));
}

int TQFortranInput::X(unsigned int count) {
    return readftn(static_cast<char *>(nullptr), toWidth(count));
}

void TQFortranInput::nextline() {
    Lock const lock(*this);
    clear();
    getline(nullptr, lineLimit);
    clear();
    lineStart_ = tellg();
    ++lineNo_;
}

void TQFortranInput::reReadLine() {
    Lock const lock(*this);
    clear();
    seekg(lineStart_);
}

char const *TQFortranInput::currentLine() {
    std::string &text = sharedLine.get();
    reReadLine();
    text.clear();
    for (int c = get(); c >= 0 && c != '\n'; c = get())
        text += static_cast<char>(c);
    return text.c_str();
}
