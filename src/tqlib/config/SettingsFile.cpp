#include "tqlib/config/SettingsFile.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

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
    // As a rule the file is there, and is opened faster so.
    if (name != nullptr) stream_.open(name, mode | ios::nocreate);
    if (name != nullptr && !stream_) {
        stream_.clear();
        stream_.open(name, mode);
    }
    if (!takeIdentity()) stream_.clear(ios::failbit);
}

// While nobody has the stream, nobody sees where it stands.
classic::fstream &SettingsFile::stream() {
    if (!std::exchange(isHandedOut_, true) && isOpen()) place(position_, state_);
    return stream_;
}

void SettingsFile::place(classic::streampos position, int state) {
    position_ = position;
    state_ = state;
    if (!isHandedOut_) return;
    stream_.clear();
    stream_.seekg(position);
    stream_.clear(state);
}

bool SettingsFile::takeIdentity() {
    struct stat status {};
    descriptor_ = stream_ ? stream_.rdbuf()->fd() : -1;
    if (!isOpen() || systemCalls.status(descriptor_, &status) != 0) return false;
    device_ = status.st_dev;
    number_ = status.st_ino;
    return true;
}

void SettingsFile::notePlace() {
    if (!isHandedOut_) return;
    position_ = std::max<classic::streampos>(stream_.tellg(), 0);
    state_ = stream_.rdstate();
}

bool SettingsFile::reopen() {
    notePlace();
    classic::fstream fresh(hostName_.c_str(), mode);
    // A file that was made read-only meanwhile can still be replaced.
    if (!fresh) fresh = classic::fstream(hostName_.c_str(), readingMode);
    if (!fresh) return false;
    stream_ = fresh;
    if (!takeIdentity()) return false;
    place(position_, state_);
    return true;
}

bool SettingsFile::refresh() {
    struct stat status {};
    bool const replaced = systemCalls.statusOf(hostName_.c_str(), &status) == 0 &&
                          (status.st_dev != device_ || status.st_ino != number_);
    if (replaced) return reopen();
    return !isHandedOut_ || stream_.rdbuf()->sync() == 0;
}

// What the stream has read ahead may be of the old content.
void SettingsFile::settle() {
    if (!isHandedOut_ || !refresh()) return;
    notePlace();
    place(position_, state_);
}

}  // namespace tqlib::detail
