#include "tqlib/files/TQLogfile.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include "support/Files.h"
#include "tqplatform/framework/CString.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using tqplatform::systemCalls;

class Log : public testing::Test {
  protected:
    Log() { trace(nullptr); }
    ~Log() override {
        unsetenv("TQDIR");
        unsetenv("TQTRACE");
    }

    // Sets the level of the settings, and their folder to the test's.
    void trace(char const *level) const {
        setenv("TQDIR", folder_.file("").c_str(), 1);
        unsetenv("TQTRACE");
        if (level != nullptr) setenv("TQTRACE", level, 1);
    }
    std::string read() const { return folder_.read("a.log"); }

    TemporaryFolder folder_;
};

TEST_F(Log, NamesOfTheFile) {
    std::filesystem::create_directory(folder_.file("x.y"));
    struct {
        char const *folder;  // null for none
        std::string program;
        char const *file;
    } const rows[] = {
        {nullptr, folder_.file("prog.exe"), "prog.log"},
        {nullptr, folder_.file("a.b.c"), "a.b.log"},
        {nullptr, folder_.file("x.y/prog"), "x.y/prog.log"},
        {"", "/usr/one.exe", "one.log"},
        {"", "C:\\app.x\\two.exe", "C:\\app.x\\two.log"},
        {"x.y/p", "three", "x.y/pthree.log"},
        {"", ".four", ".log"},
        {"", "five/", ".log"},
    };
    for (auto const &row : rows) {
        unsetenv("TQDIR");
        if (row.folder != nullptr) setenv("TQDIR", folder_.file(row.folder).c_str(), 1);
        EXPECT_EQ(TQLogfile(row.program.c_str()).getTracelevel(), 0);
        EXPECT_TRUE(std::filesystem::exists(folder_.file(row.file))) << row.file;
    }
}

TEST_F(Log, Levels) {
    folder_.write("a.log", "old");
    { TQLogfile const unused("a"); }
    EXPECT_EQ(read(), "");
    {
        TQLogfile log("a.exe");
        EXPECT_EQ(log.printf(1, "%d", 1), 0);
        EXPECT_EQ(read(), "Start mit Level 0\n");
        log.printf(0, "%s %d%%", CString("zero"), 0);
        log.printf(-3, "plain");
        EXPECT_EQ(log.setTracelevel(-1), 0);
        EXPECT_EQ(log.setTracelevel(4), 0);
        log.printf(4, "%s", std::string("four"));
        log.printf(5, "five");
        EXPECT_EQ(log.setTracelevel(7), 4);
    }
    EXPECT_EQ(read(),
              "Start mit Level 0\nzero 0%\nplain\nfour\nTQLogfile::SetTravelevel(7)\n"
              "Ende des Programmes\n");
    { EXPECT_EQ(TQLogfile("a").setTracelevel(5), 0); }
    EXPECT_EQ(read(), "Start mit Level 5\nTQLogfile::SetTravelevel(5)\nEnde des Programmes\n");
    { EXPECT_EQ(TQLogfile("a").setTracelevel(3), 0); }
    EXPECT_EQ(read(), "Start mit Level 3\nEnde des Programmes\n");

    struct {
        char const *text;
        int level;
    } const settings[] = {{"3", 3}, {" 12x", 12}, {"x", 0}, {"", 0}, {"-2", -2}, {nullptr, 0}};
    for (auto const &row : settings) {
        trace(row.text);
        EXPECT_EQ(TQLogfile("a").getTracelevel(), row.level);
    }
}

TEST_F(Log, DeadLogs) {
    trace("-1");
    TQLogfile negative("a");
    setenv("TQDIR", folder_.file("none/").c_str(), 1);
    TQLogfile nowhere("a"), nameless(nullptr), copy = nowhere;
    for (TQLogfile *log : {&negative, &nowhere, &nameless, &copy}) {
        EXPECT_EQ(log->printf(-5, "x"), 0);
        EXPECT_EQ(log->setTracelevel(3), -1);
        EXPECT_EQ(log->printf(0, "x"), 0);
        EXPECT_EQ(log->getTracelevel(), -1);
    }
    EXPECT_EQ(read(), "");
}

TEST_F(Log, CopiesShareTheFile) {
    {
        TQLogfile one("a");
        TQLogfile const before = one;
        one.printf(0, "one");
        TQLogfile other = before;
        other.printf(0, "%s", std::string(5000, 'x'));
        TQLogfile assigned("b");
        assigned = other;
        assigned.printf(0, "two");
        one = TQLogfile("c");
    }
    EXPECT_EQ(read(),
              "Start mit Level 0\none\n" + std::string(4095, 'x') + "\ntwo\nEnde des Programmes\n");
    EXPECT_EQ(folder_.read("b.log"), "");
}

TEST_F(Log, AKilledProgramLosesNoLine) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    pid_t const child = fork();
    if (child == 0) {
        TQLogfile log("a");
        for (int i = 0;; ++i) {
            log.printf(0, "%d", i);
            if (write(ends[1], &i, sizeof i) != sizeof i) _exit(1);
        }
    }
    close(ends[1]);
    int last = 0;
    while (last < 300 && ::read(ends[0], &last, sizeof last) == sizeof last) {
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    for (int i; ::read(ends[0], &i, sizeof i) == sizeof i;)
        last = i;
    close(ends[0]);
    std::string expected = "Start mit Level 0\n";
    for (int i = 0; i <= last; ++i)
        expected += std::to_string(i) + '\n';
    EXPECT_EQ(read().substr(0, expected.size()), expected);
}

std::size_t roomLeft = 0;  // on the disk

ssize_t writeWhileRoom(int file, void const *source, std::size_t count) {
    if (roomLeft == 0) {
        errno = ENOSPC;
        return -1;
    }
    std::size_t const taken = std::min(count, roomLeft);
    roomLeft -= taken;
    return ::write(file, source, taken);
}

TEST_F(Log, LinesWaitWhileTheDiskIsFull) {
    auto const realWrite = std::exchange(systemCalls.write, writeWhileRoom);
    std::string expected = "Start mit Level 0\n";
    {
        TQLogfile log("a");
        roomLeft = 1000;
        for (int i = 0; i < 300; ++i) {
            log.printf(0, "line %d", i);
            expected += "line " + std::to_string(i) + '\n';
            if (i == 250) roomLeft = 7;
            if (i == 280) roomLeft = 1'000'000;
        }
        EXPECT_EQ(read(), expected);
        roomLeft = 0;
        for (int i = 0; i < 100'000; ++i)
            log.printf(0, "a flood of messages");
        roomLeft = 1'000'000;
        log.printf(0, "there is room again");
    }
    systemCalls.write = realWrite;
    std::string const end = "there is room again\nEnde des Programmes\n";
    std::string const content = read();
    EXPECT_EQ(content.substr(0, expected.size()), expected);
    EXPECT_EQ(content.substr(content.size() - end.size()), end);
    EXPECT_LT(content.size(), 40'000u);
    std::string const flood =
        content.substr(expected.size(), content.size() - expected.size() - end.size());
    EXPECT_EQ(flood.size() % std::string("a flood of messages\n").size(), 0u);
}

}  // namespace
