#pragma once

// The words of the command line, from which options are taken until only the file is left.

#include <optional>
#include <string>
#include <vector>

#include "tqlib/tqlib.h"

namespace messwerk {

class Arguments {
  public:
    Arguments(int argc, char const *const *argv);

    /// Takes the option `option` out; false if it isn't there, or isn't there any more.
    bool take(char const *option);

    /// Takes the option `option` out together with the word behind it, which is the result. Nothing
    /// if it isn't there. Throws UsageError if there is no word behind it.
    std::optional<std::string> takeValue(char const *option);

    /// What is left. Throws UsageError if that is an option.
    std::vector<std::string> rest() const;

  private:
    TQArgv words_;
};

}  // namespace messwerk
