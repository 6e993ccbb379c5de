#include "tqlib/datetime/TQDateTime.h"

#include <climits>

namespace {

constexpr char blank = ' ';

/// The forms of the parts in a joint form, and the text between them; null for the character.
struct JointForm {
    int date;
    int time;
    char const *between;
};

constexpr JointForm jointForms[] = {
    {0, 0, nullptr},
    {8, 4, ""},
    {9, 5, "    "},
    {0, 1, nullptr},
};
constexpr int otherForm = 3;

JointForm const &jointFormOf(int format) {
    return jointForms[format >= 0 && format < otherForm ? format : otherForm];
}

}  // namespace

TQDateTime::TQDateTime() : TQDateTime(TQDate(0, 0, 0), TQTime(0, 0, 0, 0)) {
    now();
    valid_ = 0;
}

TQDateTime::TQDateTime(TQDate const &date, TQTime const &time)
    : date_(date), time_(time), valid_(1), trenner_(blank), format_(0) {}

TQDateTime::TQDateTime(long moment) : TQDateTime() {
    std::time_t const value = moment;
    std::tm local{};
    constexpr int mostYears = INT_MAX - 1900;
    if (localtime_r(&value, &local) != nullptr && local.tm_year <= mostYears)
        *this = TQDateTime(&local);
}

TQDateTime::TQDateTime(std::tm const *moment) : TQDateTime() {
    if (moment == nullptr) return;
    constexpr unsigned firstYear = 1900;
    auto const year = static_cast<int>(static_cast<unsigned>(moment->tm_year) + firstYear);
    auto const month = static_cast<int>(static_cast<unsigned>(moment->tm_mon) + 1);
    date_.set(moment->tm_mday, month, year);
    time_.set(moment->tm_hour, moment->tm_min, moment->tm_sec, 0);
    valid_ = 1;
}

TQDateTime::TQDateTime(TQDate const &date) : TQDateTime(date, TQTime(0, 0, 0, 0)) {}

TQDateTime::TQDateTime(TQTime const &time) : TQDateTime(TQDate(), time) {}

TQDateTime::TQDateTime(TQString const &text) : TQDateTime(TQDate(0, 0, 0), TQTime(0, 0, 0, 0)) {
    TQString token;
    int const next = text.GetToken(token, 0, " ", 1);
    date_ = TQDate(token, 0, '.');
    token.Empty();
    if (next != -1) text.GetToken(token, next, " ", 1);
    time_ = TQTime(static_cast<char const *>(token), 0);
}

TQDateTime::TQDateTime(TQDateTime const &other) : TQDateTime(other.date_, other.time_) {
    if (other.valid_ == 0) *this = TQDateTime();
}

TQDateTime &TQDateTime::operator=(TQDateTime const &other) {
    date_ = other.date_;
    time_ = other.time_;
    valid_ = other.valid_;
    return *this;
}

void TQDateTime::now() {
    date_.now();
    time_.now();
    if (TQDate() != date_) {  // midnight came in between
        date_.now();
        time_.now();
    }
    valid_ = 1;
}

void TQDateTime::SetDate(TQDate const &date) {
    date_ = date;
    valid_ = 1;
}

void TQDateTime::SetTime(TQTime const &time) {
    time_ = time;
    valid_ = 1;
}

void TQDateTime::setFormat(int format) {
    format_ = format;
    JointForm const &form = jointFormOf(format);
    setFormat(form.date, form.time);
}

void TQDateTime::setFormat(int dateFormat, int timeFormat) {
    date_.setFormat(dateFormat);
    time_.setFormat(timeFormat);
}

TQDateTime::operator TQString() const {
    TQString text = date_;
    char const *const between = jointFormOf(format_).between;
    if (between != nullptr)
        text += between;
    else if (trenner_ != '\0')
        text += trenner_;
    TQString const time = time_;
    text += time;
    return text;
}

TQDateTime TQDateTime::operator+(TQDateTime const &other) const {
    if (valid_ == 0 || other.valid_ == 0) return {};
    TQTime const time = time_ + other.time_;
    return {date_ + other.date_ + time.overflow(), time};
}

TQDateTime TQDateTime::operator-(TQDateTime const &other) const {
    if (valid_ == 0 || other.valid_ == 0) return {};
    return {date_ - other.date_, time_ - other.time_};
}

TQDateTime TQDateTime::operator+(TQDate const &date) const {
    if (valid_ == 0) return {};
    return {date_ + date, time_};
}

TQDateTime TQDateTime::operator-(TQDate const &date) const {
    if (valid_ == 0) return {};
    return {date_ - date, time_};
}

TQDateTime TQDateTime::operator+(TQTime const &time) const {
    if (valid_ == 0) return {};
    TQTime const sum = time_ + time;
    return {date_ + sum.overflow(), sum};
}

TQDateTime TQDateTime::operator-(TQTime const &time) const {
    if (valid_ == 0) return {};
    TQTime const difference = time_ - time;
    return {date_ + difference.overflow(), difference};
}

classic::ostream &operator<<(classic::ostream &stream, TQDateTime const &moment) {
    TQString const text = moment;
    return stream << static_cast<char const *>(text);
}
