#include "tqlib/datetime/TQDate.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdio>
#include <ctime>
#include <sstream>

#include "support/Order.h"
#include "tqlib/datetime/chrono.h"

namespace {

std::string dmy(TQDate const &date) {
    int day, month, year;
    date.split(&day, &month, &year);
    return std::to_string(day) + "." + std::to_string(month) + "." + std::to_string(year);
}

// The week of ISO 8601: that of the Thursday of the same week.
int isoWeek(std::chrono::sys_days day) {
    using namespace std::chrono;
    sys_days const thursday = day - (weekday(day) - Monday) + days(3);
    sys_days const first = year_month_day(thursday).year() / January / 1;
    return static_cast<int>((thursday - first).count()) / 7 + 1;
}

// The date of a day count, year by year and month by month.
std::string walk(long count, int month, int day) {
    constexpr int lengths[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    auto const isLeap = [](long year) {
        return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    };
    long year = 1;
    for (; count > 365; ++year)
        count -= isLeap(year) ? 366 : 365;
    if (count == 0) --year, count = 366;
    if (month <= 12) {
        for (month = 1; count > lengths[month]; ++month)
            count -= lengths[month] + (month == 2 && isLeap(year) ? 1 : 0);
        if (count == 0 && month == 3) month = 2, count = 29;
        day = static_cast<int>(count);
    }
    return std::to_string(day) + "." + std::to_string(month) + "." + std::to_string(year);
}

TEST(TQDate, EveryDayOfThirtyOneCenturies) {
    using namespace std::chrono;
    sys_days const first = year(0) / January / 1, last = year(3100) / December / 31;
    for (sys_days day = first; day <= last; day += days(1)) {
        TQDate const date = fromSysDays(day);
        auto const dayInYear =
            static_cast<int>((day - sys_days(year(date.year()) / January / 1)).count()) + 1;
        auto const count = (day - sys_days(year(1) / January / 1)).count() + 1;
        bool const sunday = dayInYear == 1 && weekday(day) == Sunday;
        ASSERT_TRUE(toSysDays(date) == day) << dmy(date);
        ASSERT_EQ(date.dayInYear(), dayInYear) << dmy(date);
        ASSERT_EQ(date.weekday(), static_cast<int>(weekday(day).c_encoding())) << dmy(date);
        ASSERT_EQ(date.weekInYear(), sunday ? 1 : isoWeek(day)) << dmy(date);
        // Year 0 counts as a common one.
        ASSERT_EQ(date.numberofdays(), count + (date.year() == 0 ? 1 : 0)) << dmy(date);
        if (count > 0) {
            TQDate const moved = TQDate(1, 1, 1) + static_cast<long>(count - 1);
            ASSERT_TRUE(moved == date) << count;
            ASSERT_EQ(moved.weekday(), date.weekday()) << count;
            ASSERT_EQ(moved.dayInYear(), date.dayInYear()) << count;
            ASSERT_EQ(moved.weekInYear(), date.weekInYear()) << count;
        }
    }
}

TEST(TQDate, DayCountsAsAWalkFromYearOneFindsThem) {
    for (long count = -800; count < 2500000; count += count < 3000 ? 1 : 9973)
        for (int const month : {1, 12, 13}) {
            int year = 7, ownMonth = month, day = 5;
            TQDate::daysToVariables(count, &year, &ownMonth, &day);
            ASSERT_EQ(dmy(TQDate(day, ownMonth, year)), walk(count, month, 5)) << count;
        }
}

TEST(TQDate, Arithmetic) {
    TQDate date(31, 1, 2003);
    date.setFormat(6);
    date.setSeparator('-');
    struct {
        TQDate result;
        char const *expected;
        int format;
    } const rows[] = {
        {date + 1, "1.2.2003", 6},
        {date - 31L, "31.12.2002", 6},
        {date - TQDate(30, 1, 2003), "1.1.1", 6},
        {date - date, "31.12.0", 6},
        {date - TQDate(5, 2, 2003), "-5.1.1", 6},
        {date + TQDate(1, 1, 1), "1.2.2003", 0},
        {TQDate(3, 14, 2003) + 40, "3.14.2003", 0},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(dmy(row.result), row.expected);
        EXPECT_EQ(row.result.getFormat(), row.format);
        EXPECT_EQ(row.result.getSeparator(), row.format == 6 ? '-' : '.');
    }
    EXPECT_EQ(static_cast<long>(date - TQDate(1, 1, 2003)), 30);
    EXPECT_EQ(static_cast<int>(date - date), 1);
    EXPECT_EQ(static_cast<long>(date - TQDate(5, 2, 2003)), -5);
    EXPECT_EQ(dmy(date), "31.1.2003");
}

TEST(TQDate, AddMovesMonthsAndYearsThenDays) {
    struct {
        char const *from;
        int days, months, years;
        char const *to;
    } const rows[] = {
        {"31.01.2003", 0, 1, 0, "3.3.2003"},     {"31.01.2004", 0, 1, 0, "2.3.2004"},
        {"15.12.2003", 0, 1, 0, "15.1.2004"},    {"15.06.2003", 0, 18, 0, "15.12.2004"},
        {"15.01.2003", 0, -1, 0, "15.12.2002"},  {"15.01.2003", 0, -2, 0, "15.11.2002"},
        {"15.01.2003", 0, -13, 1, "15.12.2002"}, {"29.02.2004", 0, 0, 1, "1.3.2005"},
        {"28.02.2003", 2, 12, -1, "2.3.2003"},   {"01.01.2000", -1, 0, 0, "31.12.1999"},
    };
    for (auto const &row : rows) {
        TQDate date(row.from, 0, '.');
        date.add(row.days, row.months, row.years);
        EXPECT_EQ(dmy(date), row.to) << row.from;
        EXPECT_EQ(date.weekday(), TQDate(date.day(), date.month(), date.year()).weekday());
    }
}

TEST(TQDate, TextsInEveryForm) {
    struct {
        int format;
        char const *ofMarch2004, *ofYear7;
        bool stringsOnly;
    } const rows[] = {
        {0, "05.03.2004", "05.03.   7", false},
        {1, "05.03. 4", "05.03. 7", false},
        {2, "03.05.2004", "03.05. 7", false},
        {3, "05.03. 4", "05.03. 7", false},
        {4, "03.05. 4", "03.05. 7", false},
        {5, "03.05. 4", "03.05. 7", false},
        {6, "20040305", "00070305", false},
        {7, "", "", false},
        {8, "040305", "070305", true},
        {9, "05032004", "05030007", true},
        {10, "", "", false},
        {-1, "", "", false},
    };
    for (auto const &row : rows)
        for (int const year : {2004, 7}) {
            TQDate date(5, 3, year);
            date.setFormat(row.format);
            TQString const text = date;
            char const *const expected = year == 7 ? row.ofYear7 : row.ofMarch2004;
            EXPECT_EQ(text, expected) << row.format;
            EXPECT_STREQ(date.operator char *(), row.stringsOnly ? "" : expected) << row.format;
        }
}

TEST(TQDate, ANulAsSeparatorEndsTheText) {
    TQDate date(5, 3, 2004);
    date.setSeparator('\0');
    TQString const separated = date;
    date.setFormat(6);
    TQString const whole = date;
    EXPECT_EQ(separated, "05");
    EXPECT_EQ(whole, "20040305");
}

TEST(TQDate, NumbersOfAnySizePrintAsPrintfPrintsThem) {
    constexpr char const *formats[] = {"%02d-%02d-%4d", "%02d-%02d-%2d", "%4$02d%2$02d%1$02d"};
    for (int const value : {INT_MIN, -12345, -100, -99, -1, 0, 9, 10, 99, 100, 9999, INT_MAX}) {
        TQDate date(value, value, value);
        date.setSeparator('-');
        for (int const format : {0, 2}) {
            char text[64];
            std::snprintf(text, sizeof text, formats[format / 2], value, value, value);
            date.setFormat(format);
            EXPECT_STREQ(date.operator char *(), text);
        }
    }
}

TEST(TQDate, ColumnsAreReadWhateverStandsBetween) {
    struct {
        int format;
        char const *text, *date;
    } const rows[] = {
        {0, "05.03.2004", "5.3.2004"},
        {0, "05x03y2004z", "5.3.2004"},
        {0, "05.03.99", "5.3.99"},
        {0, " 5. 3.  97", "5.3.97"},
        {0, "5.3.2004", "5.0.4"},
        {0, "12", "12.0.0"},
        {0, "", "0.0.0"},
        {0, "1.02.2003", "1.2.3"},
        {0, "-5.+3.-2", "-5.3.-2"},
        {1, "05.03.04", "5.3.1904"},
        {2, "03.05.2004", "5.3.2004"},
        {3, "05.03.19", "5.3.2019"},
        {3, "05.03.20", "5.3.1920"},
        {4, "03.05.04", "5.3.1904"},
        {5, "03.05.04", "5.3.2004"},
        {6, "20040305", "5.3.2004"},
        {6, "2004", "0.0.2004"},
        {7, "05.03.2004", "0.0.0"},
        {8, "040305", "5.3.2004"},
        {8, "200305", "5.3.1920"},
        {9, "05032004", "0.0.0"},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(dmy(TQDate(row.text, row.format, '.')), row.date) << row.format << row.text;
        bool const isFree = row.format < 2, isRead = row.format != 7 && row.format != 9;
        if (isFree) continue;
        TQDate date(1, 2, 3);
        date.setFormat(row.format);
        date = TQString(row.text);
        EXPECT_EQ(dmy(date), isRead ? row.date : "1.2.3") << row.format << row.text;
    }
}

TEST(TQDate, StringsAreReadFreely) {
    struct {
        char const *text, *date;
    } const rows[] = {
        {"5.3.2004", "5.3.2004"},
        {" 5/3,04 ", "5.3.2004"},
        {"5.3.30", "5.3.2030"},
        {"5.3.31", "5.3.1931"},
        {"5.3.99", "5.3.1999"},
        {"5.3.100", "5.3.100"},
        {"05032004", "1.2.3"},
        {".5.3", "1.2.3"},
        {"", "1.2.3"},
        {"5.", "5.2.3"},
        {"5..2004", "5.2.3"},
        {"5.x.2004", "5.2.2004"},
        {"x.3.2004", "1.3.2004"},
        {"5.3.", "5.3.2003"},
        {"5. 3. -4", "5.3.1996"},
        {"0000000000000000005.3.4", "5.3.2004"},
        {"00000000000000000005.3.4", "1.2.3"},
    };
    for (auto const &row : rows)
        for (int const format : {0, 1}) {
            TQDate date(1, 2, 3);
            date.setFormat(format);
            date = TQString(row.text);
            EXPECT_EQ(dmy(date), row.date) << row.text;
            EXPECT_EQ(date.dayInYear(), TQDate(date.day(), date.month(), date.year()).dayInYear());
        }
    EXPECT_EQ(dmy(TQDate(TQString("7"), 0, '.')), "0.0.0");
}

TEST(TQDate, ValidDates) {
    for (int year : {1899, 1900, 2003, 2100, 2101})
        for (int month = -1; month <= 13; ++month)
            for (int day = -1; day <= 32; ++day) {
                bool const inFebruary29 = month == 2 && day == 29;
                auto const ymd = std::chrono::year(inFebruary29 ? 2004 : year) /
                                 std::max(month, 0) / std::max(day, 0);
                bool const valid = year >= 1900 && year <= 2100 && ymd.ok();
                ASSERT_EQ(TQDate(day, month, year).CheckValid(), valid ? 1 : 0);
            }
}

TEST(TQDate, MonthsThatAreNone) {
    for (int const month : {INT_MIN, -1, 0, 13, INT_MAX}) {
        TQDate const date(5, month, 2000);
        EXPECT_EQ(date.weekday(), -1);
        EXPECT_EQ(date.dayInYear(), -1);
        EXPECT_EQ(date.numberofdays(), TQDate(1, 1, 2000).numberofdays() - 2);
    }
}

TEST(TQDate, ExchangesTextsWithEveryKindOfString) {
    TQString const line = "05.03.2004 20040306";
    TQDate date(line.Left(10), 0, '.');
    EXPECT_EQ(dmy(date), "5.3.2004");
    date.setFormat(6);
    date = line.Mid(11);
    EXPECT_EQ(dmy(date), "6.3.2004");
    TQString text;
    text = date + 1;
    EXPECT_EQ(text, "20040307");
}

TEST(TQDate, WeekdaysBeforeYearOneAreWeekdays) {
    EXPECT_EQ(TQDate(1, 1, -100).weekday(), 2);
    EXPECT_EQ((TQDate(1, 1, 2000) - TQDate(9, 1, 2000) - 30).weekday(), 4);
}

TEST(TQDate, TakesAnyNumbers) {
    int const extremes[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, 2, 12, INT_MAX - 1, INT_MAX};
    for (int const a : extremes)
        for (int const b : extremes)
            for (int const c : extremes) {
                TQDate date(a, b, c);
                TQDate other(date);
                other.add(a, b, c);
                date = date + other - date + LONG_MAX - LONG_MIN + a - b;
                EXPECT_EQ((date < other) + (date == other) + (date > other), 1);
            }
}

TEST(TQDate, ComparesByYearMonthAndDay) {
    TQDate const dates[] = {{31, 12, 1999}, {2, 1, 2000}, {3, 1, 2000}, {1, 2, 2000}, {1, 1, 2001}};
    expectAscending(dates);
}

TEST(TQDate, TodayIsTheLocalDay) {
    std::time_t const before = std::time(nullptr);
    TQDate date;
    date.setFormat(6);
    char text[16];
    std::strftime(text, sizeof text, "%Y%m%d", std::localtime(&before));
    EXPECT_STREQ(date.operator char *(), text);
}

TEST(TQDate, StreamsOfBothKinds) {
    std::stringstream text("05.03.2004xyz 06.03.2004");
    TQDate first(1, 1, 1), second(1, 1, 1);
    text >> first >> second;
    EXPECT_EQ(dmy(first), "5.3.2004");
    EXPECT_EQ(dmy(second), "0.0.0") << "a longer word is cut, and its rest is the next one";
    std::ostringstream out;
    out << TQDate(5, 3, 2004);
    EXPECT_EQ(out.str(), "05.03.2004");
    EXPECT_FALSE(std::stringstream() >> first);
    EXPECT_EQ(dmy(first), "5.3.2004");
}

}  // namespace
