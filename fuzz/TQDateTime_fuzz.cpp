// Times against the C runtime's scanning and printing and against plain arithmetic on seconds, and
// moments against their parts. An input is the form, four numbers of four bytes, then the text.

#include "tqlib/datetime/TQDateTime.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

#include "support/Check.h"
#include "support/Input.h"

namespace {

constexpr std::int64_t secondsOfDay = 86400;

struct Form {
    char const *scan;
    char const *print;
    bool separated;
};

constexpr Form forms[] = {
    {"%2c%*1c%2c", "%02d%c%02d", true},
    {"%2c%*1c%2c%*1c%2c", "%02d%c%02d%c%02d", true},
    {"%2c%*1c%2c%*1c%2c%*1c%3c", "%02d%c%02d%c%02d%c%03d", true},
    {"%2c%2c%2c%3c", "%02d%02d%02d%03d", false},
};

void expectParts(char const *what, TQTime const &time, int hour, int minute, int second,
                 int thousands) {
    expectSame(what, time.hour(), hour);
    expectSame(what, time.minute(), minute);
    expectSame(what, time.second(), second);
    expectSame(what, time.thousands(), thousands);
}

void checkTexts(int format, int const (&parts)[4], std::string const &text) {
    TQTime time(parts[0], parts[1], parts[2], parts[3]);
    time.setFormat(format);
    TQTime read(time);
    TQString const written = time;
    read = text.c_str();
    time = TQString(text.c_str());
    if (format >= static_cast<int>(std::size(forms))) return;
    Form const &form = forms[format];
    char model[80];
    if (form.separated)
        std::snprintf(model, sizeof model, form.print, parts[0], ':', parts[1], ':', parts[2], ':',
                      parts[3]);
    else
        std::snprintf(model, sizeof model, form.print, parts[0], parts[1], parts[2], parts[3]);
    expectSame("text", written.text(), model);
    char columns[4][8] = {};
    std::sscanf(text.c_str(), form.scan, columns[0], columns[1], columns[2], columns[3]);
    for (TQTime const &ours : {read, time})
        expectParts("columns", ours, std::atoi(columns[0]), std::atoi(columns[1]),
                    std::atoi(columns[2]), std::atoi(columns[3]));
}

void checkArithmetic(int const (&parts)[4], int number) {
    TQTime const time(parts[0], parts[1], parts[2], parts[3]);
    std::int64_t const total =
        3600 * std::int64_t{parts[0]} + 60 * std::int64_t{parts[1]} + parts[2];
    auto const held = static_cast<long>(total);  // the seconds of an operand, 32 bits or 64
    TQTime added(time);
    added.add(parts[1], parts[2], parts[3], number);
    std::int64_t const more =
        3600 * std::int64_t{parts[1]} + 60 * std::int64_t{parts[2]} + parts[3];
    std::pair<TQTime, std::int64_t> const sums[] = {
        {time + number, total + number}, {time - number, total - number},
        {time + time, total + held},     {time - time, total - held},
        {added, total + more},
    };
    for (auto const &[sum, model] : sums) {
        std::int64_t const second = (model % secondsOfDay + secondsOfDay) % secondsOfDay;
        expectSame("seconds", static_cast<std::int64_t>(sum.getSeconds()), second);
        expectSame("overflow", sum.overflow(), static_cast<int>((model - second) / secondsOfDay));
    }
}

void checkMoments(std::string const &text, int number) {
    TQDateTime const moment{TQString(text.c_str())};
    std::string const plain = text.c_str();
    std::size_t const end = plain.find(' ');
    TQDate const date(TQString(plain.substr(0, end).c_str()), 0, '.');
    std::size_t const next = plain.find_first_not_of(' ', end);
    bool const hasTime = end != std::string::npos && next != std::string::npos;
    TQTime const time(hasTime ? plain.c_str() + next : "", 0);
    expectSame("date", moment.GetDate() == date, 1);
    if (!hasTime || plain.find(' ', next) == std::string::npos)
        expectSame("time", moment.GetTime() == time, 1);
    TQDateTime const later = moment + TQTime(static_cast<long>(number)) - moment + date;
    expectSame("valid", later.isValid(), 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    int const format = static_cast<int>(input.pick(7));
    int const parts[] = {input.raw<int>(), input.raw<int>(), input.raw<int>(), input.raw<int>()};
    std::string const text = input.rest();
    checkTexts(format, parts, text);
    checkArithmetic(parts, parts[3]);
    checkMoments(text, parts[0]);
    return 0;
}
