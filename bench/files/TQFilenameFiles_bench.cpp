#include <filesystem>
#include <fstream>
#include <string>

#include "Job.h"
#include "TemporaryFile.h"
#include "tqlib/files/TQFilename.h"

namespace {

constexpr std::size_t size = 100'000'000;

std::string makeFile() {
    std::string path = temporaryFile("source");
    std::ofstream(path) << std::string(size, 'x');
    return path;
}

std::string const &source() {
    static std::string const path = makeFile();
    return path;
}

// The copy is a new file each time.

constexpr auto copyWithFilesystem = [](auto take) {
    static std::string const target = temporaryFile("peer");
    std::filesystem::remove(target);
    std::filesystem::copy_file(source(), target);
    take(std::filesystem::file_size(target));
};

constexpr auto copyWithTqlib = [](auto take) {
    static TQFilename const target(temporaryFile("own").c_str()), own(source().c_str());
    TQFilename(target).remove();
    own.copy(target);
    take(target.fileSize());
};

auto const copying = Job<std::size_t>("copy")
                         .peer("filesystem", copyWithFilesystem)
                         .contender("tqlib", copyWithTqlib);

}  // namespace
