#include "tqlib/config/TQConfiguration.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <random>
#include <string>

#include "../../../fuzz/support/SettingsModel.h"
#include "support/FaultyCalls.h"
#include "support/Files.h"
#include "tqlib/config/getLibrarySetting.h"

namespace {

std::string textOf(char *owned) {
    std::string const text = owned == nullptr ? "(none)" : owned;
    std::free(owned);
    return text;
}

// A folder for the settings and one for the temporary files, which must be empty in the end.
class TQConfiguration_ : public testing::Test {
  protected:
    TQConfiguration_() { setTemporary(temporary_); }
    ~TQConfiguration_() override {
        unsetenv("TQPATH");
        unsetenv("TQINI");
        EXPECT_TRUE(std::filesystem::is_empty(temporary_.file("")));
    }

    static void setTemporary(TemporaryFolder const &folder) {
        setenv("TQPATH", (folder.file("") + "/").c_str(), 1);
    }
    std::string write(std::string const &content) { return folder_.write("a.ini", content); }
    std::string read() const { return folder_.read("a.ini"); }
    std::size_t filesBeside() const {
        auto const files = std::filesystem::directory_iterator(folder_.file(""));
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    /// Removes what a killed process has left.
    static void clear(TemporaryFolder const &folder) {
        for (auto const &file : std::filesystem::directory_iterator(folder.file("")))
            std::filesystem::remove(file);
    }

    TemporaryFolder folder_, temporary_;
};

struct Reading {
    char const *content, *category, *name, *value;
};

TEST_F(TQConfiguration_, Reading) {
    std::string const longLine =
        "[c]\n" + std::string(1023, 'x') + "a=b\n" + std::string(1023, 'x') + "[d]\na=c\n";
    Reading const rows[] = {
        {"[c]\na=b=c\n", "c", "a", "b=c"},
        {"[c]\n=a=b\n", "[c]", "a", "b"},
        {"[c]\n==\n===a==b\n", "c]", "a", "=b"},
        {"[c] old\na=1", "[c", "a", "1"},
        {"[cd]\na=1\n [c]\na=2\n", "c", "a", "(none)"},
        {"[c]\nA=x\na =y\na=\n#a=4\na=3\na=5\n", "c", "a", "3"},
        {"[c]\na=1\r\n", "c", "a", "1\r"},
        {"[c]\r\na=b\n", "c", "a", "b"},
        {"[c]\n[d]\na=1\n", "c", "a", "(none)"},
        {"[c]\nb=[\na=[x]\n", "c", "a", "[x]"},
        {"[c]\na=1\n[c]\nb=2\n", "c", "b", "(none)"},
        {longLine.c_str(), "c", "a", "b"},
        {longLine.c_str(), "d", "a", "c"},
        {"", "c", "a", "(none)"},
        {"[]\na=1\n", "[]", "a", "1"},
        {"[c]\na=1\n", "", "a", "(none)"},
    };
    for (Reading const &row : rows) {
        TQConfiguration settings(write(row.content).c_str());
        EXPECT_EQ(textOf(settings.getValue(row.category, row.name)), row.value) << row.content;
        SettingsModel const model{row.content};
        EXPECT_EQ(settings.searchCategorie(row.category),
                  static_cast<long>(model.find(row.category).value_or(-1ul)));
    }
}

TEST_F(TQConfiguration_, TheStreamStandsBehindTheHeader) {
    TQConfiguration settings(write("[a]\nx=1\n[b]\ny=2\n").c_str());
    char line[10];
    EXPECT_EQ(settings.searchCategorie("b"), 8);
    settings.stream()->getline(line, sizeof line);
    EXPECT_STREQ(line, "y=2");
    EXPECT_EQ(settings.searchCategorie("c"), -1);
    EXPECT_TRUE(settings.stream()->fail());
    EXPECT_EQ(settings.stream()->tellg(), -1);
}

TEST_F(TQConfiguration_, Opening) {
    unsetenv("TQINI");
    EXPECT_STREQ(TQConfiguration().fileName(), "");
    EXPECT_STREQ(TQConfiguration(nullptr).fileName(), "");
    std::string const missing = folder_.file("no/such.ini");
    TQConfiguration closed(missing.c_str());
    EXPECT_STREQ(closed.fileName(), "");
    EXPECT_TRUE(closed.stream()->fail());
    EXPECT_EQ(closed.getValue("a", "b"), nullptr);
    EXPECT_EQ(closed.searchCategorie("a"), -1);
    EXPECT_EQ(closed.newCategorie("a") + closed.deleteCategorie("a"), 0);
    EXPECT_EQ(closed.addValue("a", "b", "c") + closed.setValue("a", "b", "c"), 2);
    EXPECT_EQ(closed.deleteValue("a", "b"), 1);
    EXPECT_EQ(closed.addProgram("a", "1", "b") + closed.deleteProgramm("a"), 2);

    setenv("TQINI", folder_.file("new.ini").c_str(), 1);
    TQConfiguration fresh;
    EXPECT_EQ(fresh.fileName(), folder_.file("new.ini"));
    EXPECT_EQ(fresh.newCategorie("TQ"), 1);
    EXPECT_EQ(folder_.read("new.ini"), "\n[TQ]\n");
    EXPECT_EQ(fresh.addValue("TQ", "DIR", "x"), 0);
    EXPECT_EQ(fresh.newCategorie(nullptr) + fresh.deleteCategorie(nullptr), 0);
    EXPECT_EQ(fresh.searchCategorie(nullptr), -1);
    EXPECT_EQ(fresh.getValue("TQ", nullptr), nullptr);
    EXPECT_EQ(fresh.getProgramVersion(nullptr), nullptr);
    EXPECT_EQ(fresh.addValue("TQ", nullptr, "c") + fresh.addValue("TQ", "b", nullptr), 2);
    EXPECT_EQ(fresh.setValue("TQ", nullptr, "c") + fresh.deleteValue("TQ", nullptr), 2);
    EXPECT_EQ(fresh.addProgram(nullptr, "1", "b") + fresh.deleteProgramm(nullptr), 2);
    EXPECT_EQ(folder_.read("new.ini"), "\n[TQ]\nDIR=x\n");
    unsetenv("TQDIR");
    EXPECT_EQ(textOf(getLibrarySetting("DIR")), "x");
    setenv("TQDIR", "", 1);
    EXPECT_EQ(textOf(getLibrarySetting("DIR")), "");
    unsetenv("TQDIR");
    EXPECT_EQ(getLibrarySetting(std::string(1022, 'x').c_str()), nullptr);
    EXPECT_EQ(getLibrarySetting(nullptr), nullptr);
}

// One operation with its arguments; `apply` does it to the model.
struct Operation {
    int number;
    std::string category, name, value;

    int run(TQConfiguration &settings) const {
        char const *const c = category.c_str(), *const n = name.c_str(), *const v = value.c_str();
        switch (number) {
            case 0:
                return settings.newCategorie(c);
            case 1:
                return settings.deleteCategorie(c);
            case 2:
                return settings.addValue(c, n, v);
            case 3:
                return settings.setValue(c, n, v);
            case 4:
                return settings.deleteValue(c, n);
            case 5:
                return settings.addProgram(n, v, c);
            default:
                return settings.deleteProgramm(n);
        }
    }
    int apply(SettingsModel &model) const {
        switch (number) {
            case 0:
                return model.addCategory(category);
            case 1:
                return model.deleteCategory(category);
            case 2:
                return !model.addValue(category, name, value);
            case 3:
                return !model.setValue(category, name, value);
            case 4:
                return !model.deleteValue(category, name);
            case 5:
                model.addProgram(name, value, category);
                return 0;
            default:
                return !model.deleteProgram(name);
        }
    }
};

constexpr char startContent[] =
    "# settings\n\n[Programs]\np=C:\\p.exe\np_Version=1\n[a] "
    "b\nx=1\ny=\nx=2\n[b]\nx=3\r\n[c]\nlast=1";

Operation const operations[] = {
    {0, "new", "", ""},
    {0, "[a]", "", ""},
    {0, "", "", ""},
    {0, std::string(96, 'x'), "", ""},
    {0, std::string(95, 'x'), "", ""},
    {1, "a", "", ""},
    {1, "c", "", ""},
    {1, "d", "", ""},
    {2, "a", "z", "1"},
    {2, "a", "x", "1"},
    {2, "a", "y", "1"},
    {2, "a", "z", std::string(1020, 'v')},
    {2, "a", "z", std::string(1021, 'v')},
    {3, "a", "x", "9"},
    {3, "b", "x", ""},
    {3, "c", "last", "2"},
    {3, "a", "y", "[z]"},
    {3, "d", "x", "1"},
    {3, "b", "x", std::string(2000, 'v')},
    {4, "a", "x", ""},
    {4, "a", "n", ""},
    {4, "d", "x", ""},
    {5, "C:\\q", "q", "2.0"},
    {5, "C:\\q", "p", "2.0"},
    {6, "", "p", ""},
    {6, "", "q", ""},
    {5, "C:\\q", std::string(1016, 'p'), "1"},
};

TEST_F(TQConfiguration_, ChangesAreThoseOfThePlainModel) {
    for (Operation const &operation : operations) {
        SettingsModel model{startContent};
        TQConfiguration settings(write(startContent).c_str());
        int const expected =
            operation.name.size() > 1000 ? 1 : operation.apply(model);  // beyond the limit
        EXPECT_EQ(operation.run(settings), expected) << operation.number << operation.category;
        EXPECT_EQ(read(), model.content) << operation.number << operation.category;
    }
}

TEST_F(TQConfiguration_, ObjectsAndCopiesSeeEachOthersChanges) {
    TQConfiguration one(write("[a]\n").c_str()), other(folder_.file("a.ini").c_str());
    {
        TQConfiguration const copy = one;
        EXPECT_EQ(one.setValue("a", "x", "1"), 0);
    }
    EXPECT_EQ(textOf(other.getValue("a", "x")), "1");
    EXPECT_EQ(other.setValue("a", "x", "2"), 0);
    EXPECT_EQ(textOf(one.getValue("a", "x")), "2");
    one.stream()->clear();
    one.stream()->seekp(0);
    *one.stream() << "[b]";
    EXPECT_EQ(one.searchCategorie("b"), 0);
    EXPECT_EQ(filesBeside(), 1u);
}

TEST_F(TQConfiguration_, AnOpenFileIsFollowedWhereverItsNameLeads) {
    write("[a]\nx=1\n");
    std::filesystem::create_directory(folder_.file("d"));
    auto const here = std::filesystem::current_path();
    std::filesystem::current_path(folder_.file(""));
    TQConfiguration relative("a.ini");
    std::filesystem::current_path(folder_.file("d"));
    EXPECT_EQ(relative.setValue("a", "x", "2"), 0);
    std::filesystem::current_path(here);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.file("d")));
    EXPECT_STREQ(relative.fileName(), "a.ini");

    classic::fstream *const held = relative.stream();
    EXPECT_EQ(relative.setValue("a", "x", "3"), 0);
    held->clear();
    held->seekg(0);
    char line[20];
    held->getline(line, sizeof line);
    held->getline(line, sizeof line);
    EXPECT_STREQ(line, "x=3");
    std::filesystem::create_hard_link(folder_.file("a.ini"), folder_.file("b"));
    EXPECT_EQ(relative.searchCategorie("a"), 0);
    EXPECT_EQ(held->peek(), 'x');
    EXPECT_EQ(relative.setValue("a", "x", "5"), 0);
    held->getline(line, sizeof line);
    EXPECT_STREQ(line, "x=5");
    std::filesystem::remove(folder_.file("b"));
    EXPECT_EQ(TQConfiguration(folder_.file("a.ini").c_str()).setValue("a", "y", "4"), 0);
    EXPECT_EQ(relative.stream()->tellg(), 8);

    std::filesystem::remove(folder_.file("a.ini"));
    EXPECT_EQ(relative.deleteValue("a", "x"), 0);
    EXPECT_EQ(read(), "[a]\ny=4\n");
    std::filesystem::remove_all(folder_.file("d"));
    EXPECT_EQ(TQConfiguration("/dev/null").newCategorie("a"), 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

// What a file is replaced by keeps mode, links and further names.
TEST_F(TQConfiguration_, TheFileStaysTheSameForOthers) {
    std::string const path = write("[a]\n"), link = folder_.file("link"), name = folder_.file("b");
    chmod(path.c_str(), 0640);
    ASSERT_EQ(symlink("a.ini", link.c_str()), 0);
    EXPECT_EQ(TQConfiguration(link.c_str()).addValue("a", "x", "1"), 0);
    struct stat status {};
    EXPECT_EQ(lstat(link.c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0640u);
    EXPECT_EQ(read(), "[a]\nx=1\n");

    ASSERT_EQ(::link(path.c_str(), name.c_str()), 0);
    EXPECT_EQ(TQConfiguration(path.c_str()).deleteValue("a", "x"), 0);
    EXPECT_EQ(folder_.read("b"), "[a]\n");
    EXPECT_EQ(filesBeside(), 3u);
}

Operation const changes[] = {
    {0, "new", "", ""}, {1, "a", "", ""}, {3, "b", "x", "9"}, {5, "C:\\q", "p", "2.0"}};

// What decides which way a change takes: where temporary files are, how many names the file has,
// and whether there are NUL characters in it.
struct Situation {
    bool temporaryBeside, twoNames, withNul;
};

constexpr Situation situations[] = {
    {false, false, false}, {true, false, false}, {false, true, false}, {true, false, true}};

TEST_F(TQConfiguration_, AFailingCallLosesNothing) {
    std::string const link = folder_.file("b");
    for (auto const &[temporaryBeside, twoNames, withNul] : situations) {
        setTemporary(temporaryBeside ? folder_ : temporary_);
        std::string const content = startContent + std::string(withNul ? 1 : 0, '\0');
        for (Operation const &operation : changes)
            for (Fate const fate : {Fate::fails, Fate::isInterrupted, Fate::isCutShort}) {
                bool struck = true;
                for (int calls = 0; struck; ++calls) {
                    std::filesystem::remove(link);
                    std::string const path = write(content);
                    if (twoNames) std::filesystem::create_hard_link(path, link);
                    TQConfiguration settings(path.c_str());
                    SettingsModel model{content};
                    int const good = operation.apply(model);
                    int result;
                    {
                        FaultyCalls const faulty(calls, fate);
                        result = operation.run(settings);
                        struck = faulty.hasStruck();
                    }
                    EXPECT_EQ(read(), result == good ? model.content : content)
                        << operation.number << " call " << calls;
                    EXPECT_TRUE(struck || result == good);
                    EXPECT_EQ(filesBeside(), twoNames ? 2u : 1u) << calls;
                }
            }
    }
}

// Runs `child` in a process of its own.
void inChild(std::function<void()> const &child) {
    pid_t const process = fork();
    if (process == 0) {
        child();
        _exit(0);
    }
    ASSERT_EQ(waitpid(process, nullptr, 0), process);
}

TEST_F(TQConfiguration_, WhateverCallIsTheLastTheFileIsOldOrNew) {
    int seen[2] = {};
    for (TemporaryFolder const *folder : {&folder_, &temporary_}) {
        setTemporary(*folder);
        for (Operation const &operation : changes)
            for (int calls = 0; calls < 60; ++calls) {
                std::string const path = write(startContent);
                SettingsModel model{startContent};
                operation.apply(model);
                inChild([&] {
                    TQConfiguration settings(path.c_str());
                    FaultyCalls const faulty(calls, Fate::endsTheProcess);
                    operation.run(settings);
                });
                std::string const content = read();
                ++seen[content == model.content];
                EXPECT_TRUE(content == startContent || content == model.content) << content;
                std::filesystem::remove(path);
                clear(*folder);
            }
    }
    EXPECT_GT(seen[0], 40);
    EXPECT_GT(seen[1], 40);
}

// Each child is killed at a moment of its own, some time after its first change.
TEST_F(TQConfiguration_, AKilledProcessLeavesTheOldOrTheNewContent) {
    std::mt19937 random(1);
    std::string const path = write("[a]\nn=0\n");
    int highest = 0;
    for (int round = 0; round < 300; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        pid_t const process = fork();
        if (process == 0) {
            TQConfiguration settings(path.c_str());
            for (int i = 0;; ++i) {
                settings.setValue("a", "n", std::to_string(i).c_str());
                if (i == 0 && ::write(ends[1], "", 1) != 1) _exit(1);
            }
        }
        char started;
        EXPECT_EQ(::read(ends[0], &started, 1), 1);
        usleep(static_cast<useconds_t>(random() % 3000));
        kill(process, SIGKILL);
        ASSERT_EQ(waitpid(process, nullptr, 0), process);
        close(ends[0]);
        close(ends[1]);
        std::string const value = textOf(TQConfiguration(path.c_str()).getValue("a", "n"));
        EXPECT_EQ(read(), "[a]\nn=" + value + "\n");
        highest = std::max(highest, std::stoi(value));
        clear(temporary_);
    }
    EXPECT_GT(highest, 0);
}

}  // namespace
