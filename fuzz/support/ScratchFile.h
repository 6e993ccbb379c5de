#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tqplatform/runtime/SystemCalls.h"

/// A file in memory with a path of its own.
class ScratchFile {
  public:
    ScratchFile()
        : descriptor_(memfd_create("scratch", MFD_CLOEXEC)),
          path_("/proc/self/fd/" + std::to_string(descriptor_)) {
        if (descriptor_ < 0) std::abort();
    }
    ScratchFile(ScratchFile const &) = delete;
    ScratchFile &operator=(ScratchFile const &) = delete;
    ~ScratchFile() { ::close(descriptor_); }

    char const *path() const { return path_.c_str(); }

    /// Replaces the content by those bytes.
    void write(std::string_view bytes) {
        auto const size = static_cast<ssize_t>(bytes.size());
        if (::ftruncate(descriptor_, 0) != 0 ||
            ::pwrite(descriptor_, bytes.data(), bytes.size(), 0) != size)
            std::abort();
    }

    std::string read() const {
        std::string bytes(static_cast<std::size_t>(::lseek(descriptor_, 0, SEEK_END)), '\0');
        auto const size = static_cast<ssize_t>(bytes.size());
        if (::pread(descriptor_, bytes.data(), bytes.size(), 0) != size) std::abort();
        return bytes;
    }

  private:
    int descriptor_;
    std::string path_;
};

/// Lets the next reads and writes of the streams move at most `size` bytes, so that any place of a
/// file can be the end of a block. After many of them the size is free, for the sake of speed.
inline void limitTransfers(std::size_t size) {
    constexpr int many = 300;
    static std::size_t most;
    static int left;
    most = size;
    left = many;
    tqplatform::systemCalls.read = [](int file, void *target, std::size_t count) {
        return ::read(file, target, left-- > 0 ? std::min(count, most) : count);
    };
    tqplatform::systemCalls.write = [](int file, void const *source, std::size_t count) {
        return ::write(file, source, left-- > 0 ? std::min(count, most) : count);
    };
}
