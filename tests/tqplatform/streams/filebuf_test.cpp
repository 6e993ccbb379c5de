#include "tqplatform/streams/filebuf.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "support/Files.h"
#include "tqplatform/runtime/SystemCalls.h"
#include "tqplatform/streams/fstream.h"
#include "tqplatform/streams/ifstream.h"
#include "tqplatform/streams/ofstream.h"

namespace {

using tqplatform::systemCalls;

int failuresLeft = 0;
int failWith = 0;

bool fails() {
    if (failuresLeft == 0) return false;
    --failuresLeft;
    errno = failWith;
    return true;
}

tqplatform::SystemCalls const realCalls = systemCalls;

// Puts system calls in place that fail a number of times; transfers are short.
class FaultyCalls : public testing::Test {
  protected:
    FaultyCalls() {
        systemCalls.open = [](char const *path, int flags, mode_t mode) {
            return fails() ? -1 : realCalls.open(path, flags, mode);
        };
        systemCalls.read = [](int file, void *target, std::size_t count) {
            return fails() ? ssize_t{-1}
                           : realCalls.read(file, target, std::min(count, std::size_t{3}));
        };
        systemCalls.write = [](int file, void const *source, std::size_t count) {
            return fails() ? ssize_t{-1}
                           : realCalls.write(file, source, std::min(count, std::size_t{5}));
        };
    }
    ~FaultyCalls() override { systemCalls = realCalls; }

    static void fail(int times, int error) {
        failuresLeft = times;
        failWith = error;
    }

    TemporaryFolder folder_;
};

TEST_F(FaultyCalls, InterruptedAndShortTransfersLoseNothing) {
    std::string const path = folder_.file("a");
    {
        fail(2, EINTR);
        classic::ofstream out(path.c_str());
        out << "a line of some length" << '\n';
        fail(3, EINTR);
    }
    EXPECT_EQ(folder_.read("a"), "a line of some length\n");
    fail(4, EINTR);
    classic::ifstream in(path.c_str());
    char line[64];
    in.getline(line, sizeof line);
    EXPECT_STREQ(line, "a line of some length");
}

TEST_F(FaultyCalls, WhatAFullDiskRefusesGoesOutOnceThereIsRoom) {
    classic::ofstream out(folder_.file("a").c_str());
    out << "first" << ' ' << "second";
    fail(1, ENOSPC);
    out.flush();
    EXPECT_TRUE(out.bad());
    out.clear();
    out << " third";
    out.close();
    EXPECT_FALSE(out.fail());
    EXPECT_EQ(folder_.read("a"), "first second third");
}

TEST_F(FaultyCalls, AReadErrorIsNoEndOfTheFile) {
    classic::ifstream in(folder_.write("a", "abcdef\n").c_str());
    EXPECT_EQ(in.peek(), 'a');
    fail(1, EIO);
    char line[16];
    in.getline(line, sizeof line);
    EXPECT_STREQ(line, "abc");
    EXPECT_TRUE(in.bad());
    in.clear();
    in.getline(line, sizeof line);
    EXPECT_STREQ(line, "def");
}

// Whether a CR at the end of a block belongs to a line end isn't known then.
TEST_F(FaultyCalls, AReadErrorBehindACarriageReturnTakesNothing) {
    classic::ifstream in(folder_.write("a", "aa\r\nb").c_str());
    EXPECT_EQ(in.peek(), 'a');
    for (bool const byCharacter : {false, true}) {
        fail(1, EIO);
        std::string line;
        if (byCharacter)
            EXPECT_EQ(in.get(), -1);
        else
            in.get(line, 70000);
        EXPECT_EQ(line, byCharacter ? "" : "aa");
        EXPECT_TRUE(in.bad());
        in.clear();
    }
    EXPECT_EQ(in.get(), '\n');
    EXPECT_EQ(in.get(), 'b');
}

TEST_F(FaultyCalls, ARefusedWriteIsNoEndOfTheFile) {
    classic::fstream file(folder_.write("a", "abc").c_str());
    EXPECT_EQ(file.get(), 'a');
    file.put('x');
    fail(1, ENOSPC);
    EXPECT_EQ(file.get(), -1);
    EXPECT_TRUE(file.bad());
}

TEST_F(FaultyCalls, ClosingReportsWhatCouldNotBeWritten) {
    classic::ofstream out(folder_.file("a").c_str());
    out << "text";
    fail(1, EIO);
    out.close();
    EXPECT_TRUE(out.fail());
    EXPECT_FALSE(out.is_open());
}

TEST_F(FaultyCalls, ClosingKeepsTheFailureOfAWrite) {
    classic::ofstream out(folder_.file("a").c_str());
    fail(1, ENOSPC);
    std::string const text(100000, 'x');
    out.write(text);
    out.close();
    EXPECT_TRUE(out.bad());
}

TEST_F(FaultyCalls, APutOnAFullBlockFailsAndStopsAtWhatFits) {
    classic::ofstream out(folder_.file("a").c_str());
    std::string const block(65536, 'x');
    out.write(block.data(), 65536);
    EXPECT_FALSE(out.fail());
    fail(1, ENOSPC);
    out.put('y');
    EXPECT_TRUE(out.bad());
    out.put('z');  // nothing happens on a failed stream
    out.clear();
    out.put('y');
    out.close();
    EXPECT_EQ(folder_.read("a"), block + "y");
}

}  // namespace
