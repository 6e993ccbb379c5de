#include "Progress.h"

#include <unistd.h>

#include <cstdio>

namespace messwerk {
namespace {

constexpr std::chrono::milliseconds patience{1000};
constexpr std::chrono::milliseconds interval{200};
constexpr unsigned callsPerLook = 256;
constexpr char eraseLine[] = "\r\033[K";

}  // namespace

Progress::Progress() : watched_(isatty(STDERR_FILENO) == 1), next_(Clock::now() + patience) {}

Progress::~Progress() {
    if (shown_) std::fputs(eraseLine, stderr);
}

bool Progress::isDue() {
    if (!watched_ || ++calls_ % callsPerLook != 0) return false;
    auto const now = Clock::now();
    if (now < next_) return false;
    next_ = now + interval;
    return true;
}

void Progress::show(long rows, std::optional<double> part) {
    std::fputs(eraseLine, stderr);
    if (part) std::fprintf(stderr, "%3.0f %%, ", *part * 100);
    std::fprintf(stderr, "%ld rows", rows);
    std::fflush(stderr);
    shown_ = true;
}

}  // namespace messwerk
