#pragma once

// Files that a run would replace.

#include "Options.h"

namespace messwerk {

/// Asks the user about each ordinary file that the run would replace, unless the options say that
/// nothing is to be asked, and makes the paths of those that are to stay empty. Throws RunError if
/// the user cancels, or if there is nobody to ask.
void askToReplace(Options &options);

}  // namespace messwerk
