#include "tqlib/config/SettingsFile.h"

#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace tqlib::detail {
namespace {

using classic::ios;
using tqplatform::systemCalls;

constexpr int mode = ios::in | ios::out | ios::binary;

}  // namespace

SettingsFile::SettingsFile(char const *name) : name_(name == nullptr ? "" : name) {
    hostName_ = tqplatform::toHostPath(name_);
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
    classic::fstream fresh(name_.c_str(), mode);
    if (!fresh) return false;
    stream_ = fresh;
    return takeIdentity();
}

bool SettingsFile::refresh() {
    struct stat status {};
    bool const replaced = systemCalls.statusOf(hostName_.c_str(), &status) == 0 &&
                          (status.st_dev != device_ || status.st_ino != number_);
    return replaced ? reopen() : stream_.rdbuf()->sync() == 0;
}

}  // namespace tqlib::detail
