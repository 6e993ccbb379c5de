#include "tqlib/datetime/TQDate.h"

#include <ctime>
#include <iterator>
#include <string_view>
#include <utility>

#include "tqlib/datetime/TextForm.h"
#include "tqlib/foundation/ScanNumber.h"

namespace {

using tqlib::detail::Columns;
using tqlib::detail::FormUse;
using tqlib::detail::isFor;

constexpr int wordRoom = 12;  // of a word read from a stream, its NUL included
constexpr std::string_view freeSeparators = ",./";  // of a text that is read freely
constexpr int farthestSeparator = 19;               // index up to which they are looked for
constexpr int freeForms = 2;                        // the forms below this one are read freely

enum class Field : unsigned char { day, month, year, shortYear };
enum class Century : unsigned char { none, nineteen, pivot };

/// A text form: its fields in order, the columns and the filling of the last year, and where it is
/// written and read.
struct Form {
    Field fields[3];
    bool separated;
    unsigned char yearWidth;
    char yearFill;
    FormUse written;
    FormUse read;
    unsigned char yearColumns;
    Century century;
};

constexpr auto D = Field::day, M = Field::month, Y = Field::year, YY = Field::shortYear;
constexpr auto everywhere = FormUse::everywhere, stringsOnly = FormUse::stringsOnly;

// clang-format off
constexpr Form forms[] = {
    {{D, M, Y},  true,  4, ' ', everywhere,  everywhere,  4, Century::none},
    {{D, M, YY}, true,  2, ' ', everywhere,  everywhere,  2, Century::nineteen},
    {{M, D, Y},  true,  2, ' ', everywhere,  everywhere,  4, Century::none},
    {{D, M, YY}, true,  2, ' ', everywhere,  everywhere,  2, Century::pivot},
    {{M, D, YY}, true,  2, ' ', everywhere,  everywhere,  2, Century::nineteen},
    {{M, D, YY}, true,  2, ' ', everywhere,  everywhere,  2, Century::pivot},
    {{Y, M, D},  false, 4, '0', everywhere,  everywhere,  4, Century::none},
    {{D, M, Y},  false, 0, ' ', FormUse::none,   FormUse::none,   0, Century::none},
    {{YY, M, D}, false, 2, '0', stringsOnly, everywhere,  2, Century::pivot},
    {{D, M, Y},  false, 4, '0', stringsOnly, FormUse::none,   0, Century::none},
};
// clang-format on
constexpr int noForm = 7;

Form const &formOf(int format) {
    bool const known = format >= 0 && format < static_cast<int>(std::size(forms));
    return forms[known ? format : noForm];
}

int withCentury(int year, Century century) {
    if (century == Century::none) return year;
    return year + (century == Century::pivot && year < 20 ? 2000 : 1900);
}

// Writes the date and a NUL to `target`, which has room for textFormRoom characters.
void writeText(char *target, TQDate const &date, Form const &form) {
    bool isFirst = true;
    for (Field const field : form.fields) {
        if (form.separated && !isFirst) *target++ = date.getSeparator();
        isFirst = false;
        switch (field) {
            case Field::day:
                target = tqlib::detail::putNumber(target, date.day(), 2, '0');
                break;
            case Field::month:
                target = tqlib::detail::putNumber(target, date.month(), 2, '0');
                break;
            case Field::year:
                target =
                    tqlib::detail::putNumber(target, date.year(), form.yearWidth, form.yearFill);
                break;
            case Field::shortYear:
                target = tqlib::detail::putNumber(target, date.year() % 100, form.yearWidth,
                                                  form.yearFill);
        }
    }
    *target = '\0';
}

// The index of the separator behind a number of a text that is read freely, or -1.
int findSeparator(CString const &text) {
    auto const index = text.view().substr(0, farthestSeparator + 1).find_first_of(freeSeparators);
    return index == 0 || index == std::string_view::npos ? -1 : static_cast<int>(index);
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

TQDate::TQDate(TQString text, int format, char separator) : TQDate(format, separator) {
    *this = text;
}

void TQDate::setDerived() {
    std::int64_t const dayInYear = tqlib::detail::dayInYearOf(year_, month_, day_);
    dayInYear_ = static_cast<int>(dayInYear);
    weekday_ = tqlib::detail::weekdayOf(year_, month_, day_);
    weekInYear_ = static_cast<int>(tqlib::detail::weekInYearOf(year_, dayInYear));
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
    if (month_ <= 12) {
        month_ = date.month;
        day_ = static_cast<int>(date.day);
    }
    setDerived();
}

void TQDate::add(int days, int months, int years) {
    std::int64_t const months0 = std::int64_t{month_} + months - 1;  // January is 0
    std::int64_t const carry = (months0 >= 0 ? months0 : months0 - 11) / 12;
    month_ = static_cast<int>(months0 - 12 * carry) + 1;
    setDayCount(tqlib::detail::dayCountOf(std::int64_t{year_} + carry + years, month_, day_) +
                days);
}

TQDate::operator char *() const {
    static char text[tqlib::detail::textFormRoom];
    Form const &form = formOf(format_);
    text[0] = '\0';
    if (isFor(form.written, false)) writeText(text, *this, form);
    return text;
}

TQDate::operator TQString() const {
    Form const &form = formOf(format_);
    if (!isFor(form.written, true)) return {};
    char text[tqlib::detail::textFormRoom];
    writeText(text, *this, form);
    return text;
}

void TQDate::readColumns(char const *text) {
    Form const &form = formOf(format_);
    Columns columns(text);
    bool isFirst = true;
    for (Field const field : form.fields) {
        if (form.separated && !isFirst) columns.skip();
        isFirst = false;
        if (field == Field::day)
            day_ = columns.take(2);
        else if (field == Field::month)
            month_ = columns.take(2);
        else
            year_ = withCentury(columns.take(form.yearColumns), form.century);
    }
}

TQDate &TQDate::operator=(char const *text) {
    if (formOf(format_).read == FormUse::none) {
        year_ = month_ = day_ = 0;
    } else {
        readColumns(text);
    }
    setDerived();
    return *this;
}

TQDate &TQDate::operator=(TQString text) {
    if (format_ >= 0 && format_ < freeForms)
        readFreely(text);
    else if (formOf(format_).read != FormUse::none)
        readColumns(text);
    setDerived();
    return *this;
}

// Stops at the first number that no separator follows; those before it are taken.
void TQDate::readFreely(TQString text) {
    text.Trim();
    for (int *const field : {&day_, &month_}) {
        int const separator = findSeparator(text);
        if (separator < 0) return;
        tqlib::detail::scanNumber(text.Left(separator), *field);
        text = text.Mid(separator + 1);
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

classic::ostream &operator<<(classic::ostream &stream, TQDate date) {
    return stream << static_cast<char const *>(date.operator char *());
}

classic::istream &operator>>(classic::istream &stream, TQDate &date) {
    return tqlib::detail::readWord<wordRoom>(stream, date);
}
