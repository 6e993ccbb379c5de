#pragma once

// Tells a user who waits in front of a terminal how far the run is.

#include <chrono>
#include <optional>

namespace messwerk {

/// A line on standard error that is written over again and again, once the run has taken a second
/// and if standard error is a terminal.
class Progress {
  public:
    Progress();
    Progress(Progress const &) = delete;
    Progress &operator=(Progress const &) = delete;

    /// Removes the line.
    ~Progress();

    /// True if it is time to call show(). Cheap: looks at the clock once in many calls.
    bool isDue();

    /// Shows that `rows` rows are done, and what part of the file that is, 0 to 1, if it is known.
    void show(long rows, std::optional<double> part);

  private:
    using Clock = std::chrono::steady_clock;

    bool watched_;
    bool shown_ = false;
    unsigned calls_ = 0;
    Clock::time_point next_;
};

}  // namespace messwerk
