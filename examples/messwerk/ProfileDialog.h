#pragma once

// The dialog in which a profile is changed.

#include <string>

#include "Options.h"
#include "ProfileDraft.h"

namespace messwerk {

/// Shows the profile that `options` names and writes what the user changes, if he ends with OK.
/// Throws RunError if there is nobody to show it to, or it can't be written.
void editProfile(Options const &options);

}  // namespace messwerk
