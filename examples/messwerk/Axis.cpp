#include "Axis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "tqlib/tqlib.h"

namespace messwerk {
namespace {

/// The step of 1, 2 or 5 times a power of ten that is at least `least`.
double roundStep(double least) {
    double const power = std::pow(10.0, std::floor(std::log10(least)));
    for (double const factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * 0.999999) return factor * power;
    return 10 * power;
}

std::string labelOf(double value, double step) {
    if (std::fabs(value) < step * 1e-6) value = 0;
    int const decimals = std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-6)), 0, 12);
    char text[64];
    if (std::fabs(value) >= 1e7)
        std::snprintf(text, sizeof text, "%.4g", value);
    else
        std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

TQDate dateOf(double day) {
    TQDate const first(1, 1, 1);  // has the number 1
    return first + (static_cast<int>(std::floor(day)) - 1);
}

double dayOf(int year, int month, int day) {
    return static_cast<double>(TQDate::numberofdays(year, month, day));
}

std::vector<Mark> yearMarks(Range const &range, int step) {
    std::vector<Mark> marks;
    int const first = dateOf(range.lowest).year(), last = dateOf(range.highest).year();
    for (int year = first - first % step; year <= last; year += step)
        if (year > 0) marks.push_back({dayOf(year, 1, 1), std::to_string(year)});
    return marks;
}

std::vector<Mark> monthMarks(Range const &range, int step) {
    std::vector<Mark> marks;
    TQDate const begin = dateOf(range.lowest), end = dateOf(range.highest);
    int const last = end.year() * 12 + end.month();
    for (int month = begin.year() * 12; month < last; month += step)
        marks.push_back({dayOf(month / 12, month % 12 + 1, 1),
                         std::to_string(month % 12 + 1) + "/" + std::to_string(month / 12)});
    return marks;
}

std::vector<Mark> dayMarks(Range const &range, int step) {
    std::vector<Mark> marks;
    int const first = static_cast<int>(std::ceil(range.lowest));
    for (int day = first; day <= range.highest; day += step) {
        TQDate const date = dateOf(day);
        marks.push_back({static_cast<double>(day), std::to_string(date.day()) + "." +
                                                       std::to_string(date.month()) + "." +
                                                       std::to_string(date.year())});
    }
    return marks;
}

std::vector<Mark> within(Range const &range, std::vector<Mark> marks) {
    std::erase_if(marks, [&](Mark const &mark) {
        return mark.value < range.lowest || mark.value > range.highest;
    });
    return marks;
}

}  // namespace

Range rangeOf(double lowest, double highest) {
    double const room = lowest < highest ? 0 : std::max(std::fabs(lowest) * 0.05, 0.5);
    return {lowest - room, highest + room};
}

std::vector<Mark> numberMarks(Range const &range, int count) {
    double const step = roundStep((range.highest - range.lowest) / count);
    std::vector<Mark> marks;
    double const first = std::ceil(range.lowest / step - 1e-9);
    for (int index = 0; (first + index) * step <= range.highest + step * 1e-9; ++index)
        marks.push_back({(first + index) * step, labelOf((first + index) * step, step)});
    return marks;
}

std::vector<Mark> dateMarks(Range const &range, int count) {
    constexpr double daysOfYear = 365.2425, daysOfMonth = daysOfYear / 12;
    double const days = (range.highest - range.lowest) / count;
    if (days > daysOfYear / 2)
        return within(
            range, yearMarks(range, static_cast<int>(std::max(1.0, roundStep(days / daysOfYear)))));
    for (int const months : {1, 2, 3, 6})
        if (days > daysOfMonth / 2 && months * daysOfMonth >= days)
            return within(range, monthMarks(range, months));
    return within(range, dayMarks(range, static_cast<int>(std::max(1.0, roundStep(days)))));
}

}  // namespace messwerk
