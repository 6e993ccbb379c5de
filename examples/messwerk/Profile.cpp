#include "Profile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>

#include "Errors.h"
#include "Paths.h"
#include "tqlib/files/filesystem.h"
#include "Words.h"

namespace messwerk {
namespace {

constexpr char lastRun[] = "LastRun";
constexpr std::size_t longestLine = 1023;  // that the library's settings read in one piece

// The path, if it leads to a file: the library would make a new one.
std::string existing(std::string const &path) {
    if (access(path.c_str(), R_OK) != 0)
        throw systemError("can't read " + messwerk::quotedPath(path), errno);
    return libraryPath(path);
}

// The library leaves the carriage return of a file from elsewhere on its lines.
std::string withoutReturn(std::string line) {
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

// The host's path of a file that a profile names.
std::filesystem::path pathOf(std::string const &name) {
    std::filesystem::path path = hostPath(TQFilename(name.c_str()));
    if (path.empty() && !name.empty())
        throw UsageError(messwerk::quotedPath(name) + " leads to no file of this machine");
    return path;
}

TQString now() {
    std::time_t const moment = std::time(nullptr);
    return TQDateTime(std::localtime(&moment));
}

}  // namespace

bool isProfile(std::string const &path) {
    return toCapitals(std::filesystem::path(path).extension().native()) == ".INI";
}

Profile::Profile(std::string const &path) : path_(path), file_(existing(path).c_str()) {
    if (*file_.fileName() == '\0')
        throw systemError("can't open " + messwerk::quotedPath(path), errno);
}

// The library would take the rest of a longer line for a line of its own.
void Profile::check() const {
    std::ifstream file(path_);
    std::string line;
    for (long number = 1; std::getline(file, line); ++number)
        if (line.size() > longestLine)
            throw UsageError("line " + std::to_string(number) + " has more than " +
                             std::to_string(longestLine) + " characters");
}

void Profile::checkRoom(std::string const &name, std::string const &value) {
    if ((name + '=' + value + '\n').size() > longestLine)
        throw UsageError("the line of " + messwerk::quoted(name) + " in the profile is too long");
}

void Profile::checkFile(std::string const &name) {
    checkRoom("File", name);
    pathOf(name);
}

std::optional<std::string> Profile::value(char const *category, char const *name) {
    std::unique_ptr<char, decltype(&std::free)> const text(file_.getValue(category, name),
                                                           &std::free);
    if (text == nullptr) return std::nullopt;
    return withoutReturn(text.get());
}

std::vector<std::string> Profile::lines(char const *category) {
    std::vector<std::string> values;
    if (file_.searchCategorie(category) < 0) return values;
    char line[longestLine + 1];
    while (file_.stream()->getline(line, sizeof line) && *line != '[')
        if (*line != '#' && std::strchr(line, '=') != nullptr)
            values.push_back(withoutReturn(line));
    return values;
}

std::vector<Entry> Profile::entries(char const *category) {
    std::vector<Entry> result;
    for (std::string const &line : lines(category)) {
        std::size_t const name = line.find_first_not_of('=');
        std::size_t const equals = line.find('=', name);
        if (equals != std::string::npos)
            result.push_back({line.substr(name, equals - name), line.substr(equals + 1)});
    }
    return result;
}

void Profile::set(char const *category, std::string const &name, std::string const &value) {
    checkRoom(name, value);
    if (!put(category, name, value))
        throw RunError("can't write all changes into " + messwerk::quotedPath(path_));
}

// The library changes a value in one step, so the old one stays if that fails. With several of that
// name it would take away the first and add nothing.
bool Profile::put(char const *category, std::string const &name, std::string const &value) {
    auto count = std::ranges::count(entries(category), name, &Entry::name);
    for (; count > 1; --count)
        if (file_.deleteValue(category, name.c_str()) != 0) return false;
    if (value.empty()) return file_.deleteValue(category, name.c_str()) == 0;
    file_.newCategorie(category);
    return file_.setValue(category, name.c_str(), value.c_str()) == 0;
}

std::string Profile::file(char const *category) {
    std::string const name = value(category, "File").value_or("");
    if (name.empty()) return "";
    return (std::filesystem::path(path_).parent_path() / pathOf(name)).string();
}

// A value that is set goes to the head of its category: the last one is the first.
void Profile::rememberRun(long rows, long refused) {
    bool const written = put(lastRun, "Version", MESSWERK_VERSION) &&
                         put(lastRun, "Refused", std::to_string(refused)) &&
                         put(lastRun, "Rows", std::to_string(rows)) &&
                         put(lastRun, "Time", std::string(now()));
    if (!written)
        throw RunError("the result is written, but the last run not into " +
                       messwerk::quotedPath(path_));
}

}  // namespace messwerk
