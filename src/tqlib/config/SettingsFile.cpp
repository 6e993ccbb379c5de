#include "tqlib/config/SettingsFile.h"

#include "tqplatform/runtime/CRuntime.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace tqlib::detail {
namespace {

using classic::ios;

constexpr int mode = ios::in | ios::out | ios::binary;

}  // namespace

SettingsFile::SettingsFile(char const *name) : name_(name == nullptr ? "" : name) {
    if (name == nullptr || !open()) stream_.clear(ios::failbit);
}

bool SettingsFile::open() {
    classic::fstream fresh(name_.c_str(), mode);
    struct stat status {};
    if (!fresh || tqplatform::systemCalls.status(fresh.rdbuf()->fd(), &status) != 0) return false;
    stream_ = fresh;
    device_ = status.st_dev;
    number_ = status.st_ino;
    return true;
}

bool SettingsFile::refresh() {
    struct stat status {};
    bool const replaced = _stat(name_.c_str(), &status) == 0 &&
                          (status.st_dev != device_ || status.st_ino != number_);
    return replaced ? open() : stream_.rdbuf()->sync() == 0;
}

}  // namespace tqlib::detail
