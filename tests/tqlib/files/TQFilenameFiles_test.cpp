#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

#include "support/FaultyCalls.h"
#include "support/Files.h"
#include "tqlib/files/TQFilename.h"

namespace {

// Files are named by the host's paths, settings come from the environment.
class FileCalls : public testing::Test {
  protected:
    ~FileCalls() override {
        for (auto const *const name : {"TQEDIT", "TQVIEW", "TQPRINT", "TQPATH"})
            unsetenv(name);
    }

    TQFilename file(std::string const &name) const { return folder_.file(name).c_str(); }
    TQString path(std::string const &name) const { return folder_.file(name).c_str(); }
    std::size_t count() const {
        auto const files = std::filesystem::directory_iterator(folder_.file(""));
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    TemporaryFolder folder_;
};

TEST_F(FileCalls, AccessRenameRemoveSize) {
    TQFilename a(folder_.write("a", "12345").c_str());
    EXPECT_EQ(a.access(0), 0);
    EXPECT_EQ(a.access(6), 0);
    EXPECT_EQ(a.fileSize(), 5u);
    folder_.write("taken", "t");
    EXPECT_NE(a.rename(path("taken")), 0);
    EXPECT_NE(a.rename(path("none/b")), 0);
    EXPECT_EQ(a.text(), folder_.file("a"));
    EXPECT_EQ(folder_.read("taken"), "t");
    EXPECT_EQ(a.rename(path("a")), 0);
    EXPECT_EQ(a.rename(TQString("  ") + path("b") + " "), 0);
    EXPECT_EQ(a.text(), folder_.file("b"));
    EXPECT_EQ(folder_.read("b"), "12345");
    EXPECT_EQ(a.remove(), 0);
    EXPECT_EQ(a.remove(), -1);
    EXPECT_EQ(a.access(0), -1);
    EXPECT_EQ(a.fileSize(), 0u);
    EXPECT_NE(a.rename(path("c")), 0);
    EXPECT_EQ(TQFilename().fileSize(), 0u);
}

TEST_F(FileCalls, RenamingReplacesNothing) {
    folder_.write("a", "content");
    std::filesystem::create_symlink("a", folder_.file("link"));
    std::filesystem::create_symlink("none", folder_.file("dangling"));
    std::filesystem::create_hard_link(folder_.file("a"), folder_.file("hard"));
    for (auto const &[from, to] : {std::pair{"link", "a"},
                                   {"a", "link"},
                                   {"a", "hard"},
                                   {"a", "dangling"},
                                   {"link", "dangling"}})
        EXPECT_NE(file(from).rename(path(to)), 0) << from << " " << to;
    EXPECT_EQ(file("link").rename(path("./link")), 0);
    EXPECT_EQ(folder_.read("a") + folder_.read("link") + folder_.read("hard"),
              "contentcontentcontent");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.file("link")));
}

TEST_F(FileCalls, CopyTellsWhichFileIsAtFault) {
    std::string const content("a b\r\n\x1A\0\xFF\n", 9);
    TQFilename const a(folder_.write("a", content).c_str());
    std::filesystem::create_directory(folder_.file("d"));
    folder_.write("old", "old content");
    std::filesystem::create_hard_link(folder_.file("a"), folder_.file("same"));
    struct {
        TQFilename source;
        char const *target;
        int result;
    } const rows[] = {
        {a, "b", 0},
        {a, "old", 0},
        {a, "d/b", 0},
        {a, "none/b", 1},
        {a, "d", 1},
        {a, "a", 1},
        {a, "same", 1},
        {file("none"), "c", 2},
        {file("d"), "c", 3},
        {file("none"), "old", 2},
        {file("none"), "none", 2},
        {file("none"), "none/b", 1},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(row.source.copy(path(row.target)), row.result) << row.target;
        if (row.result == 0) {
            EXPECT_EQ(folder_.read(row.target), content);
        }
    }
    EXPECT_EQ(folder_.read("a"), content);
    EXPECT_EQ(folder_.read("old"), content);
    EXPECT_EQ(count(), 5u);  // a, b, d, old, same
    EXPECT_EQ(TQFilename("/dev/zero").copy(TQString()), 1);
    EXPECT_EQ(a.copy("/dev/full"), 1);
}

TEST_F(FileCalls, AFailingCopyLosesNothing) {
    std::string const content(300'000, 'n');
    TQFilename const source(folder_.write("a", content).c_str());
    for (bool const fresh : {true, false})
        for (Fate const fate : {Fate::fails, Fate::isInterrupted, Fate::isCutShort}) {
            bool struck = true;
            for (int calls = 0; struck; ++calls) {
                std::filesystem::remove(folder_.file("b"));
                if (!fresh) folder_.write("b", "old");
                int result;
                {
                    FaultyCalls const faulty(calls, fate);
                    result = source.copy(path("b"));
                    struck = faulty.hasStruck();
                }
                EXPECT_EQ(folder_.read("b"), result == 0 ? content : fresh ? "" : "old") << calls;
                EXPECT_EQ(count(), result != 0 && fresh ? 1u : 2u) << calls;
                EXPECT_TRUE(struck || result == 0);
            }
        }
    EXPECT_EQ(folder_.read("a"), content);
}

// Writes a program that leaves its arguments, a line each, in the file "arguments".
std::string writeProgram(TemporaryFolder const &folder) {
    std::string const path =
        folder.write("program", "#!/bin/sh\nprintf '%s\\n' \"$@\" >" + folder.file("arguments"));
    chmod(path.c_str(), 0700);
    return path;
}

TEST_F(FileCalls, ProgramsOfTheSettings) {
    TQFilename a("C:/tmp/x y");
    EXPECT_EQ(a.edit(), 1);
    EXPECT_EQ(a.view(), 1);
    EXPECT_EQ(a.print("p"), 1);
    std::string const program = writeProgram(folder_);
    setenv("TQEDIT", (program + " -e").c_str(), 1);
    setenv("TQVIEW", (program + " -v").c_str(), 1);
    setenv("TQPRINT", program.c_str(), 1);
    EXPECT_EQ(a.edit(), 0);
    EXPECT_EQ(folder_.read("arguments"), "-e\nC:/tmp/x\ny\n");
    EXPECT_EQ(a.view(), 0);
    EXPECT_EQ(folder_.read("arguments"), "-v\nC:/tmp/x\ny\n");
    EXPECT_EQ(a.print(""), 0);
    EXPECT_EQ(folder_.read("arguments"), "C:/tmp/x\ny\nPRN:\n");
    EXPECT_EQ(a.print("lp 1"), 0);
    EXPECT_EQ(folder_.read("arguments"), "C:/tmp/x\ny\nlp\n1\n");

    std::size_t const room = 1023 - program.size() - std::string(" -v ").size();
    TQFilename longest(std::string(room, 'x').c_str()), longer(std::string(room + 1, 'y').c_str());
    EXPECT_EQ(longest.view(), 0);
    EXPECT_EQ(longer.view(), -1);
    EXPECT_EQ(folder_.read("arguments"), "-v\n" + std::string(room, 'x') + "\n");
    setenv("TQVIEW", folder_.file("none").c_str(), 1);
    EXPECT_EQ(a.view(), -1);
}

unsigned long firstNumber() {
    std::time_t const now = std::time(nullptr);
    std::tm const *const local = std::localtime(&now);
    return static_cast<unsigned long>((local->tm_hour * 60 + local->tm_min) * 60 + local->tm_sec) *
           16;
}

std::string hexadecimal(unsigned long number) {
    char text[32];
    std::snprintf(text, sizeof text, "%lX", number);
    return text;
}

TEST_F(FileCalls, TemporaryFiles) {
    setenv("TQPATH", folder_.file("t").c_str(), 1);
    for (int i = 0; i < 14; ++i) {
        TQFilename temporary("old");
        unsigned long const from = firstNumber();
        ASSERT_EQ(temporary.makeTemp(), 0);
        std::string const name = std::filesystem::path(temporary.text()).filename();
        ASSERT_EQ(name[0], 't');
        unsigned long const number = std::stoul(name.substr(1), nullptr, 16);
        EXPECT_EQ(name, "t" + hexadecimal(number));
        EXPECT_GE(number, from);
        EXPECT_LE(number, firstNumber() + 14);
        EXPECT_TRUE(std::filesystem::is_empty(folder_.file(name)));
    }
    EXPECT_EQ(count(), 14u);
    unsigned long const now = firstNumber();
    for (unsigned long number = now; number < now + 5ul * 16; ++number)
        folder_.write("t" + hexadecimal(number), "");
    std::size_t const before = count();
    TQFilename temporary;
    EXPECT_EQ(temporary.makeTemp(), 2);
    EXPECT_EQ(hexadecimal(14), std::string(1, temporary.text().back()));
    EXPECT_EQ(count(), before);
    setenv("TQPATH", folder_.file("none/").c_str(), 1);
    EXPECT_EQ(temporary.makeTemp(), 1);
    EXPECT_EQ(temporary.text().find(folder_.file("none/")), 0u);
}

TEST_F(FileCalls, TemporaryFilesStandInTheCurrentDirectoryIfNoneIsSet) {
    auto const here = std::filesystem::current_path();
    std::filesystem::create_directory(folder_.file("d"));
    std::filesystem::current_path(folder_.file("d"));
    TQFilename temporary;
    EXPECT_EQ(temporary.makeTemp(), 0);
    EXPECT_EQ(temporary.GetPath().text().rfind("\\d\\") + 3, temporary.GetPath().GetLength());
    EXPECT_EQ(temporary.remove(), 0);
    std::filesystem::remove(folder_.file("d"));
    EXPECT_EQ(temporary.makeTemp(), 1);
    std::filesystem::current_path(here);
    EXPECT_EQ(count(), 0u);
}

std::string momentOf(TQFilename const &file) {
    char text[64];
    TQDate const &date = file.fileDate();
    TQTime const &time = file.fileTime();
    std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d", date.year(), date.month(), date.day(),
                  time.hour(), time.minute(), time.second());
    return text;
}

TEST_F(FileCalls, TheTimeOfTheLastChange) {
    TQFilename a(folder_.write("a", "").c_str());
    for (long const seconds : {0L, 951'868'799L, -1L, -86'400L * 365, 2'147'483'647L, 1L}) {
        timespec const times[2] = {{7, 0}, {seconds, 999'999'999}};
        ASSERT_EQ(utimensat(AT_FDCWD, folder_.file("a").c_str(), times, 0), 0);
        std::tm const *const moment = std::gmtime(&times[1].tv_sec);
        char text[64];
        std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d", moment->tm_year + 1900,
                      moment->tm_mon + 1, moment->tm_mday, moment->tm_hour, moment->tm_min,
                      moment->tm_sec);
        EXPECT_EQ(momentOf(a), text);
    }
    EXPECT_EQ(a.setFileDate(TQDate(29, 2, 2024)), 0);
    EXPECT_EQ(momentOf(a), "2024-2-29 0:0:1");
    struct stat status {};
    ASSERT_EQ(stat(folder_.file("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mtim.tv_nsec, 999'999'900);
    EXPECT_EQ(a.setFileTime(TQTime(23, 59, 58, 0)), 0);
    EXPECT_EQ(momentOf(a), "2024-2-29 23:59:58");
    ASSERT_EQ(stat(folder_.file("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 7);

    int const most = std::numeric_limits<int>::max();
    for (TQDate const &date : {TQDate(30, 2, 2024), TQDate(0, 0, 0), TQDate(most, most, most)})
        EXPECT_EQ(a.setFileDate(date), -1);
    EXPECT_EQ(momentOf(a), "2024-2-29 23:59:58");
    TQFilename none = file("none");
    EXPECT_EQ(none.setFileDate(TQDate(1, 1, 2000)), -1);
    EXPECT_EQ(none.setFileTime(TQTime(1, 1, 1, 0)), -1);
    EXPECT_EQ(momentOf(none), "0-0-0 0:0:0");
    EXPECT_EQ(file("none").access(0), -1);
}

}  // namespace
