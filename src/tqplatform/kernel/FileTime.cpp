#include "tqplatform/kernel/FileTime.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <limits>

#include "tqplatform/kernel/FileHandle.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using tqplatform::FileHandle;
using tqplatform::systemCalls;

using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
constexpr auto epoch = std::chrono::sys_days(std::chrono::year(1601) / 1 / 1);
constexpr auto ticksToHostEpoch =
    std::chrono::duration_cast<Ticks>(std::chrono::sys_days{} - epoch).count();
constexpr std::int64_t ticksOfSecond = Ticks::period::den;
constexpr int firstYear = 1601, lastYear = 30827;

FILETIME fileTime(std::int64_t ticks) {
    auto const bits = static_cast<std::uint64_t>(ticks);
    return {static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(bits >> 32)};
}

std::int64_t ticksOf(FILETIME const &time) {
    return static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
}

// A time that can't be told so is the nearest one that can.
FILETIME fromHost(timespec const &time) {
    constexpr std::int64_t first = -ticksToHostEpoch / ticksOfSecond;
    constexpr std::int64_t last =
        std::numeric_limits<std::int64_t>::max() / ticksOfSecond + first - 1;
    std::int64_t const seconds = std::clamp(std::int64_t{time.tv_sec}, first, last);
    return fileTime(seconds * ticksOfSecond + time.tv_nsec / 100 + ticksToHostEpoch);
}

timespec toHost(FILETIME const *time) {
    if (time == nullptr) return {0, UTIME_OMIT};
    std::int64_t const ticks = ticksOf(*time) - ticksToHostEpoch;
    std::int64_t const rest = (ticks % ticksOfSecond + ticksOfSecond) % ticksOfSecond;
    return {static_cast<std::time_t>((ticks - rest) / ticksOfSecond),
            static_cast<long>(rest * 100)};
}

std::uint16_t word(auto value) {
    return static_cast<std::uint16_t>(value);
}

}  // namespace

HANDLE OpenFile(char const *path, unsigned int mode) {
    if (path == nullptr || (mode != OF_READ && mode != OF_WRITE)) return nullptr;
    int const flags = (mode == OF_READ ? O_RDONLY : O_WRONLY) | O_NONBLOCK;
    int const descriptor = tqplatform::openFile(tqplatform::toHostPath(path).c_str(), flags, 0);
    return descriptor < 0 ? nullptr : new FileHandle(tqplatform::Descriptor(descriptor));
}

int GetFileTime(HANDLE file, FILETIME *created, FILETIME *accessed, FILETIME *written) {
    struct stat status {};
    if (systemCalls.status(FileHandle::descriptorOf(file), &status) != 0) return 0;
    if (created != nullptr) *created = {};
    if (accessed != nullptr) *accessed = fromHost(status.st_atim);
    if (written != nullptr) *written = fromHost(status.st_mtim);
    return 1;
}

int SetFileTime(HANDLE file, FILETIME const * /*created*/, FILETIME const *accessed,
                FILETIME const *written) {
    for (FILETIME const *time : {accessed, written})
        if (time != nullptr && ticksOf(*time) < 0) return 0;
    timespec const times[] = {toHost(accessed), toHost(written)};
    return systemCalls.setTimes(FileHandle::descriptorOf(file), times) == 0 ? 1 : 0;
}

int FileTimeToSystemTime(FILETIME const *time, SYSTEMTIME *result) {
    using namespace std::chrono;
    std::int64_t const ticks = ticksOf(*time);
    if (ticks < 0) return 0;
    auto const sinceEpoch = Ticks(ticks);
    auto const day = epoch + floor<days>(sinceEpoch);
    year_month_day const date(day);
    if (static_cast<int>(date.year()) > lastYear) return 0;
    hh_mm_ss const clock(floor<milliseconds>(sinceEpoch - floor<days>(sinceEpoch)));
    *result = {word(static_cast<int>(date.year())), word(static_cast<unsigned>(date.month())),
               word(weekday(day).c_encoding()),     word(static_cast<unsigned>(date.day())),
               word(clock.hours().count()),         word(clock.minutes().count()),
               word(clock.seconds().count()),       word(clock.subseconds().count())};
    return 1;
}

int SystemTimeToFileTime(SYSTEMTIME const *time, FILETIME *result) {
    using namespace std::chrono;
    year_month_day const date{year(time->wYear), month(time->wMonth), day(time->wDay)};
    bool const isMoment = time->wYear >= firstYear && time->wYear <= lastYear && date.ok() &&
                          time->wHour < 24 && time->wMinute < 60 && time->wSecond < 60 &&
                          time->wMilliseconds < 1000;
    if (!isMoment) return 0;
    Ticks const ticks = Ticks(sys_days(date) - epoch) + hours(time->wHour) +
                        minutes(time->wMinute) + seconds(time->wSecond) +
                        milliseconds(time->wMilliseconds);
    *result = fileTime(ticks.count());
    return 1;
}
