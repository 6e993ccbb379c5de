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
constexpr int endingSignals[] = {SIGHUP, SIGINT, SIGTERM};

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

/// The permissions for the file `path`: those it has, or those of a new file.
mode_t permissionsOf(std::string const &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) return status.st_mode & permissionBits;
    mode_t const mask = umask(0);
    umask(mask);
    return newFile & ~mask;
}

}  // namespace

SafeFile::SafeFile(std::string const &path) : path_(path), workPath_(path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0) followLinks();
    if (!direct_) makeTemporary();
}

SafeFile::~SafeFile() {
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
    int const descriptor = mkstemp(workPath_.data());
    if (descriptor < 0) throw writeError(path_, errno);
    unfinishedFile = workPath_.c_str();
    close(descriptor);
}

void SafeFile::keep() {
    if (direct_) return;
    bool const done = chmod(workPath_.c_str(), permissionsOf(path_)) == 0 &&
                      std::rename(workPath_.c_str(), path_.c_str()) == 0;
    if (!done) throw writeError(path_, errno);
    unfinishedFile = nullptr;
}

}  // namespace messwerk
