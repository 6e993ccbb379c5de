#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// What each room may include, beside itself and the standard library: rooms, or single headers.
std::map<std::string, std::vector<std::string>> const allowed = {
    {"tqplatform/runtime", {}},
    {"tqplatform/streams", {"tqplatform/runtime"}},
    {"tqplatform/kernel", {"tqplatform/runtime"}},
    {"tqplatform/framework", {"tqplatform/runtime", "tqplatform/kernel"}},
    {"tqplatform/graphics", {"tqplatform/runtime", "tqplatform/kernel", "tqplatform/framework"}},
    {"tqplatform/desktop",
     {"tqplatform/runtime", "tqplatform/kernel", "tqplatform/framework", "tqplatform/graphics"}},
    {"tqlib/foundation", {"tqplatform"}},
    {"tqlib/datetime", {"tqplatform", "tqlib/foundation"}},
    {"tqlib/records", {"tqplatform", "tqlib/foundation"}},
    {"tqlib/calc", {"tqplatform", "tqlib/foundation"}},
    {"tqlib/bitmap", {"tqplatform", "tqlib/foundation"}},
    {"tqlib/config", {"tqplatform", "tqlib/foundation"}},
    {"tqlib/files",
     {"tqplatform", "tqlib/foundation", "tqlib/datetime", "tqlib/config/getLibrarySetting.h"}},
    {"tqlib/dialogs", {"tqplatform", "tqlib/foundation", "tqlib/calc/TQHpList.h"}},
};

// Exceptions for one file.
std::map<std::string, std::vector<std::string>> const allowedForFile = {
    {"tqlib/tqlib.h", {"tqlib"}},
    {"tqlib/config/TQConfigurationChanges.cpp", {"tqlib/files/TQFilename.h"}},
};

bool permits(std::vector<std::string> const &places, std::string const &header) {
    return std::ranges::any_of(places, [&](std::string const &place) {
        return header == place || header.starts_with(place + "/");
    });
}

bool mayInclude(std::string const &file, std::string const &header) {
    std::string const room = fs::path(file).parent_path().string();
    auto const rules = allowed.find(room);
    auto const exceptions = allowedForFile.find(file);
    return header.starts_with(room + "/") ||
           (rules != allowed.end() && permits(rules->second, header)) ||
           (exceptions != allowedForFile.end() && permits(exceptions->second, header));
}

TEST(Includes, StayWithinTheRoomsThatTheFileMayKnow) {
    std::regex const quoted(R"(^\s*#\s*include\s*["<]([^">]*/[^">]*)[">].*)");
    int seen = 0;
    for (auto const &entry : fs::recursive_directory_iterator(SOURCE_FOLDER)) {
        std::string const extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        std::string const file = fs::relative(entry.path(), SOURCE_FOLDER).generic_string();
        std::ifstream source(entry.path());
        std::smatch match;
        for (std::string line; std::getline(source, line);) {
            if (!std::regex_match(line, match, quoted) || match[1].str().starts_with("sys/"))
                continue;
            ++seen;
            EXPECT_TRUE(mayInclude(file, match[1])) << file << " includes " << match[1];
        }
    }
    EXPECT_GT(seen, 50) << "the includes weren't found";
}

TEST(Includes, TheTableForbids) {
    EXPECT_FALSE(mayInclude("tqplatform/streams/ios.h", "tqplatform/framework/CFile.h"));
    EXPECT_FALSE(mayInclude("tqlib/records/TQCSVInput.h", "tqlib/calc/TQHpList.h"));
    EXPECT_FALSE(mayInclude("tqplatform/runtime/HostPath.h", "tqlib/foundation/TQString.h"));
}

}  // namespace
