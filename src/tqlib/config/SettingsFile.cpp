#include "tqlib/config/SettingsFile.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace tqlib::detail {
namespace {

using classic::ios;
using tqplatform::systemCalls;

constexpr int mode = ios::in | ios::out | ios::binary;
constexpr int readingMode = ios::in | ios::nocreate | ios::binary;

// The host may change its current directory while the file is open.
std::string absolutePath(std::string const &path) {
    if (path.empty() || path.front() == '/') return path;
    std::unique_ptr<char, decltype(&std::free)> const folder(::getcwd(nullptr, 0), &std::free);
    return folder == nullptr ? path : std::string(folder.get()) + '/' + path;
}

}  // namespace

SettingsFile::SettingsFile(char const *name) : name_(name == nullptr ? "" : name) {
    hostName_ = absolutePath(tqplatform::toHostPath(name_));
    if (name != nullptr) stream_.open(name, mode);
    if (!takeIdentity()) stream_.clear(ios::failbit);
}

bool SettingsFile::takeIdentity() {
    struct stat status {};
    if (!stream_ || systemCalls.status(descriptor(), &status) != 0) return false;
    device_ = status.st_dev;
    number_ = status.st_ino;
    return true;
}

bool SettingsFile::reopen() {
    auto const position = stream_.tellg();
    int const state = stream_.rdstate();
    classic::fstream fresh(hostName_.c_str(), mode);
    // A file that was made read-only meanwhile can still be replaced.
    if (!fresh) fresh = classic::fstream(hostName_.c_str(), readingMode);
    if (!fresh) return false;
    stream_ = fresh;
    if (!takeIdentity()) return false;
    if (position > 0) stream_.seekg(position);
    stream_.clear(state);
    return true;
}

bool SettingsFile::refresh() {
    struct stat status {};
    bool const replaced = systemCalls.statusOf(hostName_.c_str(), &status) == 0 &&
                          (status.st_dev != device_ || status.st_ino != number_);
    return replaced ? reopen() : stream_.rdbuf()->sync() == 0;
}

}  // namespace tqlib::detail
