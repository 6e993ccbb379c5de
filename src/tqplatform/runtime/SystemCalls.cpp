#include "tqplatform/runtime/SystemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tqplatform {
namespace {

int openWithMode(char const *path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}
int statusOf(int descriptor, struct stat *result) {
    return ::fstat(descriptor, result);
}

}  // namespace

constinit SystemCalls systemCalls{openWithMode, ::close, ::read, ::write, ::lseek, statusOf};

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
