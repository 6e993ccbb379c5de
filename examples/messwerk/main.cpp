// messwerk: reads a file of measurements, checks every number, adds computed columns,
// writes the result and sums it up. It shows an application on the library's record classes and
// its calculator, and what such an application has to see to itself.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "Errors.h"
#include "Expressions.h"
#include "Limits.h"
#include "Options.h"
#include "Overwrite.h"
#include "Paths.h"
#include "Plot.h"
#include "Profile.h"
#include "ProfileDialog.h"
#include "Progress.h"
#include "ResultFile.h"
#include "RowReader.h"
#include "Summary.h"
#include "tqplatform/runtime/HostPath.h"
#include "Words.h"

namespace messwerk {
namespace {

enum ExitCode { done = 0, failed = 1, wrongUsage = 2 };

// The library never sets the locale; its conversions go by the one in force.
void takeLocale() {
    if (std::setlocale(LC_NUMERIC, "") != nullptr) return;
    std::fputs("messwerk: the locale of the environment isn't installed; numbers have a point\n",
               stderr);
}

// A file would get the number of a standard stream that is closed, and what is written there.
void holdStandardStreams() {
    for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDONLY);
}

/// A setting of the library; nothing if there is none.
std::optional<std::string> setting(char const *name) {
    std::unique_ptr<char, decltype(&std::free)> const text(getLibrarySetting(name), &std::free);
    return text == nullptr ? std::nullopt : std::optional<std::string>(text.get());
}

/// Where the log goes, which is written only if the settings name a level; empty if it isn't.
std::string logPath() {
    if (!setting("TRACE")) return "";
    return tqplatform::toHostPath(setting("DIR").value_or("") + "messwerk.log");
}

// A file that is written stands for itself alone: it would replace what another one holds.
void checkPlaces(Options const &options) {
    struct Place {
        char const *what;
        std::string path;  ///< empty if there is no such file
    };
    constexpr std::size_t firstWritten = 4;
    Place const places[] = {{"the input", options.input},
                            {"the profile", options.profile},
                            {"the messages of this run", "/dev/stdout"},
                            {"the messages of this run", "/dev/stderr"},
                            {"the result", options.output},
                            {"the picture", options.plot.file},
                            {"the log", logPath()}};
    for (std::size_t i = firstWritten; i < std::size(places); ++i)
        for (std::size_t other = 0; other < i; ++other)
            if (!places[i].path.empty() && isSameFile(places[i].path, places[other].path))
                throw RunError(std::string(places[i].what) + " and " + places[other].what +
                               " can't be one file, " + quotedPath(places[i].path));
}

// Where the rows go to standard output the summary leaves it to them.
std::FILE *summaryStream(Options const &options) {
    return isDescriptor(options.output, STDOUT_FILENO) ? stderr : stdout;
}

void print(Summary const &summary, std::FILE *out, long blankLines) {
    summary.print(out, blankLines);
    if (std::fflush(out) != 0 || std::ferror(out) != 0)
        throw systemError("can't write the summary", errno);
}

// Reads all rows and writes the good ones.
void processRows(Options const &options, RowReader &reader, Row &row, Summary &summary, Plot &plot,
                 TQLogfile &log) {
    Expressions expressions(options, row);
    Limits const limits(options.limits, resultColumns(options));
    std::optional<ResultFile> result;
    if (!options.output.empty()) result.emplace(options);
    Progress progress;
    while (reader.fetch()) {
        std::optional<std::string> refusal = reader.readRow();
        if (!refusal) refusal = expressions.evaluate();
        if (!refusal) refusal = limits.check(row);
        if (!refusal && result) refusal = result->fault(row);
        if (refusal) {
            expressions.refuse();
            summary.refuse(reader.lineNumber(), *refusal);
            log.printf(1, "line %ld: %s", reader.lineNumber(), *refusal);
        } else {
            expressions.accept();
            if (result) result->write(row);
            summary.add(row);
            plot.add(row);
        }
        if (progress.isDue()) progress.show(summary.rows(), reader.partRead());
    }
    if (result) result->finish();
}

void viewResult(std::string const &output) {
    std::string const path = libraryPath(output);
    // Quotes keep a path with blanks one word, unless its last character takes one for itself.
    if (path.find('"') != std::string::npos || path.ends_with('\\'))
        throw RunError("no program can be given the name " + quotedPath(output));
    switch (TQFilename(('"' + path + '"').c_str()).view()) {
        case 0:
            return;
        case 1:
            throw RunError("no program shows the result: name one in TQVIEW");
        default:
            throw RunError("the program that TQVIEW names can't be started");
    }
}

void run(Options options) {
    checkPlaces(options);
    askToReplace(options);
    TQLogfile log(logPath().empty() ? nullptr : "messwerk");
    log.printf(0, "reading %s", options.input);
    Row row(resultColumns(options).size());
    RowReader reader(options, row);
    Summary summary(options);
    Plot plot(options);
    processRows(options, reader, row, summary, plot, log);
    log.printf(0, "%s written: %ld rows read, %ld refused",
               options.output.empty() ? "nothing" : options.output, summary.rows(),
               summary.refused());
    print(summary, summaryStream(options), reader.blankLines());
    plot.finish();
    if (!options.profile.empty())
        Profile(options.profile).rememberRun(summary.rows(), summary.refused());
    if (options.view && !options.output.empty()) viewResult(options.output);
}

void printHelp() {
    std::fputs(helpText, stdout);
    if (std::fflush(stdout) != 0) throw systemError("can't write the help", errno);
}

ExitCode report(std::exception const &error, ExitCode code) {
    std::fprintf(stderr, "messwerk: %s\n", error.what());
    if (code == wrongUsage) std::fputs("messwerk -h tells how it is used\n", stderr);
    return code;
}

ExitCode start(int argc, char **argv) {
    try {
        holdStandardStreams();
        takeLocale();
        Options const options = readOptions(argc, argv);
        if (options.help)
            printHelp();
        else if (options.edit)
            editProfile(options);
        else
            run(options);
        return done;
    } catch (UsageError const &error) {
        return report(error, wrongUsage);
    } catch (std::exception const &error) {
        return report(error, failed);
    }
}

}  // namespace
}  // namespace messwerk

int main(int argc, char **argv) {
    return messwerk::start(argc, argv);
}
