#include "Moments.h"

#include <algorithm>
#include <cctype>
#include <functional>

#include "Column.h"

namespace messwerk {
namespace {

constexpr int withoutSeparators = 6;  // the date form YYYYMMDD

constexpr MomentForm forms[] = {
    {"iso", ColumnKind::Date, "9999-99-99", withoutSeparators},
    {"date0", ColumnKind::Date, "99.99.9999", 0},
    {"date1", ColumnKind::Date, "99.99.99", 1},
    {"date2", ColumnKind::Date, "99.99.9999", 2},
    {"date3", ColumnKind::Date, "99.99.99", 3},
    {"date4", ColumnKind::Date, "99.99.99", 4},
    {"date5", ColumnKind::Date, "99.99.99", 5},
    {"date6", ColumnKind::Date, "99999999", withoutSeparators},
    {"date8", ColumnKind::Date, "999999", 8},
    {"time0", ColumnKind::Time, "99:99", 0},
    {"time1", ColumnKind::Time, "99:99:99", 1},
    {"time2", ColumnKind::Time, "99:99:99:999", 2},
    {"time3", ColumnKind::Time, "999999999", 3},
    {"time4", ColumnKind::Time, "9999", 4},
};

bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

bool fits(std::string_view text, std::string_view pattern) {
    return std::ranges::equal(text, pattern, {}, isDigit, isDigit);
}

// The library passes a 29 February of any year.
bool exists(TQDate const &date) {
    return date.CheckValid() != 0 && date + 0 == date;
}

std::optional<double> dayCount(MomentForm const &form, std::string text) {
    if (form.format == withoutSeparators) std::erase_if(text, std::not_fn(isDigit));
    TQDate const date(text.c_str(), form.format, '.');
    return exists(date) ? std::optional<double>(static_cast<int>(date)) : std::nullopt;
}

std::optional<double> secondsOf(MomentForm const &form, TQString const &text) {
    TQTime time(0, 0, 0, 0);
    time.setFormat(form.format);
    time = text;
    bool const exists = time.hour() < 24 && time.minute() < 60 && time.second() < 60;
    return exists ? std::optional(static_cast<int>(time) + time.thousands() / 1000.0)
                  : std::nullopt;
}

}  // namespace

MomentForm const *findMomentForm(std::string_view name) {
    auto const *const form = std::ranges::find(forms, name, &MomentForm::name);
    return form == std::end(forms) ? nullptr : form;
}

std::string momentFormNames() {
    std::string names;
    for (MomentForm const &form : forms)
        names += (names.empty() ? "" : ", ") + std::string(form.name);
    return names;
}

std::string describe(MomentForm const &form) {
    char const *const kind = form.kind == ColumnKind::Date ? "date" : "time";
    return kind + (" of the form " + std::string(form.name));
}

std::optional<double> momentOf(MomentForm const &form, TQString text) {
    text.Trim();
    if (!fits(text.text(), form.pattern)) return std::nullopt;
    return form.kind == ColumnKind::Date ? dayCount(form, std::string(text))
                                         : secondsOf(form, text);
}

TQString dateText(double days) {
    return TQDate(1, 1, 1) + (static_cast<long>(days) - 1);
}

TQString timeText(double seconds) {
    return TQTime(static_cast<long>(seconds));
}

}  // namespace messwerk
