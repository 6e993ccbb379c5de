#include "Options.h"

#include <cctype>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "Arguments.h"
#include "Errors.h"
#include "FormulaCheck.h"
#include "Names.h"
#include "Paths.h"
#include "Plot.h"
#include "Profile.h"
#include "Words.h"

namespace messwerk {
namespace {

char parseSeparator(std::string const &text) {
    if (text == "tab") return '\t';
    if (text.size() != 1)
        throw UsageError("the separator is one character or the word tab, not " + quoted(text));
    return text[0];
}

long parseHeaderLines(char const *text) {
    char *end = nullptr;
    errno = 0;
    long const count = std::strtol(text, &end, 10);
    if (end == text || *end != '\0' || errno != 0 || count < 0)
        throw UsageError("the number of header lines is 0 or more, not " + quoted(text));
    return count;
}

std::vector<Column> parseColumns(char const *text) {
    std::vector<Column> columns;
    TQString const list = text;
    TQString description;
    for (int at = 0; at != -1;) {
        at = list.GetToken(description, at, ",", 0);
        columns.push_back(parseColumn(description.Trim().text()));
    }
    return columns;
}

std::vector<std::string> parseNames(char const *text) {
    std::vector<std::string> names;
    TQString const list = text;
    TQString name;
    for (int at = 0; at != -1;) {
        at = list.GetToken(name, at, ",", 0);
        names.emplace_back(name.Trim().text());
    }
    return names;
}

/// What can stand once in the profile, and on the command line if it has an option.
struct Setting {
    char const *option, *category, *name;
    void (*set)(Options &options, std::string const &value);
};

constexpr Setting settings[] = {
    {"-s", "Input", "Separator",
     [](Options &options, std::string const &value) { options.separator = parseSeparator(value); }},
    {"-k", "Input", "HeaderLines",
     [](Options &options, std::string const &value) {
         options.headerLines = parseHeaderLines(value.c_str());
     }},
    {"-c", "Input", "Columns",
     [](Options &options, std::string const &value) {
         options.columns = parseColumns(value.c_str());
     }},
    {nullptr, "Input", "Form",
     [](Options &options, std::string const &value) { options.inputForm = parseForm(value); }},
    {nullptr, "Input", "Layout",
     [](Options &options, std::string const &value) { options.inputLayout = parseLayout(value); }},
    {nullptr, "Output", "Form",
     [](Options &options, std::string const &value) { options.outputForm = parseForm(value); }},
    {nullptr, "Output", "Layout",
     [](Options &options, std::string const &value) { options.outputLayout = parseLayout(value); }},
    {nullptr, "Plot", "Title",
     [](Options &options, std::string const &value) { options.plot.title = value; }},
    {nullptr, "Plot", "Across",
     [](Options &options, std::string const &value) { options.plot.across = value; }},
    {nullptr, "Plot", "Columns",
     [](Options &options, std::string const &value) {
         options.plot.columns = parseNames(value.c_str());
     }},
};

/// What can stand there several times, with a name each time.
struct List {
    char const *option, *category;
    void (*add)(Options &options, std::string const &line);
};

constexpr List lists[] = {
    {"-x", "Calculations",
     [](Options &options, std::string const &line) {
         options.formulas.push_back(parseFormula(line));
     }},
    {"-l", "Limits",
     [](Options &options, std::string const &line) { options.limits.push_back(parseLimit(line)); }},
};

// Takes up the value of `option`, which stands once.
bool takeOne(Arguments &arguments, char const *option, std::string &value) {
    auto const given = arguments.takeValue(option);
    if (!given) return false;
    value = *given;
    if (arguments.takeValue(option))
        throw UsageError("the option " + quoted(option) + " is there twice");
    return true;
}

// Takes up what stands in the profile. A word about what is wrong says where.
void takeProfile(Options &options) {
    Profile profile(options.profile);
    try {
        profile.check();
        for (Setting const &setting : settings)
            if (auto const value = profile.value(setting.category, setting.name))
                setting.set(options, *value);
        for (List const &list : lists)
            for (std::string const &line : profile.lines(list.category))
                list.add(options, line);
        options.input = profile.file("Input");
        options.output = profile.file("Output");
        options.plot.file = profile.file("Plot");
    } catch (UsageError const &error) {
        throw UsageError("in " + quotedPath(options.profile) + ", " + error.what());
    }
}

void takeFile(Options &options, std::vector<std::string> const &words) {
    if (words.empty()) throw UsageError("which file is to be read?");
    if (words.size() > 1)
        throw UsageError("there is one file to read, not " + quotedPath(words[0]) + " and " +
                         quotedPath(words[1]));
    (isProfile(words[0]) ? options.profile : options.input) = words[0];
}

void nameResult(Options &options) {
    if (options.input.empty()) throw UsageError("which file is to be read? Its name is empty");
    if (!options.output.empty()) return;
    auto const name = resultName(options.input);
    if (!name) throw UsageError("where is the result to go? Name a file with -o");
    options.output = *name;
}

void checkSeparator(char separator) {
    auto const byte = static_cast<unsigned char>(separator);
    bool const inNumbers = std::isalnum(byte) != 0 || separator == '+' || separator == '-';
    if (inNumbers || separator == '"' || separator == '\n' || separator == '\r')
        throw UsageError("the separator can't be " + quoted({&separator, 1}));
    if (std::strchr(std::localeconv()->decimal_point, separator) != nullptr)
        throw UsageError("the separator " + quoted({&separator, 1}) +
                         " is the decimal character of the locale in force");
}

// In the order of the results, so that each sees those ahead of it.
void checkNamesAndFormulas(Options const &options) {
    Names names(options.separator);
    for (Column const &column : options.columns)
        names.add(column);
    for (Formula const &formula : options.formulas) {
        checkFormula(formula, names);
        names.add({formula.name, ColumnKind::Number});
    }
    for (Limit const &limit : options.limits)
        checkLimit(limit, names);
}

void checkForms(Options const &options) {
    if (options.inputForm == Form::Columns) checkLayout(options.inputLayout, options.columns);
    if (options.outputForm != Form::Columns) return;
    std::vector<Column> columns = resultColumns(options);
    std::erase_if(columns, [](Column const &column) { return column.kind == ColumnKind::Omitted; });
    checkLayout(options.outputLayout, columns);
}

}  // namespace

Options readOptions(int argc, char const *const *argv) {
    Options options;
    Arguments arguments(argc, argv);
    options.help = arguments.take("-h") || arguments.take("--help");
    if (options.help) return options;

    std::vector<std::pair<void (*)(Options &, std::string const &), std::string>> given;
    std::string value, output;
    for (Setting const &setting : settings)
        if (setting.option != nullptr && takeOne(arguments, setting.option, value))
            given.emplace_back(setting.set, value);
    for (List const &list : lists)
        while (auto const line = arguments.takeValue(list.option))
            given.emplace_back(list.add, *line);
    takeOne(arguments, "-o", output);
    options.view = arguments.take("--view");
    options.replace = arguments.take("-f");
    options.edit = arguments.take("--edit");
    takeFile(options, arguments.rest());
    if (options.edit && options.profile.empty())
        throw UsageError("which profile is to be changed? Its name ends in .ini");

    if (!options.profile.empty()) takeProfile(options);
    for (auto const &[take, text] : given)
        take(options, text);
    if (!output.empty()) options.output = output;
    if (!options.edit) nameResult(options);
    checkOptions(options);
    return options;
}

void checkOptions(Options const &options) {
    if (options.columns.empty()) throw UsageError("which columns has the file? Name them with -c");
    checkSeparator(options.separator);
    checkForms(options);
    checkPlot(options.plot, resultColumns(options));
    checkNamesAndFormulas(options);
}

Formula parseFormula(std::string const &text) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos)
        throw UsageError("an expression has the form NAME = EXPRESSION, not " + quoted(text));
    TQString name = text.substr(0, equals).c_str();
    return {std::string(name.Trim()), text.substr(equals + 1)};
}

std::vector<Column> resultColumns(Options const &options) {
    std::vector<Column> columns = options.columns;
    for (Formula const &formula : options.formulas)
        columns.push_back({formula.name, ColumnKind::Number});
    return columns;
}

char const helpText[] =
    "messwerk checks a file of measurements, adds computed columns and sums it up.\n"
    "\n"
    "messwerk [-s SEPARATOR] [-k HEADER_LINES] -c COLUMN[,COLUMN...]\n"
    "         [-x 'NAME = EXPRESSION']... [-l 'NAME = LOWEST:HIGHEST']...\n"
    "         [-o OUTPUT] [-f] [--view] INPUT\n"
    "messwerk [OPTION...] PROFILE.ini\n"
    "messwerk --edit PROFILE.ini\n"
    "\n"
    "  -s SEPARATOR     the character between fields, or the word tab; otherwise a semicolon\n"
    "  -k HEADER_LINES  how many lines to skip at the start; otherwise 1\n"
    "  -c COLUMN,...    the columns of INPUT from left to right: NAME is a column of numbers,\n"
    "                   NAME:text one of texts, - one that is left out; dates and times are\n"
    "                   NAME:iso     YYYY-MM-DD, or in the library's forms\n"
    "                   NAME:date0   DD.MM.YYYY    NAME:date2   MM.DD.YYYY\n"
    "                   NAME:date1   DD.MM.YY      NAME:date4   MM.DD.YY      19YY\n"
    "                   NAME:date3   DD.MM.YY      NAME:date5   MM.DD.YY      1920 to 2019\n"
    "                   NAME:date6   YYYYMMDD      NAME:date8   YYMMDD        1920 to 2019\n"
    "                   NAME:time0   HH:MM         NAME:time1   HH:MM:SS\n"
    "                   NAME:time2   HH:MM:SS:TTT  NAME:time3   HHMMSSTTT\n"
    "                   NAME:time4   HHMM          any character stands between the numbers\n"
    "  -x NAME = EXPR   a further column, computed for each row; may be given several times\n"
    "  -l NAME = L:H    rows with a number in the column NAME below L or above H are left out;\n"
    "                   one of the two may be missing; may be given several times\n"
    "  -o OUTPUT        the file to write; otherwise INPUT with -result in its name. It is\n"
    "                   replaced only when the run succeeds, and after a question\n"
    "  -f               replaces files that are there without a question; needed where there is\n"
    "                   no terminal to ask at\n"
    "  --view           hands the result to the program that TQVIEW names\n"
    "  --edit           shows the profile in a dialog, to change it; nothing is run\n"
    "  -h               this text\n"
    "\n"
    "Expressions are in reverse Polish notation, words with blanks between them: first the\n"
    "values, then what to do with them. Values are numbers, columns of numbers, dates (as a\n"
    "count of days) and times (in seconds), results of earlier expressions, PI and E (which\n"
    "is 2.71). Operations, b under a on the stack:\n"
    "  + - * /          b + a, b - a, b * a, b / a\n"
    "  POW MOD          b to the power a; the remainder of a divided by b\n"
    "  SQRT SQR ABS FLOOR CEIL EXP LN LOG10\n"
    "  SIN COS TAN ARCSIN ARCCOS ARCTAN    angles in radians\n"
    "  CLX CLEAR SWAP   drop a; empty the stack; change a and b\n"
    "  STO_0 RCL_0      keep a in a register; get it back; registers 0 to 3, 0 at first, last\n"
    "                   from row to row\n"
    "  for instance     kelvin = celsius 273.15 +\n"
    "\n"
    "A profile says the same in a file: Separator, HeaderLines, Columns and File in [Input], a\n"
    "line NAME=EXPRESSION for each in [Calculations], NAME=LOWEST:HIGHEST in [Limits], File in\n"
    "[Output]. Its files are searched in its folder. The run is put down in [LastRun]. Options\n"
    "count before the profile. It alone can name another form of the input or the output: Form\n"
    "is separated, text (blanks between the fields) or columns (fields of fixed width, which\n"
    "Layout lists: A6 X2 I5 F10.3 is a text, two blanks, a whole number, three decimals), or a\n"
    "picture of the result in [Plot]: its File, a BMP file, its Title, the column Across, and the\n"
    "Columns that are drawn over it.\n"
    "\n"
    "With the environment variable TQTRACE, or TRACE in [TQ] of the file that TQINI names, the\n"
    "program writes messwerk.log: 0 what was done, 1 the rows refused.\n"
    "\n"
    "Numbers are read and written with the decimal character of the environment's locale, in\n"
    "expressions as well, and written with six decimals. Rows with a fault are left out and\n"
    "reported. Exit code: 0 done, 1 failed, 2 wrong command line.\n";

}  // namespace messwerk
