#include "tqplatform/framework/COleDateTime.h"

#include <chrono>
#include <cmath>

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int secondsOfDay = 86400;
constexpr int noPart = -1;
constexpr sys_days origin = std::chrono::year(1899) / 12 / 30;
constexpr sys_days first = std::chrono::year(100) / 1 / 1;
constexpr sys_days last = std::chrono::year(9999) / 12 / 31;

struct Parts {
    int year = noPart, month = noPart, day = noPart;
    int hour = noPart, minute = noPart, second = noPart;
};

bool isInRange(double value) {
    return value > (first - origin).count() - 1 && value < (last - origin).count() + 1;
}

// The parts of the second nearest to the moment.
Parts partsOf(COleDateTime const &moment) {
    if (moment.m_status != COleDateTime::valid || !isInRange(moment.m_dt)) return {};
    double const whole = std::trunc(moment.m_dt);
    long const nearest = std::lround(std::fabs(moment.m_dt - whole) * secondsOfDay);
    int const second = static_cast<int>(nearest) % secondsOfDay;
    days const day(static_cast<int>(whole) + (nearest == secondsOfDay ? 1 : 0));
    year_month_day const date = origin + day;
    if (origin + day > last) return {};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            second / 3600,
            second / 60 % 60,
            second % 60};
}

bool isDate(int year, int month, int day) {
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
           (std::chrono::year(year) / month / day).ok();
}

bool isTime(int hour, int minute, int second) {
    return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
}

}  // namespace

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
    bool const fits = isDate(year, month, day) && isTime(hour, minute, second);
    m_status = fits ? valid : invalid;
    m_dt = 0.0;
    if (!fits) return 1;
    sys_days const date = std::chrono::year(year) / month / day;
    auto const whole = static_cast<double>((date - origin).count());
    double const fraction = (hour * 3600 + minute * 60 + second) / double{secondsOfDay};
    m_dt = whole < 0 ? whole - fraction : whole + fraction;
    return 0;
}

int COleDateTime::GetYear() const {
    return partsOf(*this).year;
}
int COleDateTime::GetMonth() const {
    return partsOf(*this).month;
}
int COleDateTime::GetDay() const {
    return partsOf(*this).day;
}
int COleDateTime::GetHour() const {
    return partsOf(*this).hour;
}
int COleDateTime::GetMinute() const {
    return partsOf(*this).minute;
}
int COleDateTime::GetSecond() const {
    return partsOf(*this).second;
}
