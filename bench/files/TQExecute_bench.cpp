#include "tqlib/files/TQExecute.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Job.h"

namespace {

char program[] = "/bin/true";

// From the command to the end of the program.

constexpr auto runWithSystem = [](auto take) {
    char *const arguments[] = {program, nullptr};
    pid_t child = 0;
    int failure = posix_spawn(&child, program, nullptr, nullptr, arguments, environ);
    if (failure == 0) failure = waitpid(child, nullptr, 0) != child;
    take(failure);
};

constexpr auto runWithTqlib = [](auto take) {
    take(TQExecute(program).start(TQExecute::startAndWait));
};

auto const running = Job<int>("start and wait")
                         .onTheWall()
                         .peer("posix_spawn", runWithSystem)
                         .contender("tqlib", runWithTqlib);

}  // namespace
