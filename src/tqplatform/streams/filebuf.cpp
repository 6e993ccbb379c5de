#include "tqplatform/streams/filebuf.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"
#include "tqplatform/streams/ios.h"

namespace classic {
namespace {

using tqplatform::systemCalls;

int systemFlags(int mode) {
    bool const in = (mode & ios::in) != 0;
    bool const out = (mode & (ios::out | ios::app)) != 0;
    if (!out) return O_RDONLY;

    int flags = in ? O_RDWR : O_WRONLY;
    if ((mode & ios::nocreate) == 0) flags |= O_CREAT;
    if ((mode & ios::noreplace) != 0) flags |= O_EXCL;
    if ((mode & ios::app) != 0) flags |= O_APPEND;
    bool const keeps = in || (mode & (ios::app | ios::ate)) != 0;
    if ((mode & ios::trunc) != 0 || !keeps) flags |= O_TRUNC;
    return flags;
}

bool isFolder(int descriptor) {
    struct stat status {};
    return systemCalls.status(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

filebuf::~filebuf() {
    close();
}

filebuf *filebuf::open(char const *name, int mode, int protection) {
    if (is_open() || name == nullptr) return nullptr;
    std::string const path = tqplatform::toHostPath(name);
    int const descriptor =
        tqplatform::openFile(path.c_str(), systemFlags(mode), static_cast<mode_t>(protection));
    if (descriptor < 0) return nullptr;
    bool const writes = (mode & (ios::out | ios::app)) != 0;  // no folder can be opened so
    if (!writes && isFolder(descriptor)) {
        systemCalls.close(descriptor);
        errno = EISDIR;
        return nullptr;
    }
    descriptor_ = descriptor;
    readable_ = (mode & ios::in) != 0;
    writable_ = writes;
    appending_ = (mode & ios::app) != 0;
    text_ = (mode & ios::binary) == 0;
    offset_ = 0;
    if ((mode & (ios::ate | ios::app)) != 0) seekoff(0, SEEK_END);
    return this;
}

filebuf *filebuf::close() {
    if (!is_open()) return nullptr;
    bool const written = filebuf::sync() == 0;
    bool const closed = systemCalls.close(descriptor_) == 0;
    descriptor_ = -1;
    next_ = readEnd_ = write_ = writeEnd_ = nullptr;
    return written && closed ? this : nullptr;
}

bool filebuf::startReading() {
    if (!is_open() || !readable_) return false;
    if (write_ != nullptr) {
        readFailed_ = sync() != 0;
        if (readFailed_) return false;
        write_ = writeEnd_ = nullptr;
    }
    if (block_ == nullptr) block_.reset(new char[blockSize]);
    if (next_ == nullptr) next_ = readEnd_ = block_.get();
    return true;
}

bool filebuf::fill() {
    readFailed_ = false;
    if (!startReading()) return false;
    auto const kept = static_cast<std::size_t>(readEnd_ - next_);
    if (kept == blockSize) return false;
    std::memmove(block_.get(), next_, kept);
    next_ = block_.get();
    readEnd_ = next_ + kept;
    ssize_t const got = tqplatform::readFile(descriptor_, readEnd_, blockSize - kept);
    readFailed_ = got < 0;
    if (got <= 0) return false;
    readEnd_ += got;
    offset_ += got;
    return true;
}

bool filebuf::drain() {
    if (!is_open() || !writable_) return false;
    if (write_ == nullptr && appending_) {
        // A pipe has no end to go to, and what was read ahead of it can't be had again.
        bool const moved = seekoff(0, SEEK_END) >= 0;
        if (!moved && (errno != ESPIPE || next_ != readEnd_)) return false;
        next_ = readEnd_ = nullptr;
    } else if (next_ != nullptr) {  // from reading to writing: go back to where the reader stands
        if (seekpos(seekoff(0, SEEK_CUR)) < 0) return false;
    }
    if (write_ != nullptr) {
        sync();  // even a part that went out makes room
        return write_ < writeEnd_;
    }
    if (block_ == nullptr) block_.reset(new char[blockSize]);
    write_ = block_.get();
    writeEnd_ = write_ + blockSize;
    return true;
}

int filebuf::sync() {
    if (write_ == nullptr) return 0;
    auto const pending = static_cast<std::size_t>(write_ - block_.get());
    std::size_t const done = tqplatform::writeFile(descriptor_, block_.get(), pending);
    offset_ += static_cast<streamoff>(done);
    std::memmove(block_.get(), block_.get() + done, pending - done);
    write_ -= done;
    return done == pending ? 0 : -1;
}

streampos filebuf::seekpos(streampos position) {
    return seekoff(position, SEEK_SET);
}

streampos filebuf::seekoff(streamoff distance, int origin) {
    if (!is_open()) return -1;
    streamoff const ahead = readEnd_ - next_;
    streamoff const pending = write_ == nullptr ? 0 : write_ - block_.get();
    if (origin == SEEK_CUR) {
        streamoff const here = offset_ - ahead + pending;
        streampos target = 0;
        if (distance == 0) return here;
        return __builtin_add_overflow(here, distance, &target) ? -1 : seekpos(target);
    }
    if (sync() != 0) return -1;
    off_t const moved = systemCalls.seek(descriptor_, distance, origin);
    if (moved < 0) return -1;
    offset_ = moved;
    next_ = readEnd_ = write_ = writeEnd_ = nullptr;
    return moved;
}

}  // namespace classic
