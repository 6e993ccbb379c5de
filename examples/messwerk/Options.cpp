#include "Options.h"

#include <getopt.h>

#include <cctype>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>

#include "Errors.h"
#include "FormulaCheck.h"
#include "Names.h"
#include "Paths.h"
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

Formula parseFormula(std::string const &text) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos)
        throw UsageError("an expression has the form NAME = EXPRESSION, not " + quoted(text));
    TQString name = text.substr(0, equals).c_str();
    return {std::string(name.Trim()), text.substr(equals + 1)};
}

/// The option that getopt_long stumbled over: a letter, or a long name.
std::string strangeOption(char *const *argv) {
    if (optopt == 0) return quoted(argv[optind - 1]);
    return quoted(std::string("-") + static_cast<char>(optopt));
}

/// Takes up the option `letter`, with its value in optarg.
void takeOption(Options &options, int letter, char *const *argv) {
    switch (letter) {
        case 's':
            options.separator = parseSeparator(optarg);
            break;
        case 'k':
            options.headerLines = parseHeaderLines(optarg);
            break;
        case 'c':
            options.columns = parseColumns(optarg);
            break;
        case 'x':
            options.formulas.push_back(parseFormula(optarg));
            break;
        case 'o':
            options.output = optarg;
            break;
        case 'h':
            options.help = true;
            break;
        case ':':
            throw UsageError("the option " + strangeOption(argv) + " needs a value");
        default:
            throw UsageError("there is no option " + strangeOption(argv));
    }
}

void takeInput(Options &options, char **first, char **end) {
    if (first == end) throw UsageError("which file is to be read?");
    if (end - first > 1)
        throw UsageError("there is one file to read, not " + quoted(first[0]) + " and " +
                         quoted(first[1]));
    options.input = *first;
}

void nameResult(Options &options) {
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
}

void check(Options const &options) {
    if (options.input.empty()) throw UsageError("the name of the file to read is empty");
    if (options.columns.empty()) throw UsageError("which columns has the file? Name them with -c");
    checkSeparator(options.separator);
    checkNamesAndFormulas(options);
}

}  // namespace

Options readOptions(int argc, char **argv) {
    option const longNames[] = {{"help", no_argument, nullptr, 'h'}, {}};
    Options options;
    opterr = 0;
    for (int letter = 0; letter != -1;) {
        letter = getopt_long(argc, argv, ":s:k:c:x:o:h", longNames, nullptr);
        if (letter != -1) takeOption(options, letter, argv);
        if (options.help) return options;
    }
    takeInput(options, argv + optind, argv + argc);
    nameResult(options);
    check(options);
    return options;
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
    "         [-x 'NAME = EXPRESSION']... [-o OUTPUT] INPUT\n"
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
    "  -o OUTPUT        the file to write; otherwise INPUT with -result in its name. It is\n"
    "                   replaced only when the run succeeds\n"
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
    "Numbers are read and written with the decimal character of the environment's locale, in\n"
    "expressions as well, and written with six decimals. Rows with a fault are left out and\n"
    "reported. Exit code: 0 done, 1 failed, 2 wrong command line.\n";

}  // namespace messwerk
