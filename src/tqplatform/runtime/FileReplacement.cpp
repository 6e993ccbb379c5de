#include "tqplatform/runtime/FileReplacement.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tqplatform/runtime/SystemCalls.h"

namespace tqplatform {
namespace {

constexpr int mostNames = 16;
constexpr mode_t ownerOnly = 0600;
constexpr mode_t permissionBits = 07777;

std::string withoutLinks(std::string const &path) {
    char target[1];
    if (systemCalls.readLink(path.c_str(), target, sizeof target) < 0) return path;
    std::unique_ptr<char, decltype(&std::free)> const real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real == nullptr ? path : real.get();
}

// With its last slash.
std::string folderOf(std::string const &path) {
    std::size_t const length = path.rfind('/') + 1;  // 0 without a slash
    return length == 0 ? "./" : path.substr(0, length);
}

// Makes a file of a new name in `folder`.
Descriptor makeFile(std::string const &folder, mode_t mode, std::string &name) {
    static constinit std::atomic<unsigned int> number = 0;
    for (int i = 0; i < mostNames; ++i) {
        char text[32];
        std::snprintf(text, sizeof text, ".tq%lX-%X", static_cast<unsigned long>(::getpid()),
                      number++);
        name = folder + text;
        Descriptor file(openFile(name.c_str(), O_RDWR | O_CREAT | O_EXCL, mode));
        if (file.isOpen() || errno != EEXIST) return file;
    }
    return Descriptor();
}

// A file without a name, which is gone when it is closed.
Descriptor makeScratch() {
    char const *const folder = std::getenv("TMPDIR");
    std::string const place = folder == nullptr || *folder == '\0' ? "/tmp" : folder;
    std::string name;
    Descriptor file = makeFile(place + '/', ownerOnly, name);
    if (file.isOpen()) systemCalls.remove(name.c_str());
    return file;
}

CopyResult copyByBlocks(int source, int target) {
    constexpr std::size_t blockSize = 256 * 1024;
    auto const block = std::make_unique_for_overwrite<char[]>(blockSize);
    for (;;) {
        ssize_t const got = readFile(source, block.get(), blockSize);
        if (got < 0) return CopyResult::unreadable;
        if (got == 0) return CopyResult::done;
        auto const count = static_cast<std::size_t>(got);
        if (writeFile(target, block.get(), count) != count) return CopyResult::unwritable;
    }
}

// Gives the file `target` the content of the file `source`.
bool overwrite(int target, int source) {
    if (systemCalls.seek(source, 0, SEEK_SET) != 0 || systemCalls.seek(target, 0, SEEK_SET) != 0 ||
        copyRest(source, target) != CopyResult::done)
        return false;
    off_t const size = systemCalls.seek(target, 0, SEEK_CUR);
    return size >= 0 && systemCalls.resize(target, size) == 0 && systemCalls.flush(target) == 0;
}

bool areInOneFolder(std::string const &one, std::string const &other) {
    std::string const first = folderOf(one), second = folderOf(other);
    struct stat status[2];
    return first == second ||
           (systemCalls.statusOf(first.c_str(), &status[0]) == 0 &&
            systemCalls.statusOf(second.c_str(), &status[1]) == 0 &&
            status[0].st_dev == status[1].st_dev && status[0].st_ino == status[1].st_ino);
}

// True if the file of the status `old` can be replaced by one of another number. One that was
// deleted has no name left.
bool isReplaceable(struct stat const &old) {
    return S_ISREG(old.st_mode) && old.st_nlink <= 1;
}

// True if a new content can be written over the old one, which is read before, where somebody finds
// it.
bool isOverwritable(int descriptor) {
    struct stat status {};
    return systemCalls.status(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_nlink > 0 && (::fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDWR;
}

// Gives the file `target` the owner and the mode of the status `old`.
bool takeOwnerAndMode(int target, struct stat const &old) {
    struct stat fresh {};
    if (systemCalls.status(target, &fresh) != 0) return false;
    bool const sameOwner = old.st_uid == fresh.st_uid && old.st_gid == fresh.st_gid;
    if (!sameOwner && systemCalls.setOwner(target, old.st_uid, old.st_gid) != 0) return false;
    bool const sameMode = sameOwner && old.st_mode == fresh.st_mode;
    return sameMode || systemCalls.setMode(target, old.st_mode & permissionBits) == 0;
}

bool flush(int file, Safety safety) {
    return safety == Safety::program || systemCalls.flush(file) == 0;
}

}  // namespace

bool replaceFile(std::string const &path, int like, std::string const &name, int descriptor,
                 Safety safety) {
    std::string const target = withoutLinks(path);
    struct stat old {};
    return areInOneFolder(target, name) && systemCalls.status(like, &old) == 0 &&
           isReplaceable(old) && takeOwnerAndMode(descriptor, old) && flush(descriptor, safety) &&
           systemCalls.rename(name.c_str(), target.c_str(), 0) == 0;
}

CopyResult copyRest(int source, int target) {
    constexpr std::size_t most = 1 << 30;
    while (systemCalls.copy(source, target, most) > 0) {
    }
    // Files that the system can't copy by itself, and errors: blocks tell which side they are on.
    return copyByBlocks(source, target);
}

FileReplacement::FileReplacement(std::string const &path, int like)
    : path_(withoutLinks(path)), like_(like) {
    if (openBeside()) return;
    discard();
    if (isOverwritable(like)) content_ = makeScratch();
}

FileReplacement::~FileReplacement() {
    discard();
}

void FileReplacement::discard() {
    content_.close();
    if (!name_.empty()) systemCalls.remove(name_.c_str());
    name_.clear();
}

bool FileReplacement::openBeside() {
    struct stat old {};
    if (systemCalls.status(like_, &old) != 0 || !isReplaceable(old)) return false;
    std::string name;
    content_ = makeFile(folderOf(path_), old.st_mode & permissionBits, name);
    if (!isOpen()) return false;
    name_ = name;
    return takeOwnerAndMode(descriptor(), old);
}

bool FileReplacement::commit(Safety safety) {
    bool committed = false;
    if (isOpen() && name_.empty()) {
        committed = commitInPlace();
    } else if (isOpen()) {
        bool const flushed = flush(descriptor(), safety);
        bool const complete = content_.close() && flushed;
        committed = complete && systemCalls.rename(name_.c_str(), path_.c_str(), 0) == 0;
        if (committed)
            name_.clear();
        else if (complete && errno == EBUSY)
            committed = commitFromBeside();
    }
    discard();
    return committed;
}

// A file that something is mounted on keeps its place.
bool FileReplacement::commitFromBeside() {
    content_ = Descriptor(openFile(name_.c_str(), O_RDONLY, 0));
    return isOpen() && commitInPlace();
}

// If the new content can't be written the old one is put back.
bool FileReplacement::commitInPlace() {
    Descriptor const backup = makeScratch();
    if (!backup.isOpen() || !overwrite(backup.number(), like_)) return false;
    if (overwrite(like_, descriptor())) return true;
    damaged_ = !overwrite(like_, backup.number());
    return false;
}

}  // namespace tqplatform
