#pragma once

// The one seam through which the libraries reach system calls that can fail, so that a test can
// make each of them fail.

#include <spawn.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// The calls, each with the contract of its POSIX namesake, which is named behind it.
struct SystemCalls {
    int (*open)(char const *path, int flags, mode_t mode);
    int (*close)(int descriptor);
    ssize_t (*read)(int descriptor, void *target, std::size_t count);
    ssize_t (*readAt)(int descriptor, void *target, std::size_t count, off_t offset);  // pread
    ssize_t (*write)(int descriptor, void const *source, std::size_t count);
    ssize_t (*copy)(int source, int target, std::size_t count);  // copy_file_range, at the offsets
    off_t (*seek)(int descriptor, off_t offset, int whence);     // lseek
    int (*resize)(int descriptor, off_t size);                   // ftruncate
    int (*flush)(int descriptor);                                // fsync
    int (*status)(int descriptor, struct stat *result);          // fstat
    int (*statusOf)(char const *path, struct stat *result);      // stat
    int (*setMode)(int descriptor, mode_t mode);                 // fchmod
    int (*setOwner)(int descriptor, uid_t user, gid_t group);    // fchown
    int (*setTimes)(int descriptor, timespec const times[2]);    // futimens
    int (*lock)(int descriptor, int operation);                  // flock
    int (*reserve)(int descriptor, off_t offset, off_t count);   // posix_fallocate
    void *(*map)(int descriptor, std::size_t size);  // mmap, shared, for writing; null if it fails
    int (*access)(char const *path, int mode);
    int (*rename)(char const *from, char const *to, unsigned int flags);  // renameat2
    int (*remove)(char const *path);                                      // unlink
    ssize_t (*readLink)(char const *path, char *target, std::size_t size);
    int (*pipe)(int ends[2], int flags);  // pipe2
    int (*spawn)(pid_t *child, char const *path, posix_spawn_file_actions_t const *actions,
                 posix_spawnattr_t const *attributes, char *const arguments[],
                 char *const environment[]);
    pid_t (*fork)();  // _Fork, which runs no handlers of the host
    int (*execute)(char const *path, char *const arguments[], char *const environment[]);  // execve
    pid_t (*wait)(pid_t child, int *status, int options);  // waitpid
};

/// The calls in force: the system's own, unless a test has put others in their place.
TQPLATFORM_API extern SystemCalls systemCalls;

/// open(2) with close-on-exec, repeated while a signal interrupts it.
TQPLATFORM_API int openFile(char const *path, int flags, mode_t mode);

/// read(2), repeated while a signal interrupts it.
TQPLATFORM_API ssize_t readFile(int descriptor, void *target, std::size_t count);

/// pread(2), repeated while a signal interrupts it.
TQPLATFORM_API ssize_t readFileAt(int descriptor, void *target, std::size_t count, off_t offset);

/// write(2) until all of `count` bytes are written or a call fails. The result is the number of
/// bytes written; below `count`, errno tells why.
TQPLATFORM_API std::size_t writeFile(int descriptor, char const *source, std::size_t count);

}  // namespace tqplatform
