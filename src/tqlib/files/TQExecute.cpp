#include "tqlib/files/TQExecute.h"

#include <cstdlib>
#include <utility>

#include "tqplatform/kernel/Process.h"

namespace {

int runBeside(char const *command) {
    return WinExec(command, SW_SHOW) < 32 ? -1 : 0;
}

int runAndWait(char const *command) {
    STARTUPINFOA const startup{68, nullptr, nullptr, STARTF_USESHOWWINDOW, SW_SHOW};
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, command, nullptr, nullptr, 0, 0, nullptr, nullptr, &startup,
                       &process) == 0)
        return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hProcess);
    return 0;
}

int runInstead(char const *command) {
    if (runBeside(command) != 0) return -1;
    std::exit(0);
}

}  // namespace

void TQExecute::joinArguments() {
    if (arguments_ == nullptr) return;
    TQString command;
    for (auto const *word = arguments_; *word != nullptr; ++word) {
        command += *word;
        command += ' ';
    }
    command_ = std::move(command);
    arguments_ = nullptr;
}

int TQExecute::start(startmode mode) {
    if (arguments_ == nullptr && command_.IsEmpty()) return -1;
    joinArguments();
    switch (mode) {
        case startDetached:
            return runBeside(command_);
        case startAndWait:
            return runAndWait(command_);
        case startReplacing:
            return runInstead(command_);
    }
    return -1;
}
