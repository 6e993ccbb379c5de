#include "tqlib/files/TQExecute.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "support/Files.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using tqplatform::systemCalls;

// Programs are scripts in a folder, which is the whole PATH as well.
class Programs : public testing::Test {
  protected:
    Programs() {
        write("arguments", "for i; do printf '%s|' \"$i\"; done >" + result());
        write("files", "exec /bin/ls /proc/self/fd >" + result());
        write("slow", "/bin/sleep 0.2; echo $PPID >" + result() + ".new; exec /bin/mv " + result() +
                          ".new " + result());
        setenv("PATH", folder_.file("").c_str(), 1);
    }
    ~Programs() override {
        setenv("PATH", oldPath_.c_str(), 1);
        systemCalls = realCalls_;
    }

    void write(std::string const &name, std::string const &script) const {
        chmod(folder_.write(name, "#!/bin/sh\n" + script + "\n").c_str(), 0700);
    }
    std::string result() const { return folder_.file("result"); }
    std::string read() const { return folder_.read("result"); }

    // What a detached program writes.
    std::string waitForResult() const {
        for (int i = 0; i < 500 && read().empty(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return read();
    }
    int run(std::string const &command) const {
        std::filesystem::remove(result());
        return TQExecute(command.c_str()).start(TQExecute::startAndWait);
    }

    TemporaryFolder folder_;
    std::string oldPath_ = std::getenv("PATH");
    tqplatform::SystemCalls realCalls_ = systemCalls;
};

std::size_t openFiles() {
    auto const files = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST_F(Programs, GetTheirArguments) {
    std::string const path = folder_.file("arguments");
    std::string windowsPath = "C:" + path;
    std::replace(windowsPath.begin(), windowsPath.end(), '/', '\\');
    struct {
        std::string command, arguments;
    } const rows[] = {
        {"arguments", ""},
        {path + " a  b", "a|b|"},
        {windowsPath + " -x", "-x|"},
        {"\"arguments\" \"a b\" \"\" $HOME * ;", "a b||$HOME|*|;|"},
        {"arguments C:\\tmp\\a c:\\ C:a D:\\a \\tmp\\a /C:\\a",
         "/tmp/a|/|C:a|D:\\a|\\tmp\\a|/C:\\a|"},
        {"arguments \xE4", "\xE4|"},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(run(row.command), 0) << row.command;
        EXPECT_EQ(read(), row.arguments) << row.command;
    }
    char const *const words[] = {"arguments", "a b", "c", nullptr};
    TQExecute list(words), copy = list;
    EXPECT_EQ(list.start(static_cast<TQExecute::startmode>(3)), -1);
    EXPECT_EQ(list.start(TQExecute::startAndWait), 0);
    EXPECT_EQ(read(), "a|b|c|");
    EXPECT_EQ(copy.start(TQExecute::startAndWait), 0);
}

TEST_F(Programs, FixedAnswers) {
    char const *const none[] = {nullptr};
    TQExecute empty, emptyList(none), missing("nothing"), failing("false");
    for (auto const mode :
         {TQExecute::startDetached, TQExecute::startAndWait, TQExecute::startReplacing})
        for (TQExecute *program : {&empty, &emptyList, &missing})
            EXPECT_EQ(program->start(mode), -1);
    write("false", "exit 1");
    EXPECT_EQ(failing.start(TQExecute::startAndWait), 0);
    EXPECT_EQ(failing.start(TQExecute::startDetached), 0);
    for (TQExecute const &program : {empty, failing}) {
        EXPECT_EQ(program.child(), 0);
        EXPECT_EQ(program.wait(), -1);
        EXPECT_EQ(program.kill(), -1);
        EXPECT_EQ(program.isChild(), 0);
        EXPECT_EQ(program.isParent(), 1);
    }
}

TEST_F(Programs, WhatCannotBeStarted) {
    folder_.write("plain", "#!/bin/sh\n");
    chmod(folder_
              .write("broken",
                     "\x7f"
                     "ELF")
              .c_str(),
          0700);
    std::filesystem::create_directory(folder_.file("folder"));
    for (std::string const command : {"plain", "folder", "./arguments", "", " ", "\"\"", "D:\\x"})
        EXPECT_EQ(run(command), -1) << command;
    EXPECT_EQ(run("arguments " + std::string(10'000'000, 'x')), -1);
    EXPECT_EQ(run(folder_.file("broken")), -1);
    EXPECT_EQ(TQExecute(folder_.file("broken").c_str()).start(TQExecute::startDetached), -1);
    setenv("PATH", (":/none:" + folder_.file("")).c_str(), 1);
    EXPECT_EQ(run("arguments x"), 0);
    EXPECT_EQ(read(), "x|");
}

TEST_F(Programs, HaveNoOtherFileThanTheStandardOnes) {
    int const descriptor = open("/dev/null", O_RDONLY);
    int const high = fcntl(descriptor, F_DUPFD, 500);
    EXPECT_EQ(run("files"), 0);
    std::string const waited = read();
    std::filesystem::remove(result());
    EXPECT_EQ(TQExecute("files").start(TQExecute::startDetached), 0);
    std::string const detached = waitForResult();
    EXPECT_EQ(waited, "0\n1\n2\n3\n");  // the last one is the folder that ls reads
    EXPECT_EQ(detached, waited);
    close(descriptor);
    close(high);
}

TEST_F(Programs, DetachedOnesAreOnTheirOwn) {
    std::size_t const before = openFiles();
    EXPECT_EQ(TQExecute("slow").start(TQExecute::startDetached), 0);
    EXPECT_EQ(read(), "");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    EXPECT_NE(std::stoi(waitForResult()), getpid());
    EXPECT_EQ(openFiles(), before);
}

TEST_F(Programs, ReplacingEndsTheCaller) {
    pid_t const child = fork();
    if (child == 0) {
        TQExecute("arguments replaced").start(TQExecute::startReplacing);
        _exit(1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(waitForResult(), "replaced|");
}

int callsLeft = 0;  // until a wait isn't interrupted any more

TEST_F(Programs, FailuresOfTheSystem) {
    std::size_t const before = openFiles();
    auto const start = [](TQExecute::startmode mode) {
        return TQExecute("arguments x").start(mode);
    };
    systemCalls.spawn = [](auto...) { return ENOMEM; };
    EXPECT_EQ(start(TQExecute::startAndWait), -1);
    systemCalls = realCalls_;
    systemCalls.fork = []() -> pid_t {
        errno = EAGAIN;
        return -1;
    };
    EXPECT_EQ(start(TQExecute::startDetached), -1);
    systemCalls = realCalls_;
    systemCalls.pipe = [](int *, int) {
        errno = EMFILE;
        return -1;
    };
    EXPECT_EQ(start(TQExecute::startDetached), -1);
    systemCalls = realCalls_;
    systemCalls.execute = [](char const *, char *const *, char *const *) {
        errno = EACCES;
        return -1;
    };
    EXPECT_EQ(start(TQExecute::startDetached), -1);
    systemCalls = realCalls_;
    callsLeft = 3;
    systemCalls.wait = [](pid_t child, int *status, int options) {
        if (callsLeft-- <= 0) return waitpid(child, status, options);
        errno = EINTR;
        return -1;
    };
    EXPECT_EQ(start(TQExecute::startAndWait), 0);
    EXPECT_LT(callsLeft, 0);
    EXPECT_EQ(openFiles(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);

    auto *const old = signal(SIGCHLD, SIG_IGN);  // the system forgets children at once
    EXPECT_EQ(start(TQExecute::startAndWait), 0);
    EXPECT_EQ(start(TQExecute::startDetached), 0);
    signal(SIGCHLD, old);
}

}  // namespace
