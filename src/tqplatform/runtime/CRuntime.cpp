#include "tqplatform/runtime/CRuntime.h"

#include <limits>

#include "tqplatform/runtime/SystemCalls.h"

long _filelength(int descriptor) {
    struct stat status {};
    if (descriptor < 0 || tqplatform::systemCalls.status(descriptor, &status) != 0) return -1;
    if (status.st_size > std::numeric_limits<long>::max()) return -1;
    return static_cast<long>(status.st_size);
}

void _mtlock(std::recursive_mutex *lock) {
    lock->lock();
}

void _mtunlock(std::recursive_mutex *lock) {
    lock->unlock();
}
