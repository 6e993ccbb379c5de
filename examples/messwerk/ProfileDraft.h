#pragma once

// What can be changed in a profile, ahead of the change.

#include <string>
#include <vector>

#include "Options.h"
#include "Profile.h"

namespace messwerk {

/// The limits of a column as texts; empty where there is none.
struct LimitText {
    std::string column;
    TQString lowest, highest;
};

/// The parts of a profile that the dialog shows, as they stand there.
struct ProfileDraft {
    std::string input, output;
    int headerLines = 1;
    std::vector<LimitText> limits;  ///< one for each column of numbers, results included
    std::vector<Formula> formulas;

    /// The parts of `profile`, which gave `options`.
    static ProfileDraft of(Profile &profile, Options const &options);

    /// Writes into `profile` what is another than in `before`. Throws RunError if that fails.
    void write(Profile &profile, ProfileDraft const &before) const;
};

}  // namespace messwerk
