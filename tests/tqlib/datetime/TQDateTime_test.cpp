#include "tqlib/datetime/TQDateTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>

#include "support/Files.h"
#include "support/Order.h"
#include "tqlib/datetime/CTQOleDateTime.h"
#include "tqplatform/streams/fstream.h"
#include "tqplatform/streams/ifstream.h"
#include "tqplatform/streams/ofstream.h"

namespace {

TQDateTime moment(int day, int month, int year, int hour, int minute, int second) {
    TQDateTime result(TQDate(day, month, year));
    result.SetTime(TQTime(hour, minute, second, 0));
    return result;
}

std::string text(TQDateTime const &moment) {
    return std::string(moment.operator TQString().text());
}

TEST(TQDateTime, JointForms) {
    struct {
        int format;
        char trenner;
        char const *text;
    } const rows[] = {
        {0, ' ', "05.03.2004 07:05"},    {0, '\0', "05.03.200407:05"},
        {1, ' ', "0403050705"},          {2, '-', "05032004    070509"},
        {3, '-', "05.03.2004-07:05:09"}, {-7, ' ', "05.03.2004 07:05:09"},
        {2, '\0', "05032004    070509"},
    };
    for (auto const &row : rows) {
        TQDateTime value = moment(5, 3, 2004, 7, 5, 9);
        EXPECT_EQ(text(value), "05.03.2004 07:05:09");
        value.setFormat(row.format);
        value.setTrenner(row.trenner);
        EXPECT_EQ(text(value), row.text);
        TQDateTime const copy(value);
        TQDateTime assigned = moment(1, 1, 1, 0, 0, 0);
        assigned.setFormat(2);
        assigned = value;
        std::string const between = row.format == 2 ? "    " : " ";
        std::string const date = row.format == 1   ? "040305"
                                 : row.format == 2 ? "05032004"
                                                   : "05.03.2004";
        EXPECT_EQ(text(copy).substr(0, date.size() + 1), date + " ");
        EXPECT_EQ(text(assigned).substr(0, date.size() + 4), date + "    ");
    }
    TQDateTime mixed = moment(5, 3, 2004, 7, 5, 9);
    mixed.setFormat(6, 3);
    EXPECT_EQ(text(mixed), "20040305 070509000");
}

TEST(TQDateTime, TextsGiveADateAndATime) {
    struct {
        char const *text, *moment;
    } const rows[] = {
        {"1/2/03 7:15", "01.02.2003 07:05"},
        {"1.2.2003   12:34 x", "01.02.2003 12:34"},
        {"01.02.2003", "01.02.2003 00:00"},
        {"01.02.2003 ", "01.02.2003 00:00"},
        {"", "00.00.   0 00:00"},
        {" 01.02.2003", "00.00.   0 01:02"},
        {"x", "00.00.   0 00:00"},
    };
    for (auto const &row : rows) {
        TQDateTime const value{TQString(row.text)};
        EXPECT_EQ(text(value), row.moment) << row.text;
        EXPECT_EQ(value.isValid(), 1);
        EXPECT_EQ(value.CheckValid(), 1);
    }
}

TEST(TQDateTime, Arithmetic) {
    TQDateTime const late = moment(10, 1, 2000, 23, 0, 0);
    TQDateTime const one = moment(1, 1, 1, 2, 0, 0);
    struct {
        TQDateTime result;
        char const *text;
        int overflow;
    } const rows[] = {
        {late + one, "12.01.2000 01:00:00", 1},
        {one - late, "-730128.01.   1 03:00:00", -1},
        {late - one, "09.01.2000 21:00:00", 0},
        {late + TQDate(2, 1, 1), "12.01.2000 23:00:00", 0},
        {late - TQDate(2, 1, 1), "08.01.2000 23:00:00", 0},
        {late + TQTime(2, 0, 0, 0), "11.01.2000 01:00:00", 1},
        {late - TQTime(24L * 3600), "09.01.2000 23:00:00", -1},
        {late + TQTime(49L * 3600), "13.01.2000 00:00:00", 3},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(text(row.result), row.text);
        EXPECT_EQ(row.result.GetTime().overflow(), row.overflow) << row.text;
        EXPECT_EQ(row.result.isValid(), 1);
    }
    TQDateTime const none;
    for (auto const &result :
         {late + none, none + late, none - late, late - none, none + TQDate(1, 1, 1),
          none - TQDate(1, 1, 1), none + TQTime(1L), none - TQTime(1L)}) {
        EXPECT_EQ(result.isValid(), 0);
        EXPECT_EQ(result.year(), TQDate().year());
    }
}

TEST(TQDateTime, Validity) {
    TQDateTime value;
    EXPECT_EQ(value.isValid(), 0);
    EXPECT_EQ(TQDateTime(value).isValid(), 0);
    value.now();
    EXPECT_EQ(value.isValid(), 1);
    TQDateTime byDate, byTime;
    byDate.SetDate(TQDate(1, 1, 2000));
    byTime.SetTime(TQTime(0L));
    EXPECT_EQ(byDate.isValid() + byTime.isValid(), 2);
    EXPECT_EQ(TQDateTime(static_cast<std::tm *>(nullptr)).isValid(), 0);
    EXPECT_EQ(TQDateTime(TQTime(3L)).GetDate(), TQDate());
    EXPECT_EQ(TQDateTime(LONG_MAX).isValid(), sizeof(long) == 8 ? 0 : 1);
}

TEST(TQDateTime, TimestampsAreLocal) {
    for (long const stamp : {0L, 1078470309L, 1099180800L, -86400L}) {
        std::time_t const value = stamp;
        char expected[32];
        std::strftime(expected, sizeof expected, "%d.%m.%Y %H:%M:%S", std::localtime(&value));
        EXPECT_EQ(text(TQDateTime(stamp)), expected);
    }
}

TEST(TQDateTime, ComparesDatesThenTimes) {
    TQDateTime const moments[] = {moment(1, 1, 2000, 0, 0, 0), moment(1, 1, 2000, 1, 0, 0),
                                  moment(2, 1, 2000, 0, 0, 0)};
    expectAscending(moments);
}

TEST(CTQOleDateTime, KeepsEverySecondBothWays) {
    for (int year : {100, 1582, 1899, 1900, 2004, 9999})
        for (int step = 0; step < 2000; ++step) {
            TQDate const date = TQDate(1, 1, year) + step % 365;
            TQTime const time(step * 13L % 24 * 3600 + step * 7 % 60 * 60 + step * 11 % 60);
            CTQOleDateTime const value(date, time);
            ASSERT_EQ(value.GetStatus(), COleDateTime::valid);
            ASSERT_TRUE(value.GetDate() == date);
            ASSERT_TRUE(value.GetTime() == time);
            TQDate taken(1, 1, 1);
            taken.setSeparator('/');
            taken = value;
            ASSERT_TRUE(taken == date);
            ASSERT_EQ(taken.getSeparator(), '.');
        }
    EXPECT_EQ(CTQOleDateTime(1899, 12, 29, 6, 0, 0).m_dt, -1.25);
    CTQOleDateTime end(9999, 12, 31, 23, 59, 59);
    end.m_dt = 2958465.9999999;
    EXPECT_EQ(end.GetYear(), -1);
    EXPECT_EQ(CTQOleDateTime(TQDate(31, 12, 1899)).m_dt, 1.0);
}

TEST(CTQOleDateTime, OutOfRangeIsNotValid) {
    int const rows[][6] = {
        {99, 1, 1, 0, 0, 0},    {10000, 1, 1, 0, 0, 0}, {2003, 2, 29, 0, 0, 0},
        {2003, 13, 1, 0, 0, 0}, {2003, 1, 0, 0, 0, 0},  {2003, 1, 1, 24, 0, 0},
        {2003, 1, 1, 0, 60, 0}, {2003, 1, 1, 0, 0, -1}, {INT_MIN, INT_MAX, 1, 0, 0, 0}};
    for (auto const &row : rows) {
        CTQOleDateTime value(row[0], row[1], row[2], row[3], row[4], row[5]);
        EXPECT_EQ(value.GetStatus(), COleDateTime::invalid);
        EXPECT_EQ(value.GetHour(), -1);
        CTQOleDateTime copy(value);
        EXPECT_EQ(copy.GetStatus(), COleDateTime::invalid);
    }
    EXPECT_EQ(CTQOleDateTime(TQTime(5L)).GetStatus(), COleDateTime::invalid);
}

TEST(ClassicStreams, CarryDatesAndTimes) {
    TemporaryFolder const folder;
    TQDate date(5, 3, 2004), readDate(1, 1, 1);
    TQTime time(7, 5, 9, 0), readTime(0L);
    classic::ofstream out(folder.file("a").c_str());
    out << date << ' ' << time << " 123456789012345678901234\n";
    out.close();
    classic::ifstream in(folder.file("a").c_str());
    in >> readDate >> readTime;
    EXPECT_TRUE(readDate == date && readTime == time);
    in >> readDate;
    EXPECT_EQ(in.get(), '2') << "eleven characters are taken of a longer word";
    classic::ifstream nothing(folder.file("none").c_str());
    nothing >> readTime;
    EXPECT_TRUE(readTime == time);
}

}  // namespace
