#pragma once

// Child processes.
//
//     STARTUPINFOA const startup{68, nullptr, nullptr, STARTF_USESHOWWINDOW, SW_SHOW};
//     PROCESS_INFORMATION process;
//     if (CreateProcessA(nullptr, "gzip C:\\tmp\\a.csv", nullptr, nullptr, 0, 0, nullptr, nullptr,
//                        &startup, &process) != 0) {
//         WaitForSingleObject(process.hProcess, INFINITE);
//         CloseHandle(process.hProcess);
//     }
//     WinExec("xterm", SW_SHOW);                  // runs on beside this process
//
// A command line is taken apart by splitCommandLine(); no shell looks at it. The first word names
// the program: with a separator or a drive it is a path, in the host's form or with backslashes,
// else it is searched along PATH. The program is an executable ordinary file. A word that is an
// absolute path with a drive, such as C:\tmp\a.csv, reaches the program in the host's form, every
// other word as it is. The program gets the caller's environment, folder and standard input, output
// and error, and no other open file.

#include <cstdint>

#include "tqplatform/kernel/Handle.h"
#include "tqplatform/runtime/Export.h"

/// How a program's first window is shown. No window of a child is under the caller's control here.
inline constexpr unsigned int SW_SHOW = 5;

/// Flag of STARTUPINFOA: wShowWindow counts.
inline constexpr std::uint32_t STARTF_USESHOWWINDOW = 1;

/// Time for WaitForSingleObject(), and its results.
inline constexpr unsigned int INFINITE = 0xFFFFFFFF;
inline constexpr unsigned int WAIT_OBJECT_0 = 0;
inline constexpr unsigned int WAIT_FAILED = 0xFFFFFFFF;

/// Wishes for the windows of a new process.
struct STARTUPINFOA {
    std::uint32_t cb;  ///< 68, the size of the structure on its home system
    char *lpDesktop;
    char *lpTitle;
    std::uint32_t dwFlags;
    std::uint16_t wShowWindow;
};

/// What the caller gets of a new process.
struct PROCESS_INFORMATION {
    HANDLE hProcess;  ///< the caller's, to close
};

/// Starts the program of `commandLine` beside the caller. The result is 1, with the handle of the
/// process in `process`; or 0 if there is no such program, it can't be started, or `process` is
/// null. `startup` is accepted and has no effect. The arguments between these two lines are null or
/// 0: anything else asks for what isn't to be had here, and gives 0. A process that nobody waits
/// for is kept by the system until the caller ends.
TQPLATFORM_API int CreateProcessA(char const *applicationName, char const *commandLine,
                                  void const *processAttributes, void const *threadAttributes,
                                  int inheritHandles, unsigned int creationFlags,
                                  void const *environment, char const *directory,
                                  STARTUPINFOA const *startup, PROCESS_INFORMATION *process);

/// Starts the program of `commandLine` for good: it is no child of the caller, who can't wait for
/// it and need not. The result is above 31 if it runs, 2 if there is no such program or it can't be
/// started, and 0 for lack of resources. `show` is accepted and has no effect.
TQPLATFORM_API unsigned int WinExec(char const *commandLine, unsigned int show);

/// Waits until the process of `handle` has ended and gives WAIT_OBJECT_0; once it has ended, at
/// once. WAIT_FAILED for any other handle and for any time but INFINITE.
TQPLATFORM_API unsigned int WaitForSingleObject(HANDLE handle, unsigned int milliseconds);
