#include "tqlib/files/TQFilename.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Job.h"
#include "Random.h"

namespace {

constexpr int pathCount = 100000;

std::vector<std::string> makeNames() {
    Random random;
    std::vector<std::string> names;
    for (int i = 0; i < pathCount; ++i) {
        std::string name;
        for (int depth = random.between(1, 5); depth > 0; --depth)
            name += '\\' + random.text(3, 12);
        names.push_back("C:" + name + '.' + random.text(1, 4));
    }
    return names;
}

std::vector<std::string> const &names() {
    static std::vector<std::string> const paths = makeNames();
    return paths;
}

/// The peer's form of a path or of its folder.
std::string hostForm(std::string path) {
    std::ranges::replace(path, '\\', '/');
    if (path.ends_with('/')) path.pop_back();
    return path;
}

std::vector<std::string> makeHostNames() {
    std::vector<std::string> paths;
    for (std::string const &name : names())
        paths.push_back(hostForm(name));
    return paths;
}

// From the text of a path to its parts.

constexpr auto splitWithFilesystem = [](auto take) {
    static std::vector<std::string> const hostNames = makeHostNames();
    for (std::string const &name : hostNames) {
        std::filesystem::path const path = name;
        take(path.parent_path().native());
        take(path.filename().native());
    }
};

constexpr auto splitWithTqlib = [](auto take) {
    for (std::string const &name : names()) {
        TQFilename path(name.c_str());
        take(path.GetPath());
        take(path.GetName());
    }
};

constexpr auto samePart = [](std::string const &own, std::string const &peers) {
    return hostForm(own) == peers;
};

auto const splitting = Job<std::string>("path parts")
                           .peer("filesystem", splitWithFilesystem)
                           .contender("tqlib", splitWithTqlib, samePart);

}  // namespace
