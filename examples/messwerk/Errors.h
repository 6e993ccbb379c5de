#pragma once

// How a run ends before its time. The texts are for the user.

#include <stdexcept>
#include <string>

namespace messwerk {

/// The command line can't be carried out as it stands.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Something outside the program failed: a file, a folder, a disk.
class RunError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The error `what`, followed by the system's reason `number`, an errno value; without one if that
/// is 0.
RunError systemError(std::string const &what, int number);

}  // namespace messwerk
