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

int _stat(char const *path, tqplatform::FileStatus *result) {
    struct stat status {};
    if (systemCalls.statusOf(toHostPath(path).c_str(), &status) != 0) return -1;
    result->st_size = status.st_size;
    return 0;
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

/// Where a path leads: a name in a folder.
struct Entry {
    std::string folder, name;

    explicit Entry(std::string path) {
        while (path.size() > 1 && path.back() == '/')
            path.pop_back();
        std::size_t const length = path.rfind('/') + 1;  // 0 without a slash
        folder = length == 0 ? "." : path.substr(0, length);
        name = path.substr(length);
    }

    bool operator==(Entry const &other) const {
        struct stat own {
        }, its{};
        return name == other.name && systemCalls.statusOf(folder.c_str(), &own) == 0 &&
               systemCalls.statusOf(other.folder.c_str(), &its) == 0 && own.st_dev == its.st_dev &&
               own.st_ino == its.st_ino;
    }
};

// Also a link that leads nowhere is there.
bool isThere(char const *path) {
    char target[1];
    return systemCalls.access(path, F_OK) == 0 ||
           systemCalls.readLink(path, target, sizeof target) >= 0;
}

}  // namespace

int renameFile(char const *from, char const *to) {
    std::string const source = toHostPath(from), target = toHostPath(to);
    int const result = systemCalls.rename(source.c_str(), target.c_str(), RENAME_NOREPLACE);
    if (result == 0) return 0;
    if (errno == EEXIST) return Entry(source) == Entry(target) ? 0 : -1;
    if (errno != EINVAL && errno != ENOSYS) return -1;
    // A file system that can't look and rename in one step.
    if (isThere(target.c_str())) return Entry(source) == Entry(target) ? 0 : -1;
    return systemCalls.rename(source.c_str(), target.c_str(), 0);
}

}  // namespace tqplatform

void _mtlock(std::recursive_mutex *lock) {
    lock->lock();
}

void _mtunlock(std::recursive_mutex *lock) {
    lock->unlock();
}
