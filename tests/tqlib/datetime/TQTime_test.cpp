#include "tqlib/datetime/TQTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <sstream>

#include "support/Order.h"

namespace {

std::string parts(TQTime const &time) {
    int hour, minute, second, thousands;
    time.split(&hour, &minute, &second, &thousands);
    char text[80];
    std::snprintf(text, sizeof text, "%d:%d:%d:%d %+d", hour, minute, second, thousands,
                  time.overflow());
    return text;
}

TEST(TQTime, SecondArithmetic) {
    TQTime const evening(23, 0, 0, 500), late(90061L);
    struct {
        TQTime result;
        char const *expected;
    } const rows[] = {
        {TQTime(23, 59, 59, 0) + 1, "0:0:0:0 +1"},
        {TQTime(0, 0, 0, 0) - 1, "23:59:59:0 -1"},
        {TQTime(0, 0, 0, 0) - 86400, "0:0:0:0 -1"},
        {TQTime(0, 0, 0, 0) - 86401, "23:59:59:0 -2"},
        {evening + 7200, "1:0:0:500 +1"},
        {evening + 7200 + 3600, "2:0:0:500 +0"},
        {TQTime(10, 0, 0, 500) + TQTime(0, 0, 1, 600), "10:0:1:500 +0"},
        {TQTime(10, 0, 0, 0) - TQTime(11, 0, 0, 0), "23:0:0:0 -1"},
        {TQTime(0, 0, 0, 0) + late, "1:1:1:0 +1"},
        {late + TQTime(0, 0, 0, 0), "1:1:1:0 +0"},
        {TQTime(0, 0, 0, 0) - late, "22:58:59:0 -2"},
        {TQTime(10, 0, 0, 0) + 3600L, "11:0:0:0 +0"},
        {TQTime(25, -61, 30, 0) + 0, "23:59:30:0 +0"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(parts(row.result), row.expected);
}

TEST(TQTime, ATimeOfSecondsKeepsAllOfThemUntilItIsCopied) {
    TQTime time(90061L);
    EXPECT_EQ(parts(time), "1:1:1:0 +1");
    EXPECT_EQ(static_cast<long>(time), 90061);
    EXPECT_EQ(static_cast<int>(time), 90061);
    EXPECT_EQ(time.getSeconds(), 3661);
    EXPECT_EQ(static_cast<long>(TQTime(time)), 3661);
    EXPECT_EQ(parts(TQTime(-3700L)), "1:1:40:0 +0");
    EXPECT_TRUE(TQTime(-3700L) == TQTime(3700L));
    time.set(1, 2, 3, 4);
    EXPECT_EQ(static_cast<long>(time), 3723);
    EXPECT_EQ(time.overflow(), 0);
}

TEST(TQTime, AddCarriesSecondsAndLeavesThousandths) {
    TQTime time(23, 30, 0, 900);
    time.add(0, 29, 61, 250);
    EXPECT_EQ(parts(time), "0:0:1:150 +1");
    EXPECT_EQ(static_cast<long>(time), 1);
    time.add(-25, 0, 0, 0);
    EXPECT_EQ(parts(time), "23:0:1:150 -2");
}

TEST(TQTime, TextsInEveryForm) {
    struct {
        int format;
        char const *text, *back;
        bool stringsOnly;
    } const rows[] = {
        {0, "07:05", "7:5:0:0 +0", false},
        {1, "07:05:09", "7:5:9:0 +0", false},
        {2, "07:05:09:042", "7:5:9:42 +0", false},
        {3, "070509042", "7:5:9:42 +0", false},
        {4, "0705", "7:5:0:0 +0", true},
        {5, "070509", "0:0:2:3 +0", true},
        {6, "", "0:0:2:3 +0", false},
        {-1, "", "0:0:2:3 +0", false},
    };
    for (auto const &row : rows) {
        TQTime time(7, 5, 9, 42), read(1, 1, 2, 3);
        time.setFormat(row.format);
        read.setFormat(row.format);
        TQString const text = time;
        EXPECT_EQ(text, row.text) << row.format;
        EXPECT_STREQ(time.operator char *(), row.stringsOnly ? "" : row.text) << row.format;
        read = text;
        EXPECT_EQ(parts(read), row.back) << row.format;
        EXPECT_EQ(static_cast<long>(read), read.getSeconds());
    }
    TQTime blank(5, 6, 7, 0);
    blank.setSeparator('.');
    EXPECT_STREQ(blank.operator char *(), "05.06.07");
    EXPECT_STREQ(TQTime(INT_MIN, 100, -5, 0).operator char *(), "-2147483648:100:-5");
}

TEST(TQTime, ColumnsAreReadWhateverStandsBetween) {
    struct {
        int format;
        char const *text, *time;
    } const rows[] = {
        {1, "07x05y09", "7:5:9:0 +0"},    {1, "7:05:09", "7:5:9:0 +0"},
        {1, "25:61:99", "25:61:99:0 +0"}, {0, "7:15", "7:5:0:0 +0"},
        {1, "12", "12:0:0:0 +0"},         {1, "", "0:0:0:0 +0"},
        {2, "01:02:03:4", "1:2:3:4 +0"},  {3, "010203", "1:2:3:0 +0"},
        {4, "0705", "0:0:0:0 +0"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(parts(TQTime(row.text, row.format)), row.time) << row.text;
    TQTime over = TQTime(23, 0, 0, 0) + 7200;
    over = "05:06:07";
    EXPECT_EQ(parts(over), "5:6:7:0 +1");
}

TEST(TQTime, ComparesByHourMinuteSecondAndThousandth) {
    TQTime const times[] = {{0, 0, 0, 0}, {0, 0, 0, 1}, {0, 0, 1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}};
    expectAscending(times);
    EXPECT_TRUE(TQTime(86400L) == TQTime(0L)) << "the overflow plays no part";
}

TEST(TQTime, TakesAnyNumbers) {
    for (int const a : {INT_MIN, -1, 0, 1, INT_MAX})
        for (long const b : {LONG_MIN, -1L, 0L, LONG_MAX}) {
            TQTime time(a, a, a, a);
            time.add(a, a, a, a);
            time = time + TQTime(b) - a + TQTime(b) - TQTime(b);
            EXPECT_GE(time.hour(), 0);
            EXPECT_LE(time.hour(), 23);
            EXPECT_EQ(static_cast<long>(time), time.getSeconds());
        }
}

TEST(TQTime, StreamsOfBothKinds) {
    std::stringstream text("07:05:09 x");
    TQTime time(0, 0, 0, 0);
    text >> time;
    EXPECT_EQ(parts(time), "7:5:9:0 +0");
    std::ostringstream out;
    out << time;
    EXPECT_EQ(out.str(), "07:05:09");
}

}  // namespace
