// Dates against the C runtime's scanning and printing, and against a walk from year to year. The
// first byte of an input is the form; three numbers of four bytes and a separator follow, then the
// text.

#include "tqlib/datetime/TQDate.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/Check.h"
#include "support/Input.h"

namespace {

struct Fields {
    int day, month, year;
};

struct Form {
    char const *scan;
    char const *print;
    int order[3];  // day 0, month 1, year 2
    int century;   // what is added to a year when reading; -1 for the pivot
    bool shortYear;
};

constexpr Form forms[] = {
    {"%2c%*1c%2c%*1c%4c", "%02d%c%02d%c%4d", {0, 1, 2}, 0, false},
    {"%2c%*1c%2c%*1c%2c", "%02d%c%02d%c%2d", {0, 1, 2}, 1900, true},
    {"%2c%*1c%2c%*1c%4c", "%02d%c%02d%c%2d", {1, 0, 2}, 0, false},
    {"%2c%*1c%2c%*1c%2c", "%02d%c%02d%c%2d", {0, 1, 2}, -1, true},
    {"%2c%*1c%2c%*1c%2c", "%02d%c%02d%c%2d", {1, 0, 2}, 1900, true},
    {"%2c%*1c%2c%*1c%2c", "%02d%c%02d%c%2d", {1, 0, 2}, -1, true},
    {"%4c%2c%2c", "%04d%02d%02d", {2, 1, 0}, 0, false},
};

void expectFields(char const *what, TQDate const &date, Fields const &fields) {
    expectSame(what, date.day(), fields.day);
    expectSame(what, date.month(), fields.month);
    expectSame(what, date.year(), fields.year);
    TQDate const fresh(fields.day, fields.month, fields.year);
    expectSame("weekday", date.weekday(), fresh.weekday());
    expectSame("day of the year", date.dayInYear(), fresh.dayInYear());
    expectSame("week", date.weekInYear(), fresh.weekInYear());
}

Fields scanned(Form const &form, std::string const &text) {
    char columns[3][8] = {};
    std::sscanf(text.c_str(), form.scan, columns[0], columns[1], columns[2]);
    int values[3];
    for (int i = 0; i < 3; ++i)
        values[form.order[i]] = std::atoi(columns[i]);
    int const pivot = values[2] < 20 ? 2000 : 1900;
    values[2] += form.century < 0 ? pivot : form.century;
    return {values[0], values[1], values[2]};
}

std::string printed(Form const &form, Fields const &fields, char separator) {
    int const values[] = {fields.day, fields.month,
                          form.shortYear ? fields.year % 100 : fields.year};
    int const first = values[form.order[0]], second = values[form.order[1]],
              third = values[form.order[2]];
    char text[80];
    if (std::strstr(form.print, "%c") != nullptr)
        std::snprintf(text, sizeof text, form.print, first, separator, second, separator, third);
    else
        std::snprintf(text, sizeof text, form.print, first, second, third);
    return text;
}

// Day, month and year as three numbers with one of ",./" behind the first two.
Fields readFreely(std::string text, Fields fields) {
    auto const isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    text = text.c_str();
    while (!text.empty() && isBlank(text.front()))
        text.erase(0, 1);
    for (int *const field : {&fields.day, &fields.month}) {
        std::size_t const separator = text.find_first_of(",./");
        if (separator == 0 || separator > 19) return fields;
        std::sscanf(text.substr(0, separator).c_str(), "%d", field);
        text.erase(0, separator + 1);
    }
    std::sscanf(text.c_str(), "%d", &fields.year);
    fields.year += fields.year <= 30 ? 2000 : fields.year < 100 ? 1900 : 0;
    return fields;
}

// The date of a day count, year by year and month by month.
Fields walked(long count) {
    constexpr int lengths[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    auto const isLeap = [](int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; };
    int year = 1, month = 1;
    for (; count > 365; ++year)
        count -= isLeap(year) ? 366 : 365;
    if (count == 0) --year, count = 366;
    for (; count > lengths[month]; ++month)
        count -= lengths[month] + (month == 2 && isLeap(year) ? 1 : 0);
    if (count == 0 && month == 3) month = 2, count = 29;
    return {static_cast<int>(count), month, year};
}

void checkTexts(int format, Fields const &start, char separator, std::string const &text) {
    TQDate date(start.day, start.month, start.year);
    date.setFormat(format);
    date.setSeparator(separator);
    TQDate columns(date), string(date);
    TQString const written = date;
    columns = text.c_str();
    string = TQString(text.c_str());
    if (format >= static_cast<int>(std::size(forms))) return;
    Form const &form = forms[format];
    expectSame("text", written.text(), printed(form, start, separator));
    expectSame("pointer", date.operator char *(), printed(form, start, separator));
    expectFields("columns", columns, scanned(form, text));
    expectFields("string", string, format < 2 ? readFreely(text, start) : scanned(form, text));
}

void checkCounts(Fields const &start, long number) {
    constexpr long farthest = 4000000;
    TQDate const date(start.day, start.month, start.year);
    TQDate const moved = date + number, back = date - number, sum = date + moved - back;
    TQDate added(sum);
    added.add(start.day, start.month, start.year);
    if (number > -farthest && number < farthest) {
        Fields const model = walked(number);
        int year = 0, month = 1, day = 0;
        TQDate::daysToVariables(number, &year, &month, &day);
        expectFields("walk", TQDate(day, month, year), model);
    }
    if (moved.year() > 0 && number >= 0 && moved.month() <= 12 && date.numberofdays() > 0 &&
        number < farthest)
        expectSame("distance", moved.numberofdays() - date.numberofdays(), number);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    int const format = static_cast<int>(input.pick(12));
    Fields const start{input.raw<int>(), input.raw<int>(), input.raw<int>()};
    char const separator = input.take();
    std::string const text = input.rest();
    checkTexts(format, start, separator, text);
    checkTexts(format, {start.day % 32, start.month % 13, start.year % 10000}, separator, text);
    checkCounts(start, static_cast<long>(start.year) * start.day);
    checkCounts({start.day % 32, start.month % 13, start.year % 3000}, start.day % 1000000);
    return 0;
}
