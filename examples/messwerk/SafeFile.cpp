#include "SafeFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "Errors.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr mode_t permissionBits = 0777;
constexpr mode_t newFile = 0666;
constexpr char temporaryName[] = "messwerk.XXXXXX";
constexpr int endingSignals[] = {SIGHUP, SIGINT, SIGPIPE, SIGALRM, SIGTERM, SIGXCPU, SIGXFSZ};

/// The file that a signal is to remove, or null.
char const *volatile unfinishedFile = nullptr;

// The signal is handled once: raised again, it ends the program as ever.
extern "C" void removeUnfinishedFile(int signal) {
    char const *const path = unfinishedFile;
    if (path != nullptr) unlink(path);
    raise(signal);
}

void handleEndingSignals() {
    for (int const signal : endingSignals) {
        struct sigaction action {};
        bool const known = sigaction(signal, nullptr, &action) == 0;
        if (!known || action.sa_handler != SIG_DFL) continue;  // an ignored one stays ignored
        action.sa_handler = removeUnfinishedFile;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

RunError writeError(std::string const &path, int reason) {
    return systemError("can't write " + quotedPath(path), reason);
}

/// Gives an open file owner and permissions of the file `path`, or those of a new one. Another
/// owner is for root alone to give.
bool dressAs(std::string const &path, int file) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0)
        return (fchown(file, status.st_uid, status.st_gid) == 0 || errno == EPERM) &&
               fchmod(file, status.st_mode & permissionBits) == 0;
    mode_t const mask = umask(0);
    umask(mask);
    return fchmod(file, newFile & ~mask) == 0;
}

}  // namespace

SafeFile::SafeFile(std::string const &path) : path_(path), workPath_(path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0) followLinks();
    if (!direct_) makeTemporary();
}

SafeFile::~SafeFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (unfinishedFile == nullptr) return;
    unlink(unfinishedFile);
    unfinishedFile = nullptr;
}

// The file exists, or a link of that name does.
void SafeFile::followLinks() {
    struct stat status {};
    if (stat(path_.c_str(), &status) != 0) throw writeError(path_, errno);
    if (S_ISDIR(status.st_mode)) throw writeError(path_, EISDIR);
    direct_ = !S_ISREG(status.st_mode);
    if (direct_) return;
    if (access(path_.c_str(), W_OK) != 0) throw writeError(path_, errno);
    char *const target = realpath(path_.c_str(), nullptr);
    if (target == nullptr) throw writeError(path_, errno);
    path_ = target;
    std::free(target);
}

void SafeFile::makeTemporary() {
    std::size_t const nameStart = path_.rfind('/') + 1;  // 0 if there is no folder
    workPath_ = path_.substr(0, nameStart) + temporaryName;
    handleEndingSignals();
    descriptor_ = mkstemp(workPath_.data());
    if (descriptor_ < 0) throw writeError(path_, errno);
    unfinishedFile = workPath_.c_str();
}

// On the disk ahead of the name: without power there is the old file or the new one.
void SafeFile::keep() {
    if (direct_) return;
    bool const done = dressAs(path_, descriptor_) && fsync(descriptor_) == 0 &&
                      std::rename(workPath_.c_str(), path_.c_str()) == 0;
    if (!done) throw writeError(path_, errno);
    unfinishedFile = nullptr;
}

}  // namespace messwerk
