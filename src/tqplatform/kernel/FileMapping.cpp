#include "tqplatform/kernel/FileMapping.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>

#include <cerrno>
#include <limits>
#include <mutex>
#include <unordered_map>
#include <utility>

#include "tqplatform/kernel/FileHandle.h"
#include "tqplatform/runtime/HostPath.h"

namespace tqplatform {
namespace {

constexpr mode_t createdFileMode = 0666;  // less the process's mask

class MappingHandle final : public Handle {
  public:
    MappingHandle(std::shared_ptr<Descriptor> file, std::size_t size)
        : file_(std::move(file)), size_(size) {}

    int descriptor() const { return file_->number(); }
    std::size_t size() const { return size_; }

  private:
    std::shared_ptr<Descriptor> file_;
    std::size_t size_;
};

/// The sizes of the views at their addresses.
struct Views {
    std::mutex mutex;
    std::unordered_map<void const *, std::size_t> sizes;
};

// Never destroyed: a static object of an application may hold a view.
Views &views() {
    static auto *const all = new Views;
    return *all;
}

// Where locks aren't known the file counts as free.
bool isFree(int descriptor) {
    return systemCalls.lock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

std::int64_t sizeOf(int descriptor) {
    struct stat status {};
    return systemCalls.status(descriptor, &status) == 0 ? status.st_size : -1;
}

// Gives the file the size if it is shorter, and fills its holes: a view of what has no room on the
// disk would end the process. A failure leaves the content as it was.
bool hasRoom(int descriptor, std::int64_t present, std::int64_t wanted) {
    int error = 0;
    do {
        error = systemCalls.reserve(descriptor, 0, wanted);
    } while (error == EINTR);
    if (error != 0 && present < wanted) systemCalls.resize(descriptor, present);
    return error == 0;
}

}  // namespace

std::size_t viewSize(void const *view) {
    Views &all = views();
    std::scoped_lock const lock(all.mutex);
    auto const found = all.sizes.find(view);
    return found == all.sizes.end() ? 0 : found->second;
}

}  // namespace tqplatform

using tqplatform::FileHandle;
using tqplatform::systemCalls;

HANDLE CreateFileA(char const *path, unsigned int access, unsigned int /*share*/,
                   void const * /*security*/, unsigned int disposition, unsigned int /*attributes*/,
                   HANDLE /*pattern*/) {
    bool const known = access == (GENERIC_READ | GENERIC_WRITE) &&
                       (disposition == OPEN_EXISTING || disposition == CREATE_NEW);
    if (path == nullptr || !known) return nullptr;
    int const flags = O_RDWR | O_NONBLOCK | (disposition == CREATE_NEW ? O_CREAT | O_EXCL : 0);
    tqplatform::Descriptor file(tqplatform::openFile(tqplatform::toHostPath(path).c_str(), flags,
                                                     tqplatform::createdFileMode));
    if (!file.isOpen() || !tqplatform::isFree(file.number())) return nullptr;
    return new FileHandle(std::move(file));
}

std::uint32_t GetFileSize(HANDLE file, std::uint32_t *high) {
    auto const size =
        static_cast<std::uint64_t>(tqplatform::sizeOf(FileHandle::descriptorOf(file)));
    if (high != nullptr) *high = static_cast<std::uint32_t>(size >> 32);
    return static_cast<std::uint32_t>(size);
}

int SetFileSize(HANDLE file, std::uint64_t size) {
    auto const length = static_cast<off_t>(size);
    return systemCalls.resize(FileHandle::descriptorOf(file), length) == 0 ? 1 : 0;
}

HANDLE CreateFileMappingA(HANDLE file, void const * /*security*/, unsigned int protection,
                          std::uint32_t sizeHigh, std::uint32_t sizeLow, char const *name) {
    auto const *const handle = dynamic_cast<FileHandle const *>(file);
    if (handle == nullptr || protection != PAGE_READWRITE || name != nullptr) return nullptr;
    std::int64_t const present = tqplatform::sizeOf(handle->file()->number());
    auto const asked = static_cast<std::int64_t>(std::uint64_t{sizeHigh} << 32 | sizeLow);
    std::int64_t const size = asked == 0 ? present : asked;
    bool const fits = present >= 0 && size > 0 &&
                      size <= std::numeric_limits<std::ptrdiff_t>::max() &&
                      (asked == 0 || tqplatform::hasRoom(handle->file()->number(), present, size));
    if (!fits) return nullptr;
    return new tqplatform::MappingHandle(handle->file(), static_cast<std::size_t>(size));
}

void *MapViewOfFile(HANDLE mapping, unsigned int access, std::uint32_t offsetHigh,
                    std::uint32_t offsetLow, std::size_t size) {
    auto const *const handle = dynamic_cast<tqplatform::MappingHandle const *>(mapping);
    bool const whole = offsetHigh == 0 && offsetLow == 0 && size == 0;
    if (handle == nullptr || access != FILE_MAP_WRITE || !whole) return nullptr;
    void *const view = systemCalls.map(handle->descriptor(), handle->size());
    if (view == nullptr) return nullptr;
    tqplatform::Views &all = tqplatform::views();
    std::scoped_lock const lock(all.mutex);
    all.sizes[view] = handle->size();
    return view;
}

int UnmapViewOfFile(void const *view) {
    tqplatform::Views &all = tqplatform::views();
    std::scoped_lock const lock(all.mutex);
    auto const found = all.sizes.find(view);
    if (found == all.sizes.end()) return 0;
    ::munmap(const_cast<void *>(view), found->second);
    all.sizes.erase(found);
    return 1;
}
