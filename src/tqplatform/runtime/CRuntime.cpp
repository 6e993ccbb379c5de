#include "tqplatform/runtime/CRuntime.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>

#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

using tqplatform::systemCalls;
using tqplatform::toHostPath;

long _filelength(int descriptor) {
    struct stat status {};
    if (descriptor < 0 || systemCalls.status(descriptor, &status) != 0) return -1;
    if (status.st_size > std::numeric_limits<long>::max()) return -1;
    return static_cast<long>(status.st_size);
}

int _access(char const *path, int mode) {
    int const wanted = ((mode & 2) != 0 ? W_OK : F_OK) | ((mode & 4) != 0 ? R_OK : F_OK);
    return systemCalls.access(toHostPath(path).c_str(), wanted);
}

int _unlink(char const *path) {
    return systemCalls.remove(toHostPath(path).c_str());
}

int _stat(char const *path, struct stat *result) {
    return systemCalls.statusOf(toHostPath(path).c_str(), result);
}

char *_getcwd(char *buffer, int size) {
    std::unique_ptr<char, decltype(&std::free)> const host(::getcwd(nullptr, 0), &std::free);
    if (host == nullptr) return nullptr;
    std::string const path = tqplatform::fromHostPath(host.get());
    if (size < 0 || path.size() >= static_cast<std::size_t>(size)) return nullptr;
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return buffer;
}

namespace tqplatform {
namespace {

// One file under two names, or under one.
bool areSame(char const *one, char const *other) {
    struct stat first {
    }, second{};
    return systemCalls.statusOf(one, &first) == 0 && systemCalls.statusOf(other, &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace

int renameFile(char const *from, char const *to) {
    std::string const source = toHostPath(from), target = toHostPath(to);
    if (areSame(source.c_str(), target.c_str()))
        return systemCalls.rename(source.c_str(), target.c_str(), 0);
    int const result = systemCalls.rename(source.c_str(), target.c_str(), RENAME_NOREPLACE);
    bool const unknown = result != 0 && (errno == EINVAL || errno == ENOSYS);
    if (!unknown) return result;
    // A file system that can't do both in one step.
    if (systemCalls.access(target.c_str(), F_OK) != 0)
        return systemCalls.rename(source.c_str(), target.c_str(), 0);
    errno = EEXIST;
    return -1;
}

}  // namespace tqplatform

void _mtlock(std::recursive_mutex *lock) {
    lock->lock();
}

void _mtunlock(std::recursive_mutex *lock) {
    lock->unlock();
}
