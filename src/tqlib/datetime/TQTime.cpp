#include "tqlib/datetime/TQTime.h"

#include <ctime>
#include <iterator>
#include <utility>

#include "tqlib/datetime/TextForm.h"

namespace {

using tqlib::detail::Columns;
using tqlib::detail::FormUse;
using tqlib::detail::isFor;

constexpr int secondsOfDay = 86400;
constexpr int wordRoom = 20;  // of a word read from a stream, its NUL included

/// A text form: how many of hour, minute, second and thousandths it has, whether separators stand
/// between them, and where it is written and read.
struct Form {
    int fields;
    bool separated;
    FormUse written;
    FormUse read;
};

constexpr Form forms[] = {
    {2, true, FormUse::everywhere, FormUse::everywhere},     // HH:MM
    {3, true, FormUse::everywhere, FormUse::everywhere},     // HH:MM:SS
    {4, true, FormUse::everywhere, FormUse::everywhere},     // HH:MM:SS:TTT
    {4, false, FormUse::everywhere, FormUse::everywhere},    // HHMMSSTTT
    {2, false, FormUse::stringsOnly, FormUse::stringsOnly},  // HHMM
    {3, false, FormUse::stringsOnly, FormUse::none},         // HHMMSS
    {0, false, FormUse::none, FormUse::none},
};
constexpr int noForm = 6;

// Columns of hour, minute, second and thousandths.
constexpr unsigned columnsOf[] = {2, 2, 2, 3};

Form const &formOf(int format) {
    return forms[format >= 0 && format < noForm ? format : noForm];
}

// Writes the time and a NUL to `target`, which has room for textFormRoom characters.
void writeText(char *target, TQTime const &time, bool isString) {
    Form const &form = formOf(time.getFormat());
    int const values[] = {time.hour(), time.minute(), time.second(), time.thousands()};
    int const fields = isFor(form.written, isString) ? form.fields : 0;
    for (int i = 0; i < fields; ++i) {
        if (form.separated && i > 0) *target++ = time.getSeparator();
        target = tqlib::detail::putNumber(target, values[i], columnsOf[i], '0');
    }
    *target = '\0';
}

}  // namespace

TQTime::TQTime() : TQTime(0, 0, 0, 0) {
    now();
}

TQTime::TQTime(int hour, int minute, int second, int thousands) : format_(1), separator_(':') {
    set(hour, minute, second, thousands);
}

TQTime::TQTime(long seconds) : TQTime(0, 0, 0, 0) {
    auto const bits = static_cast<unsigned long>(seconds);
    unsigned long const magnitude = seconds < 0 ? 0 - bits : bits;
    setSecond(static_cast<int>(magnitude % secondsOfDay),
              static_cast<std::int64_t>(magnitude / secondsOfDay));
    seconds_ = static_cast<long>(magnitude);
}

TQTime::TQTime(char const *text, int format) : TQTime(0, 0, 0, 0) {
    format_ = format;
    *this = text;
}

TQTime::TQTime(TQTime const &other) {
    *this = other;
}

TQTime &TQTime::operator=(TQTime const &other) {
    hour_ = other.hour_;
    minute_ = other.minute_;
    second_ = other.second_;
    thousands_ = other.thousands_;
    overflow_ = other.overflow_;
    format_ = other.format_;
    separator_ = other.separator_;
    seconds_ = getSeconds();
    return *this;
}

void TQTime::split(int *hour, int *minute, int *second, int *thousands) const {
    *hour = hour_;
    *minute = minute_;
    *second = second_;
    *thousands = thousands_;
}

void TQTime::set(int hour, int minute, int second, int thousands) {
    hour_ = hour;
    minute_ = minute;
    second_ = second;
    thousands_ = thousands;
    overflow_ = 0;
    seconds_ = getSeconds();
}

void TQTime::now() {
    std::time_t const moment = std::time(nullptr);
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr) return;
    int const overflow = overflow_;
    set(local.tm_hour, local.tm_min, local.tm_sec, 0);
    overflow_ = overflow;
}

// Sets hour, minute, second and overflow from `seconds` since midnight.
void TQTime::setTotal(std::int64_t seconds) {
    int const rest = static_cast<int>(seconds % secondsOfDay);
    bool const isBefore = rest < 0;
    setSecond(isBefore ? rest + secondsOfDay : rest, seconds / secondsOfDay - (isBefore ? 1 : 0));
}

void TQTime::setSecond(int second, std::int64_t days) {
    set(second / 3600, second / 60 % 60, second % 60, thousands_);
    overflow_ = static_cast<int>(days);
}

// The time `seconds` later, which may be any number: a sum beyond 64 bits wraps.
TQTime TQTime::moved(std::int64_t seconds) const {
    TQTime result(*this);
    result.setTotal(static_cast<std::int64_t>(static_cast<std::uint64_t>(secondsOfFields()) +
                                              static_cast<std::uint64_t>(seconds)));
    return result;
}

int TQTime::setFormat(int format) {
    return std::exchange(format_, format);
}

char TQTime::setSeparator(char separator) {
    return std::exchange(separator_, separator);
}

void TQTime::add(int hours, int minutes, int seconds, int thousands) {
    std::int64_t const all =
        3600 * std::int64_t{hours} + 60 * std::int64_t{minutes} + std::int64_t{seconds};
    thousands_ = static_cast<int>((std::int64_t{thousands_} + thousands) % 1000);
    setTotal(secondsOfFields() + all);
}

TQTime::operator char *() const {
    static char text[tqlib::detail::textFormRoom];
    writeText(text, *this, false);
    return text;
}

TQTime::operator TQString() const {
    char text[tqlib::detail::textFormRoom];
    writeText(text, *this, true);
    return text;
}

void TQTime::read(char const *text, bool isString) {
    Form const &form = formOf(format_);
    if (!isFor(form.read, isString)) {
        hour_ = minute_ = 0;
    } else {
        int values[std::size(columnsOf)] = {};
        Columns columns(text);
        for (int i = 0; i < form.fields; ++i) {
            if (form.separated && i > 0) columns.skip();
            values[i] = columns.take(columnsOf[i]);
        }
        hour_ = values[0];
        minute_ = values[1];
        second_ = values[2];
        thousands_ = values[3];
    }
    seconds_ = getSeconds();
}

TQTime &TQTime::operator=(char const *text) {
    read(text, false);
    return *this;
}

TQTime &TQTime::operator=(CString const &text) {
    read(text, true);
    return *this;
}

TQTime TQTime::operator+(TQTime const &other) const {
    return moved(other.seconds_);
}

TQTime TQTime::operator-(TQTime const &other) const {
    return *this - other.seconds_;
}

TQTime TQTime::operator+(long seconds) const {
    return moved(seconds);
}

TQTime TQTime::operator-(long seconds) const {
    return moved(static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(seconds)));
}

classic::ostream &operator<<(classic::ostream &stream, TQTime const &time) {
    return stream << static_cast<char const *>(time.operator char *());
}

classic::istream &operator>>(classic::istream &stream, TQTime &time) {
    return tqlib::detail::readWord<wordRoom>(stream, time);
}
