#pragma once

// The one seam through which the platform library reaches system calls that can fail, so that a
// test can make each of them fail.

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

namespace tqplatform {

/// The calls, each with the contract of its POSIX namesake.
struct SystemCalls {
    int (*open)(char const *path, int flags, mode_t mode);
    int (*close)(int descriptor);
    ssize_t (*read)(int descriptor, void *target, std::size_t count);
    ssize_t (*write)(int descriptor, void const *source, std::size_t count);
    off_t (*seek)(int descriptor, off_t offset, int whence);
    int (*status)(int descriptor, struct stat *result);
};

/// The calls in force: the system's own, unless a test has put others in their place.
extern SystemCalls systemCalls;

/// open(2) with close-on-exec, repeated while a signal interrupts it.
int openFile(char const *path, int flags, mode_t mode);

/// read(2), repeated while a signal interrupts it.
ssize_t readFile(int descriptor, void *target, std::size_t count);

/// write(2) until all of `count` bytes are written or a call fails. The result is the number of
/// bytes written; below `count`, errno tells why.
std::size_t writeFile(int descriptor, char const *source, std::size_t count);

}  // namespace tqplatform
