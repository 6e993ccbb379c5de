#include "Paths.h"

#include <sys/stat.h>
#include <unistd.h>

#include "tqlib/files/filesystem.h"

namespace messwerk {
namespace {

bool isSame(struct stat const &one, struct stat const &other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// The one name of a file that isn't there yet.
std::filesystem::path placeOf(std::string const &path) {
    std::error_code error;
    return weakly_canonical(std::filesystem::absolute(path, error), error);
}

}  // namespace

std::string libraryPath(std::string const &path) {
    return path.find('/') == std::string::npos ? "./" + path : path;
}

// A backslash or blanks at the ends, which the host allows in names, mean something else to the
// library.
std::optional<std::string> resultName(std::string const &input) {
    TQFilename name = fromHostPath(input);
    bool const isOther = access(input.c_str(), F_OK) == 0 && !isOrdinaryFile(input);
    if (isOther || hostPath(name) != input || name.isValidWithWildcards() == 0) return std::nullopt;
    name.newName(name.GetFilename() + "-result");
    return hostPath(name).string();
}

bool isSameFile(std::string const &path, std::string const &other) {
    struct stat one {
    }, two{};
    bool const isThere = stat(path.c_str(), &one) == 0;
    if (isThere != (stat(other.c_str(), &two) == 0)) return false;
    return isThere ? S_ISREG(one.st_mode) && isSame(one, two) : placeOf(path) == placeOf(other);
}

bool isDescriptor(std::string const &path, int descriptor) {
    struct stat one {
    }, two{};
    return stat(path.c_str(), &one) == 0 && fstat(descriptor, &two) == 0 && isSame(one, two);
}

bool isOrdinaryFile(std::string const &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace messwerk
