#include "tqlib/datetime/TQDate.h"

#include <array>
#include <cstdint>
#include <ctime>
#include <iterator>
#include <utility>

#include "tqlib/datetime/TextForm.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

using tqlib::detail::Columns;
using tqlib::detail::FormUse;
using tqlib::detail::isFor;
using tqlib::detail::putNumber;
using tqlib::detail::putPair;
using tqlib::detail::textFormRoom;

constexpr int commonRoom = 10;         // characters of a date with a year of four digits
constexpr int wordRoom = 12;           // of a word read from a stream, its NUL included
constexpr int farthestSeparator = 19;  // index up to which they are looked for
constexpr int freeForms = 2;           // the forms below this one are read freely

/// A field's place among day, month and year.
struct Field {
    enum Index : unsigned char { day, month, year };
};

enum class Century : unsigned char { none, nineteen, pivot };

/// A text form: its fields in order, the columns and the filling of the year when it is written,
/// its columns when it is read, and where this happens. A year with a century is one of two digits.
struct Form {
    Field::Index fields[3];
    bool separated;
    FormUse written;
    unsigned char yearWidth;
    char yearFill;
    FormUse read;
    unsigned char yearColumns;
    Century century;
    bool shortYear;
};

constexpr auto D = Field::day, M = Field::month, Y = Field::year;
constexpr auto everywhere = FormUse::everywhere, stringsOnly = FormUse::stringsOnly;

// clang-format off
constexpr Form forms[] = {
    {{D, M, Y}, true,  everywhere,    4, ' ', everywhere,    4, Century::none,     false},
    {{D, M, Y}, true,  everywhere,    2, ' ', everywhere,    2, Century::nineteen, true},
    {{M, D, Y}, true,  everywhere,    2, ' ', everywhere,    4, Century::none,     false},
    {{D, M, Y}, true,  everywhere,    2, ' ', everywhere,    2, Century::pivot,    true},
    {{M, D, Y}, true,  everywhere,    2, ' ', everywhere,    2, Century::nineteen, true},
    {{M, D, Y}, true,  everywhere,    2, ' ', everywhere,    2, Century::pivot,    true},
    {{Y, M, D}, false, everywhere,    4, '0', everywhere,    4, Century::none,     false},
    {{D, M, Y}, false, FormUse::none, 0, ' ', FormUse::none, 0, Century::none,     false},
    {{Y, M, D}, false, stringsOnly,   2, '0', everywhere,    2, Century::pivot,    true},
    {{D, M, Y}, false, stringsOnly,   4, '0', FormUse::none, 0, Century::none,     false},
};
// clang-format on
constexpr std::size_t noForm = 7;

int withCentury(int year, Century century) {
    if (century == Century::none) return year;
    return year + (century == Century::pivot && year < 20 ? 2000 : 1900);
}

/// Day, month and year in the order of Field.
using Values = std::array<int, 3>;

/// True for a day and a month of two digits and a year of four.
bool isCommon(int day, int month, int year) {
    return (static_cast<unsigned>(day) < 100) & (static_cast<unsigned>(month) < 100) &
           (static_cast<unsigned>(year) - 1000 < 9000);
}

// Writes any date. Needs room for textFormRoom characters. No NUL is added; the result is the place
// behind the text.
template <std::size_t number>
char *writeAny(char *target, int day, int month, int year, char separator) {
    constexpr Form const &form = forms[number];
    Values const values = {day, month, form.shortYear ? year % 100 : year};
    for (int i = 0; i < 3; ++i) {
        Field::Index const field = form.fields[i];
        bool const isYear = field == Field::year;
        if (form.separated && i > 0) *target++ = separator;
        target = putNumber(target, values[field], isYear ? form.yearWidth : 2,
                           isYear ? form.yearFill : '0');
    }
    return target;
}

// Writes a common date. Needs room for commonRoom characters. No NUL is added; the result is the
// place behind the text.
template <std::size_t number>
char *writeCommon(char *target, int day, int month, int year, char separator) {
    constexpr Form const &form = forms[number];
    if (form.shortYear) return writeAny<number>(target, day, month, year, separator);
    Values const values = {day, month, year};
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i) {
        Field::Index const field = form.fields[i];
        auto const value = static_cast<unsigned>(values[field]);
        if (form.separated && i > 0) *target++ = separator;
        if (field == Field::year) target = putPair(target, value / 100);
        target = putPair(target, field == Field::year ? value % 100 : value);
    }
    return target;
}

// Reads columns and sets the date.
template <std::size_t number>
void read(char const *text, TQDate &date) {
    constexpr Form const &form = forms[number];
    Columns columns(text);
    Values values{};
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i) {
        Field::Index const field = form.fields[i];
        if (form.separated && i > 0) columns.skip();
        values[field] = columns.take(field == Field::year ? form.yearColumns : 2);
    }
    date.set(values[Field::day], values[Field::month],
             withCentury(values[Field::year], form.century));
}

/// How a form is written and read. Each form has functions of its own, in which its row of the
/// table is a constant.
struct FormFunctions {
    FormUse written;
    FormUse reading;
    char *(*writeCommon)(char *target, int day, int month, int year, char separator);
    char *(*writeAny)(char *target, int day, int month, int year, char separator);
    void (*read)(char const *text, TQDate &date);
};

constexpr auto formFunctions = []<std::size_t... number>(std::index_sequence<number...>) {
    return std::array<FormFunctions, sizeof...(number)>{
        {{forms[number].written, forms[number].read, &writeCommon<number>, &writeAny<number>,
          &read<number>}...}};
}
(std::make_index_sequence<std::size(forms)>());

FormFunctions const &functionsOf(int format) {
    auto const number = static_cast<unsigned>(format);
    return formFunctions[number < std::size(forms) ? number : noForm];
}

// What follows the separator behind a number of a text that is read freely, or null.
char const *behindSeparator(char const *text) {
    for (int i = 0; i <= farthestSeparator && text[i] != '\0'; ++i)
        if (text[i] == ',' || text[i] == '.' || text[i] == '/')
            return i == 0 ? nullptr : text + i + 1;
    return nullptr;
}

std::int64_t wrappingSum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

std::int64_t wrappingDifference(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

}  // namespace

TQDate::TQDate() : TQDate(0, '.') {
    now();
}

TQDate::TQDate(int format, char separator)
    : year_(0), month_(0), day_(0), format_(format), separator_(separator) {
    setDerived();
}

TQDate::TQDate(int day, int month, int year)
    : year_(year), month_(month), day_(day), format_(0), separator_('.') {
    setDerived();
}

TQDate::TQDate(char const *text, int format, char separator) : TQDate(format, separator) {
    *this = text;
}

TQDate::TQDate(CString const &text, int format, char separator) : TQDate(format, separator) {
    *this = text;
}

void TQDate::setDerived() {
    auto const derived = tqlib::detail::deriveFields(year_, month_, day_);
    dayInYear_ = derived.dayInYear;
    weekday_ = derived.weekday;
    weekInYear_ = derived.weekInYear;
}

void TQDate::split(int *day, int *month, int *year) const {
    *day = day_;
    *month = month_;
    *year = year_;
}

void TQDate::set(int day, int month, int year) {
    year_ = year;
    month_ = month;
    day_ = day;
    setDerived();
}

void TQDate::now() {
    std::time_t const moment = std::time(nullptr);
    std::tm local{};
    if (localtime_r(&moment, &local) != nullptr)
        set(local.tm_mday, local.tm_mon + 1, local.tm_year + 1900);
}

int TQDate::setFormat(int format) {
    return std::exchange(format_, format);
}

char TQDate::setSeparator(char separator) {
    return std::exchange(separator_, separator);
}

int TQDate::CheckValid() const {
    constexpr int mostDays[] = {0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return year_ >= 1900 && year_ <= 2100 && month_ >= 1 && month_ <= 12 && day_ >= 1 &&
           day_ <= mostDays[month_];
}

void TQDate::daysToVariables(long days, int *year, int *month, int *day) {
    auto const date = tqlib::detail::dateOf(days);
    *year = static_cast<int>(date.year);
    if (*month > 12) return;
    *month = date.month;
    *day = static_cast<int>(date.day);
}

void TQDate::setDayCount(std::int64_t days) {
    auto const date = tqlib::detail::dateOf(days);
    year_ = static_cast<int>(date.year);
    if (month_ > 12 || days < 0 || year_ != date.year) {
        if (month_ <= 12) {
            month_ = date.month;
            day_ = static_cast<int>(date.day);
        }
        setDerived();
        return;
    }
    month_ = date.month;
    day_ = static_cast<int>(date.day);
    dayInYear_ = date.dayInYear;
    weekday_ = static_cast<int>(static_cast<std::uint64_t>(days) % 7);
    auto const &traits = tqlib::detail::traitsOfEra[date.yearOfEra];
    weekInYear_ = tqlib::detail::weekOfDay(year_, dayInYear_, traits);
}

void TQDate::add(int days, int months, int years) {
    std::int64_t const months0 = std::int64_t{month_} + months - 1;  // January is 0
    std::int64_t const carry = (months0 >= 0 ? months0 : months0 - 11) / 12;
    month_ = static_cast<int>(months0 - 12 * carry) + 1;
    setDayCount(tqlib::detail::dayCountOf(std::int64_t{year_} + carry + years, month_, day_) +
                days);
}

TQDate::operator char *() const {
    static char text[textFormRoom];
    FormFunctions const &form = functionsOf(format_);
    bool const common = isCommon(day_, month_, year_);
    auto const write = common ? form.writeCommon : form.writeAny;
    char *end = text;
    if (isFor(form.written, false)) end = write(text, day_, month_, year_, separator_);
    *end = '\0';
    return text;
}

TQDate::operator TQString() const {
    TQString text;
    FormFunctions const &form = functionsOf(format_);
    if (!isFor(form.written, true)) return text;
    bool const common = isCommon(day_, month_, year_);
    auto const write = common ? form.writeCommon : form.writeAny;
    char *const buffer = text.GetBuffer(common ? commonRoom : textFormRoom);
    char *const end = write(buffer, day_, month_, year_, separator_);
    *end = '\0';
    text.ReleaseBuffer(separator_ == '\0' ? -1 : static_cast<int>(end - buffer));
    return text;
}

TQDate &TQDate::operator=(char const *text) {
    FormFunctions const &form = functionsOf(format_);
    if (form.reading == FormUse::none)
        set(0, 0, 0);
    else
        form.read(text, *this);
    return *this;
}

TQDate &TQDate::operator=(CString const &text) {
    FormFunctions const &form = functionsOf(format_);
    if (format_ >= 0 && format_ < freeForms) {
        readFreely(text);
        setDerived();
    } else if (form.reading != FormUse::none) {
        form.read(text, *this);
    }
    return *this;
}

// Stops at the first number that no separator follows; those before it are taken. A number ends at
// its separator, which is no part of one.
void TQDate::readFreely(char const *text) {
    while (tqlib::detail::isWhiteSpace(*text))
        ++text;
    for (int *const field : {&day_, &month_}) {
        char const *const behind = behindSeparator(text);
        if (behind == nullptr) return;
        tqlib::detail::scanNumber(text, *field);
        text = behind;
    }
    tqlib::detail::scanNumber(text, year_);
    if (year_ <= 30)
        year_ += 2000;
    else if (year_ < 100)
        year_ += 1900;
}

TQDate &TQDate::operator=(COleDateTime const &moment) {
    separator_ = '.';
    set(moment.GetDay(), moment.GetMonth(), moment.GetYear());
    return *this;
}

TQDate TQDate::operator+(TQDate const &other) const {
    TQDate result(0, '.');
    result.setDayCount(wrappingSum(numberofdays(), other.numberofdays()));
    return result;
}

TQDate TQDate::operator-(TQDate const &other) const {
    return *this - other.numberofdays();
}

TQDate TQDate::operator+(long days) const {
    TQDate result(*this);
    result.setDayCount(wrappingSum(numberofdays(), days));
    return result;
}

TQDate TQDate::operator-(long days) const {
    TQDate result(*this);
    result.setDayCount(wrappingDifference(numberofdays(), days));
    return result;
}

classic::ostream &operator<<(classic::ostream &stream, TQDate const &date) {
    return stream << static_cast<char const *>(date.operator char *());
}

classic::istream &operator>>(classic::istream &stream, TQDate &date) {
    return tqlib::detail::readWord<wordRoom>(stream, date);
}
