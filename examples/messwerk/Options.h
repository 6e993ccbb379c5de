#pragma once

// What the command line asks for.

#include <string>
#include <vector>

#include "Column.h"

namespace messwerk {

struct Options {
    std::string input;
    std::string output;
    char separator = ';';
    long headerLines = 1;
    std::vector<Column> columns;    ///< those of the input, in its order
    std::vector<Formula> formulas;  ///< each may use columns and the formulas ahead of it
    bool help = false;              ///< the user asks for help; the rest isn't set
};

/// Reads the command line and checks all that can be checked without a file, expressions included,
/// in the locale in force. Throws UsageError.
Options readOptions(int argc, char **argv);

/// The columns of the result: those of the input, omitted ones included, and one for each formula.
std::vector<Column> resultColumns(Options const &options);

/// The text that -h prints.
extern char const helpText[];

}  // namespace messwerk
