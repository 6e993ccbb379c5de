#include "tqplatform/runtime/SystemCalls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tqplatform {
namespace {

int openWithMode(char const *path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}
int renameWith(char const *from, char const *to, unsigned int flags) {
    return ::renameat2(AT_FDCWD, from, AT_FDCWD, to, flags);
}
void *mapShared(int descriptor, std::size_t size) {
    void *const view = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    return view == MAP_FAILED ? nullptr : view;
}
ssize_t copyRange(int source, int target, std::size_t count) {
    return ::copy_file_range(source, nullptr, target, nullptr, count, 0);
}

}  // namespace

constinit SystemCalls systemCalls{
    .open = openWithMode,
    .close = ::close,
    .read = ::read,
    .readAt = ::pread,
    .write = ::write,
    .copy = copyRange,
    .seek = ::lseek,
    .resize = ::ftruncate,
    .flush = ::fsync,
    .status = ::fstat,
    .statusOf = ::stat,
    .setMode = ::fchmod,
    .setOwner = ::fchown,
    .setTimes = ::futimens,
    .lock = ::flock,
    .reserve = ::posix_fallocate,
    .map = mapShared,
    .access = ::access,
    .rename = renameWith,
    .remove = ::unlink,
    .readLink = ::readlink,
    .pipe = ::pipe2,
    .spawn = ::posix_spawn,
    .fork = ::_Fork,
    .execute = ::execve,
    .wait = ::waitpid,
};

int openFile(char const *path, int flags, mode_t mode) {
    int descriptor;
    do
        descriptor = systemCalls.open(path, flags | O_CLOEXEC, mode);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

ssize_t readFile(int descriptor, void *target, std::size_t count) {
    ssize_t got;
    do
        got = systemCalls.read(descriptor, target, count);
    while (got < 0 && errno == EINTR);
    return got;
}

ssize_t readFileAt(int descriptor, void *target, std::size_t count, off_t offset) {
    ssize_t got;
    do
        got = systemCalls.readAt(descriptor, target, count, offset);
    while (got < 0 && errno == EINTR);
    return got;
}

std::size_t writeFile(int descriptor, char const *source, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        ssize_t const put = systemCalls.write(descriptor, source + done, count - done);
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) break;
        if (put == 0) {  // no progress and no reason given: count it as a full device
            errno = ENOSPC;
            break;
        }
        done += static_cast<std::size_t>(put);
    }
    return done;
}

}  // namespace tqplatform
