#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "tqlib/config/getLibrarySetting.h"
#include "tqlib/files/TQExecute.h"
#include "tqlib/files/TQFilename.h"
#include "tqplatform/kernel/FileTime.h"
#include "tqplatform/runtime/CRuntime.h"
#include "tqplatform/runtime/Descriptor.h"
#include "tqplatform/runtime/FileReplacement.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"
#include "tqplatform/streams/filebuf.h"

namespace {

using tqplatform::Descriptor;
using tqplatform::openFile;
using tqplatform::systemCalls;
using tqplatform::toHostPath;

constexpr int commandRoom = 1024;  // characters of a command line, its NUL included
constexpr int folderRoom = 1025;   // of the current directory
constexpr int mostNames = 15;      // that makeTemp() tries
constexpr int namesPerSecond = 16;

/// Results of copy().
enum CopyCode { copied = 0, noTarget = 1, noSource = 2, unreadableSource = 3 };

/// The file that a copy goes to. One that the copy made is gone again if it doesn't succeed.
class CopyTarget {
  public:
    /// Opens the file and leaves its content alone.
    explicit CopyTarget(std::string path) : path_(std::move(path)) {
        bool const isOther =
            systemCalls.statusOf(path_.c_str(), &status_) == 0 && !S_ISREG(status_.st_mode);
        for (int const flags : {O_RDWR, O_WRONLY, O_WRONLY | O_CREAT | O_EXCL}) {
            // A pipe that is open for reading as well would lose what goes into it.
            if (isOther && flags == O_RDWR) continue;
            file_ = Descriptor(openFile(path_.c_str(), flags, classic::filebuf::openprot));
            made_ = file_.isOpen() && (flags & O_CREAT) != 0;
            if (file_.isOpen()) break;
        }
        if (file_.isOpen() && systemCalls.status(file_.number(), &status_) != 0) file_.close();
    }
    CopyTarget(CopyTarget const &) = delete;
    CopyTarget &operator=(CopyTarget const &) = delete;
    ~CopyTarget() {
        if (made_) systemCalls.remove(path_.c_str());
    }

    bool isOpen() const { return file_.isOpen(); }

    bool isFile(struct stat const &other) const {
        return status_.st_dev == other.st_dev && status_.st_ino == other.st_ino;
    }

    /// Takes over the content of the file `source`.
    CopyCode take(int source) {
        if (made_ || !S_ISREG(status_.st_mode)) {
            CopyCode const code = copyTo(file_.number(), source);
            bool const closed = file_.close();
            if (code == copied && closed) made_ = false;
            return closed ? code : noTarget;
        }
        tqplatform::FileReplacement replacement(path_, file_.number());
        CopyCode const code = copyTo(replacement.descriptor(), source);
        if (code != copied) return code;
        return replacement.commit(tqplatform::Safety::program) ? copied : noTarget;
    }

  private:
    static CopyCode copyTo(int target, int source) {
        switch (tqplatform::copyRest(source, target)) {
            case tqplatform::CopyResult::done:
                return copied;
            case tqplatform::CopyResult::unreadable:
                return unreadableSource;
            default:
                return noTarget;
        }
    }

    std::string path_;
    Descriptor file_;
    struct stat status_ {};
    bool made_ = false;
};

// Starts the program of the setting `key` with the file `path` and `arguments`, and waits for its
// end. The program finds the file under its name on the host, with and without a drive.
int startProgram(char const *key, std::string const &path, std::string const &arguments = {}) {
    std::unique_ptr<char, decltype(&std::free)> const setting(getLibrarySetting(key), &std::free);
    if (setting == nullptr) return 1;
    std::string const program = setting.get();
    // Without a program the file itself would be started.
    if (program.find_first_not_of(" \t") == program.npos) return -1;
    if (program.size() + 1 + path.size() + arguments.size() >= commandRoom) return -1;
    std::string const hostPath = toHostPath(path);
    std::string const command = program + ' ' + (hostPath.empty() ? path : hostPath) + arguments;
    return TQExecute(TQString(command.c_str())).start(TQExecute::startAndWait);
}

unsigned long secondsOfDay() {
    std::time_t const moment = std::time(nullptr);
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr) return 0;
    int const seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
    return static_cast<unsigned long>(seconds);
}

// What stands in front of the names of temporary files; nothing if no folder can be told.
std::optional<TQString> temporaryPrefix() {
    std::unique_ptr<char, decltype(&std::free)> const setting(getLibrarySetting("PATH"),
                                                              &std::free);
    if (setting != nullptr) return TQString(setting.get());
    char folder[folderRoom];
    if (_getcwd(folder, folderRoom) == nullptr) return std::nullopt;
    return TQString(folder) + "\\";
}

/// The handle of an open file, closed in the end.
using FileHandle = std::unique_ptr<tqplatform::Handle, decltype(&CloseHandle)>;

FileHandle openHandle(char const *path) {
    return {OpenFile(path, OF_READ), &CloseHandle};
}

// The time of the last change.
std::optional<SYSTEMTIME> timeOf(FileHandle const &file) {
    FILETIME written;
    SYSTEMTIME moment;
    bool const known = file != nullptr &&
                       GetFileTime(file.get(), nullptr, nullptr, &written) != 0 &&
                       FileTimeToSystemTime(&written, &moment) != 0;
    return known ? std::optional(moment) : std::nullopt;
}

bool isSameTimeOfDay(SYSTEMTIME const &one, SYSTEMTIME const &other) {
    return one.wHour == other.wHour && one.wMinute == other.wMinute &&
           one.wSecond == other.wSecond && one.wMilliseconds == other.wMilliseconds;
}

// Systems store the nearest time that they know. Some know even seconds only.
bool isStored(SYSTEMTIME const &wanted, SYSTEMTIME const &found) {
    return wanted.wYear == found.wYear && wanted.wMonth == found.wMonth &&
           wanted.wDay == found.wDay && wanted.wHour == found.wHour &&
           wanted.wMinute == found.wMinute;
}

// Gives an open file the time of `moment`. What the old time has below a thousandth belongs to the
// time of day.
bool setTime(FileHandle const &file, SYSTEMTIME const &old, SYSTEMTIME const &moment) {
    constexpr std::uint32_t ticksOfThousandth = 10000;
    FILETIME before, truncated, written;
    if (GetFileTime(file.get(), nullptr, nullptr, &before) == 0 ||
        SystemTimeToFileTime(&old, &truncated) == 0 || SystemTimeToFileTime(&moment, &written) == 0)
        return false;
    std::uint32_t const rest = before.dwLowDateTime - truncated.dwLowDateTime;
    if (isSameTimeOfDay(old, moment) && rest < ticksOfThousandth) {
        written.dwLowDateTime += rest;
        written.dwHighDateTime += written.dwLowDateTime < rest;
    }
    if (SetFileTime(file.get(), nullptr, nullptr, &written) == 0) return false;
    auto const found = timeOf(file);
    if (found && isStored(moment, *found)) return true;
    SetFileTime(file.get(), nullptr, nullptr, &before);
    return false;
}

// Lets `change` change the time of the last change; 0, or -1 if that can't be.
template <typename Function>
int changeTime(char const *path, Function change) {
    FileHandle file = openHandle(path);
    if (file == nullptr) file.reset(OpenFile(path, OF_WRITE));
    auto const old = timeOf(file);
    if (!old) return -1;
    SYSTEMTIME moment = *old;
    return change(moment) && setTime(file, *old, moment) ? 0 : -1;
}

// Stores `value` if it can stand in a moment.
bool store(std::uint16_t &field, int value) {
    field = static_cast<std::uint16_t>(value);
    return field == value;
}

}  // namespace

int TQFilename::access(int mode) const {
    return _access(*this, mode);
}

int TQFilename::rename(TQString const &target) {
    TQFilename const renamed(target);
    int const result = tqplatform::renameFile(*this, renamed);
    if (result == 0) *this = renamed;
    return result;
}

int TQFilename::remove() {
    return _unlink(*this);
}

int TQFilename::copy(TQString const &target) const {
    bool const exists = access(0) == 0;  // before the target is made, which may be the same
    CopyTarget to(toHostPath(static_cast<char const *>(TQFilename(target))));
    if (!to.isOpen()) return noTarget;
    if (!exists) return noSource;
    char const *const path = *this;
    Descriptor const from(openFile(toHostPath(path).c_str(), O_RDONLY, 0));
    struct stat status {};
    if (!from.isOpen() || systemCalls.status(from.number(), &status) != 0) return unreadableSource;
    return to.isFile(status) ? noTarget : to.take(from.number());
}

int TQFilename::print(TQString const &printer) {
    char const *const path = *this;
    char const *const device = printer.IsEmpty() ? "PRN:" : static_cast<char const *>(printer);
    return startProgram("PRINT", path, std::string(" ") + device);
}

int TQFilename::edit() {
    return startProgram("EDIT", static_cast<char const *>(*this));
}

int TQFilename::view() {
    return startProgram("VIEW", static_cast<char const *>(*this));
}

// A name that exists makes the opening fail, also if another program takes it in this very moment.
int TQFilename::makeTemp() {
    auto const prefix = temporaryPrefix();
    if (!prefix) return 1;
    unsigned long const first = secondsOfDay() * namesPerSecond;
    for (int i = 0; i < mostNames; ++i) {
        char number[2 * sizeof first + 1];
        std::snprintf(number, sizeof number, "%lX", first + static_cast<unsigned long>(i));
        *this = TQFilename(*prefix);
        *this += number;
        Descriptor const file(openFile(toHostPath(text()).c_str(), O_WRONLY | O_CREAT | O_EXCL,
                                       classic::filebuf::openprot));
        if (file.isOpen()) return 0;
        if (errno != EEXIST) return 1;
    }
    return 2;
}

unsigned long TQFilename::fileSize() const {
    tqplatform::FileStatus status{};
    return _stat(*this, &status) == 0 ? static_cast<unsigned long>(status.st_size) : 0;
}

TQDate &TQFilename::fileDate() const {
    static TQDate date(0, 0, 0);
    SYSTEMTIME const moment = timeOf(openHandle(*this)).value_or(SYSTEMTIME{});
    date = TQDate(moment.wDay, moment.wMonth, moment.wYear);
    return date;
}

TQTime &TQFilename::fileTime() const {
    static TQTime time(0, 0, 0, 0);
    SYSTEMTIME const moment = timeOf(openHandle(*this)).value_or(SYSTEMTIME{});
    time = TQTime(moment.wHour, moment.wMinute, moment.wSecond, 0);
    return time;
}

int TQFilename::setFileDate(TQDate const &date) {
    return changeTime(*this, [&](SYSTEMTIME &moment) {
        return store(moment.wYear, date.year()) && store(moment.wMonth, date.month()) &&
               store(moment.wDay, date.day());
    });
}

int TQFilename::setFileTime(TQTime const &time) {
    return changeTime(*this, [&](SYSTEMTIME &moment) {
        return store(moment.wHour, time.hour()) && store(moment.wMinute, time.minute()) &&
               store(moment.wSecond, time.second()) &&
               store(moment.wMilliseconds, time.thousands());
    });
}
