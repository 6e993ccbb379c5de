#pragma once

// What the command line and the profile ask for.

#include <string>
#include <vector>

#include "Column.h"
#include "Form.h"
#include "Limits.h"

namespace messwerk {

/// A picture of the result.
struct PlotOptions {
    std::string file;  ///< a BMP file; empty if there is to be none
    std::string title;
    std::string across;                ///< the column along the horizontal axis
    std::vector<std::string> columns;  ///< those that are drawn over it
};

struct Options {
    std::string profile;  ///< its path; empty if there is none
    std::string input;
    std::string output;
    Form inputForm = Form::Separated;
    Form outputForm = Form::Separated;
    Layout inputLayout;    ///< of the form Columns
    Layout outputLayout;   ///< of the form Columns, without omitted columns
    char separator = ';';  ///< of the form Separated
    long headerLines = 1;
    std::vector<Column> columns;    ///< those of the input, in its order
    std::vector<Formula> formulas;  ///< each may use columns and the formulas ahead of it
    std::vector<Limit> limits;
    PlotOptions plot;
    bool view = false;     ///< the user wants to see the result
    bool replace = false;  ///< files that are there are replaced without a question
    bool edit = false;     ///< the profile is to be changed, and nothing run
    bool help = false;     ///< the user asks for help; the rest isn't set
};

/// Reads the command line, and the profile if it names one, and checks all that can be checked
/// without the input, expressions included, in the locale in force. Options count before the
/// profile. Throws UsageError, or RunError if the profile can't be read.
Options readOptions(int argc, char const *const *argv);

/// Throws UsageError if columns, expressions, limits, forms or picture don't fit together.
void checkOptions(Options const &options);

/// The column that NAME = EXPRESSION means. Throws UsageError for another text.
Formula parseFormula(std::string const &text);

/// The columns of the result: those of the input, omitted ones included, and one for each formula.
std::vector<Column> resultColumns(Options const &options);

/// The text that -h prints.
extern char const helpText[];

}  // namespace messwerk
