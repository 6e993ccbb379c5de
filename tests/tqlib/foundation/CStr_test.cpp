#include "tqlib/foundation/CStr.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "support/Locale.h"
#include "tqlib/foundation/CStrPool.h"
#include "tqplatform/desktop/CWnd.h"

namespace {

std::string textOf(CStr const &text) {
    return {static_cast<char const *>(text), text.GetLength()};
}

// What `action` makes of a string with `text`, also of one that shares it with a copy, which stays.
template <typename Action>
std::string changed(std::string const &text, Action action) {
    CStr own(text.c_str()), shared(text.c_str()), copy(shared);
    action(own);
    action(shared);
    EXPECT_EQ(textOf(copy), text);
    EXPECT_EQ(textOf(own), textOf(shared));
    EXPECT_EQ(static_cast<char const *>(own)[own.GetLength()], '\0');
    return textOf(own);
}

TEST(PooledString, ChangesLeaveCopiesAsTheyWere) {
    struct Row {
        char const *text;
        void (*action)(CStr &);
        char const *result;
    } const rows[] = {
        {"abc", [](CStr &s) { s += 'd'; }, "abcd"},
        {"abc", [](CStr &s) { s += ""; }, "abc"},
        {"abc", [](CStr &s) { s += s, s += s; }, "abcabcabcabc"},
        {"abc", [](CStr &s) { s += static_cast<char const *>(s) + 1; }, "abcbc"},
        {"", [](CStr &s) { s += CStr("x"); }, "x"},
        {"ab", [](CStr &s) { s.Append("cdef", 1, 2), s.Append("gh", 0), s.Append("gh", 1); },
         "abdeg"},
        {"n", [](CStr &s) { s.Append(INT_MIN), s.Append(7); }, "n-21474836487"},
        {"abc", [](CStr &s) { s.Prepend("xy"); }, "xyabc"},
        {"abc", [](CStr &s) { s.Prepend(static_cast<char const *>(s) + 1); }, "bcabc"},
        {"abc", [](CStr &s) { s = static_cast<char const *>(s) + 1; }, "bc"},
        {"abc", [](CStr &s) { s = CString("longer than before"); }, "longer than before"},
        {"abc", [](CStr &s) { s = s; }, "abc"},
        {"abc", [](CStr &s) { s = ""; }, ""},
        {"abc", [](CStr &s) { s.Empty(), s += 'x'; }, "x"},
        {"abc", [](CStr &s) { s.Clear(); }, ""},
        {"abc", [](CStr &s) { s.Reserve(400), s.Compact(3); }, "abc"},
        {"abcdef", [](CStr &s) { s.Truncate(2), s.Truncate(9); }, "ab"},
        {"abcdef", [](CStr &s) { s.DeleteLeft(2), s.DeleteRight(1); }, "cde"},
        {"abcdef", [](CStr &s) { s.DeleteLeft(6); }, ""},
        {"abcdef", [](CStr &s) { s.DeleteRight(7); }, ""},
        {"abcdef", [](CStr &s) { s.Delete(1, 2), s.Delete(2, 65535); }, "ad"},
        {"abcdef", [](CStr &s) { s.Delete(6, 0); }, ""},
        {"abcdef", [](CStr &s) { s.Mid(1, 3, s); }, "bcd"},
        {"abcdef", [](CStr &s) { s.Right(9, s), s.Right(4, s), s.Left(2, s); }, "cd"},
        {"abcdef", [](CStr &s) { s.Mid(6, 1, s); }, ""},
        {"abc", [](CStr &s) { s = s + s + "d"; }, "abcabcd"},
        {"abc", [](CStr &s) { s.Format("<%s>", static_cast<char const *>(s)); }, "<abc>"},
        {"abc", [](CStr &s) { s.Format("ab%!", &s); }, "abab"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(changed(row.text, row.action), row.result) << &row - rows;
}

TEST(PooledString, Looks) {
    CStr const text("abcab");
    EXPECT_EQ(text.Last(), 'b');
    EXPECT_EQ(text.Find('b'), 1);
    EXPECT_EQ(text.Find('b', 2), 4);
    EXPECT_EQ(text.Find('x', 4), -1);
    EXPECT_EQ(CStr().Find('x'), -1);
    EXPECT_EQ(text.ReverseFind('b'), 4);
    EXPECT_EQ(text.ReverseFind('b', 4), 1);
    EXPECT_EQ(text.ReverseFind('a', 0), -1);
    EXPECT_EQ(text.Compare("abd") + text.CompareNoCase("ABCAB"), -1);
    EXPECT_EQ(text.Compare("ABCAB") + text.CompareNoCase("ABCA"), 2);
    EXPECT_EQ(CStr("\xE4").Compare("a"), 1);
    EXPECT_EQ((text == CStr("abcab")) + (text == "abca"), 1);
    EXPECT_EQ(CStr() == "", 1);
}

TEST(PooledString, RoomIsWhatIsAskedForRoundedUp) {
    for (auto const &[length, room] : {std::pair{5, 7}, {8, 11}, {3, 3}, {65530, 65531}}) {
        CStr const text(std::string(static_cast<std::size_t>(length), 'x').c_str());
        EXPECT_EQ(text.GetLength(), length);
        EXPECT_EQ(text.GetCapacity(), room);
    }
    CStr text("abc", 20);
    EXPECT_EQ(text.GetCapacity(), 23);
    CStr const copy(text);
    text.Reserve(5);
    EXPECT_EQ(text.GetCapacity(), 23);
    text.Empty();
    EXPECT_EQ(text.GetCapacity(), 23);
    text.Compact(23);
    EXPECT_EQ(text.GetCapacity(), 23);
    text.Compact(22);
    EXPECT_EQ(text.GetCapacity(), 3);
}

TEST(PooledString, BlocksAreHandedOutAgain) {
    FreePool();
    char const *first = nullptr;
    {
        CStr const text("seven c");
        CStr const copy(text);
        first = text;
    }
    EXPECT_EQ(static_cast<char const *>(CStr("another")), first);
    FreePool();
}

TEST(PooledString, FormatsWhatTheRuntimeFormats) {
    struct Row {
        char const *format;
        double value;
    } const reals[] = {{"%f", 1.5},       {"%.3f", -2.0005}, {"%.0f", 2.5},   {"%10.2f|", 1e15},
                       {"%-+9.1e|", NAN}, {"%.17g", 0.1},    {"%#G", 1e20},   {"%.8f", 1e-9},
                       {"%.400f", 0.1},   {"%600.2f", 3.0},  {"%012.3f", -1}, {"%.9f", 2.0 / 3},
                       {"%.2f", 1e300}};
    for (auto const &[format, value] : reals) {
        char expected[1000];
        std::snprintf(expected, sizeof expected, format, value);
        std::string cut = std::string(expected).substr(0, 319);
        if (std::strchr(format, '|') != nullptr) cut = expected;
        CStr text;
        text.Format(format, value);
        EXPECT_EQ(textOf(text), cut) << format;
    }
    for (char const *format : {"%d", "%i|", "%u", "%5d|", "%-5d|", "%05d", "%+d", "% d", "%x",
                               "%#X", "%o", "%.4d", "%hd", "%c", "100%% %d"}) {
        for (int const value : {0, 65, -1, 70000, INT_MIN}) {
            char expected[100];
            std::snprintf(expected, sizeof expected, format, value);
            CStr text;
            text.Format(format, value);
            EXPECT_STREQ(text, expected) << format << value;
        }
    }
}

TEST(PooledString, FormatsInItsOwnWay) {
    CStr const other("other");
    CStr text;
    auto const formatted = [&](auto... arguments) {
        text.Format(arguments...);
        return textOf(text);
    };
    EXPECT_EQ(formatted("plain"), "plain");
    EXPECT_EQ(formatted("%5"), "");
    EXPECT_EQ(formatted("a%"), "a");
    EXPECT_EQ(formatted("%.2s|%.2s", "abcde", "ab"), "ab|ab");
    EXPECT_EQ(formatted("%-9s|%.s|%.-1s|%.0s", "abc", "def", "ghi", "x"), "abc|def|ghi|");
    EXPECT_EQ(formatted("%!-%s-%q-%5%", &other, "s"), "other-s-q-%");
    EXPECT_EQ(formatted("%*d|%ld|%Lf", 7, 1L << 30, 0.5), "7|1073741824|" + localized("0.500000"));
    EXPECT_EQ(formatted("%C%C", 0x20AC, 0x4E00), "\x80");
    EXPECT_EQ(formatted("%99999999999d", 1), std::string(319, ' '));
    EXPECT_EQ(formatted(std::string(80, '0').insert(0, "%").append("d").c_str(), 5), "5");
    EXPECT_EQ(formatted(961u), "Nein");
    EXPECT_EQ(formatted(4711u), "");
    EXPECT_EQ(text.LoadString(960), 1);
    EXPECT_EQ(text.LoadString(4711), 0);
    EXPECT_STREQ(text, "Ja");
    text.Append(1.0 / 3, 99);
    EXPECT_EQ(textOf(text), "Ja" + localized("0.333333333333333314829616256247390992939472198486"));
}

TEST(PooledString, TakesTheTextOfAWindow) {
    CWnd object;
    ASSERT_EQ(object.Create("STATIC",
                            "Gr\xFC\xDF"
                            "e",
                            0, {}, nullptr, 0),
              1);
    CStr text("old");
    text.GetWindowText(&object);
    EXPECT_STREQ(text,
                 "Gr\xFC\xDF"
                 "e");
    text.GetWindowText(nullptr);
    EXPECT_STREQ(text, "");
    text += static_cast<char const *>(nullptr);
    text.Append(nullptr, 5);
    text.Format(nullptr);
    EXPECT_STREQ(text, "");
}

TEST(PooledStringDeathTest, FatalCallsTellTheirNumberAndAbort) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::string const longest(65530, 'x'), tooLong(65531, 'x');
    CStr text(longest.c_str());
    auto const aborts = testing::KilledBySignal(SIGABRT);
    EXPECT_EXIT(CStr().Last(), aborts, "CStr fatal 2");
    EXPECT_EXIT(text.Find('x', 65530), aborts, "CStr fatal 2");
    EXPECT_EXIT(CStr().ReverseFind('x', 0), aborts, "CStr fatal 2");
    EXPECT_EXIT(text.Format("%n", nullptr), aborts, "CStr fatal 3");
    EXPECT_EXIT(text.Format("%S", L""), aborts, "CStr fatal 4");
    EXPECT_EXIT(text += 'x', aborts, "CStr fatal 5");
    EXPECT_EXIT(text.Prepend("x"), aborts, "CStr fatal 5");
    EXPECT_EXIT(text = tooLong.c_str(), aborts, "CStr fatal 5");
    EXPECT_EXIT(CStr(tooLong.c_str()), aborts, "CStr fatal 5");
    EXPECT_EXIT(text.Reserve(65531), aborts, "CStr fatal 5");
}

TEST(PooledString, ThreadsShareTextsAndThePool) {
    CStr const shared("shared by all of them");
    std::vector<CStr> mailbox(100, shared);
    auto const work = [&](std::size_t first) {
        for (int round = 0; round < 300; ++round) {
            for (std::size_t i = first; i < mailbox.size(); i += 4) {
                CStr copy(shared);
                mailbox[i] = round % 3 == 0 ? shared : copy + "x";
                copy.Append(round);
                mailbox[i] = copy;
            }
        }
    };
    for (int generation = 0; generation < 3; ++generation) {
        std::vector<std::thread> threads;
        for (std::size_t first = 0; first < 4; ++first)
            threads.emplace_back(work, first);
        for (std::thread &thread : threads)
            thread.join();
        mailbox.assign(100, shared);
    }
    EXPECT_STREQ(shared, "shared by all of them");
}

}  // namespace
