#include "tqplatform/kernel/Process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tqplatform/kernel/CommandLine.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using tqplatform::systemCalls;

constexpr unsigned int started = 33;  // the least that tells of success is 32
constexpr unsigned int noResources = 0;
constexpr unsigned int noProgram = 2;
constexpr int firstOwnDescriptor = STDERR_FILENO + 1;

bool isProgram(std::string const &path) {
    struct stat status {};
    return systemCalls.statusOf(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           systemCalls.access(path.c_str(), X_OK) == 0;
}

// The first program `name` in the folders of PATH, of which an empty one is the current folder.
std::string searchProgram(std::string const &name) {
    char const *const path = std::getenv("PATH");
    std::string_view folders = path == nullptr ? "/bin:/usr/bin" : path;
    for (;;) {
        std::string_view const folder = folders.substr(0, folders.find(':'));
        std::string file(folder);
        if (!folder.empty()) file += '/';
        file += name;
        if (isProgram(file)) return file;
        if (folder.size() == folders.size()) return {};
        folders.remove_prefix(folder.size() + 1);
    }
}

// The host's path of the program that a command line calls `name`; empty if none is found. Whether
// a path leads to a program shows when it is started.
std::string findProgram(std::string const &name) {
    bool const isPath = tqplatform::hasDrive(name) || name.find_first_of("/\\") != name.npos;
    return isPath ? tqplatform::toHostPath(name) : searchProgram(name);
}

// A word as the child gets it. A path on a drive that the host doesn't have stays what it is.
std::string hostWord(std::string const &word) {
    bool const absolute = tqplatform::hasDrive(word) && word.find('\\') == 2;
    std::string const path = absolute ? tqplatform::toHostPath(word) : std::string();
    return path.empty() ? word : path;
}

// A command line made ready to be started.
class Command {
  public:
    explicit Command(char const *commandLine)
        : words_(tqplatform::splitCommandLine(commandLine == nullptr ? "" : commandLine)) {
        if (words_.empty()) return;
        std::ranges::transform(words_, words_.begin(), hostWord);
        program_ = findProgram(words_.front());
        for (std::string &word : words_)
            arguments_.push_back(word.data());
        arguments_.push_back(nullptr);
    }
    Command(Command const &) = delete;
    Command &operator=(Command const &) = delete;

    bool isFound() const { return !program_.empty(); }
    char const *program() const { return program_.c_str(); }
    char *const *arguments() const { return arguments_.data(); }

  private:
    std::string program_;
    std::vector<std::string> words_;
    std::vector<char *> arguments_;
};

// The order to a new process to close what isn't a standard file.
class OwnFilesClosed {
  public:
    OwnFilesClosed() {
        error_ = posix_spawn_file_actions_init(&actions_);
        if (error_ == 0)
            error_ = posix_spawn_file_actions_addclosefrom_np(&actions_, firstOwnDescriptor);
    }
    OwnFilesClosed(OwnFilesClosed const &) = delete;
    OwnFilesClosed &operator=(OwnFilesClosed const &) = delete;
    ~OwnFilesClosed() { posix_spawn_file_actions_destroy(&actions_); }

    // Null if memory is short.
    posix_spawn_file_actions_t const *get() const { return error_ == 0 ? &actions_ : nullptr; }

  private:
    posix_spawn_file_actions_t actions_{};
    int error_;
};

// True once `child` has ended: also if the system has forgotten it, as it does where the caller
// ignores the signal of ended children.
bool waitForEnd(pid_t child) {
    pid_t ended;
    do
        ended = systemCalls.wait(child, nullptr, 0);
    while (ended < 0 && errno == EINTR);
    return ended == child || errno == ECHILD;
}

class Process final : public tqplatform::Handle {
  public:
    // False if the program can't be started.
    bool start(Command const &command) {
        OwnFilesClosed const actions;
        return actions.get() != nullptr &&
               systemCalls.spawn(&id_, command.program(), actions.get(), nullptr,
                                 command.arguments(), environ) == 0;
    }

    bool wait() {
        ended_ = ended_ || waitForEnd(id_);
        return ended_;
    }

  private:
    pid_t id_ = -1;
    bool ended_ = false;
};

// A detached program is the child of a child that ends at once, so that the system looks after it.
// Between the forks and the program only async-signal-safe calls are allowed: another thread may
// have held any lock at the time of the fork. A failure comes back through a pipe, which the
// program's start closes.

[[noreturn]] void reportFailure(int pipe) {
    int const error = errno;
    tqplatform::writeFile(pipe, reinterpret_cast<char const *>(&error), sizeof error);
    _exit(EXIT_FAILURE);
}

[[noreturn]] void becomeProgram(Command const &command, int pipe) {
    int const moved = dup2(pipe, firstOwnDescriptor);
    if (moved < 0) reportFailure(pipe);
    fcntl(moved, F_SETFD, FD_CLOEXEC);
    closefrom(moved + 1);
    systemCalls.execute(command.program(), command.arguments(), environ);
    reportFailure(moved);
}

[[noreturn]] void startGrandchild(Command const &command, int pipe) {
    pid_t const grandchild = systemCalls.fork();
    if (grandchild == 0) becomeProgram(command, pipe);
    if (grandchild < 0) reportFailure(pipe);
    _exit(EXIT_SUCCESS);
}

// The error that comes through `pipe`, 0 if the program has started.
int reportedError(int pipe) {
    int error;
    ssize_t const got = tqplatform::readFile(pipe, &error, sizeof error);
    return got == ssize_t{sizeof error} ? error : 0;
}

// 0, or the error that keeps the program from starting.
int startDetached(Command const &command) {
    int ends[2];
    if (systemCalls.pipe(ends, O_CLOEXEC) != 0) return errno;
    pid_t const child = systemCalls.fork();
    if (child == 0) startGrandchild(command, ends[1]);
    int error = errno;
    systemCalls.close(ends[1]);
    if (child > 0) {
        error = reportedError(ends[0]);
        waitForEnd(child);
    }
    systemCalls.close(ends[0]);
    return error;
}

bool isLackOfResources(int error) {
    return error == EAGAIN || error == ENOMEM || error == EMFILE || error == ENFILE;
}

}  // namespace

int CreateProcessA(char const *applicationName, char const *commandLine,
                   void const *processAttributes, void const *threadAttributes, int inheritHandles,
                   unsigned int creationFlags, void const *environment, char const *directory,
                   STARTUPINFOA const * /*startup*/, PROCESS_INFORMATION *process) {
    bool const plain = applicationName == nullptr && processAttributes == nullptr &&
                       threadAttributes == nullptr && inheritHandles == 0 && creationFlags == 0 &&
                       environment == nullptr && directory == nullptr;
    if (!plain || process == nullptr) return 0;
    Command const command(commandLine);
    auto handle = std::make_unique<Process>();
    if (!command.isFound() || !handle->start(command)) return 0;
    process->hProcess = handle.release();
    return 1;
}

unsigned int WinExec(char const *commandLine, unsigned int /*show*/) {
    Command const command(commandLine);
    if (!command.isFound()) return noProgram;
    int const error = startDetached(command);
    if (error == 0) return started;
    return isLackOfResources(error) ? noResources : noProgram;
}

unsigned int WaitForSingleObject(HANDLE handle, unsigned int milliseconds) {
    auto *const process = dynamic_cast<Process *>(handle);
    if (process == nullptr || milliseconds != INFINITE) return WAIT_FAILED;
    return process->wait() ? WAIT_OBJECT_0 : WAIT_FAILED;
}
