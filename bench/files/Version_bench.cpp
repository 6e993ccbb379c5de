#include <cstdint>
#include <fstream>
#include <string>

#include "../../tests/support/ProgramFile.h"
#include "Job.h"
#include "Random.h"
#include "TemporaryFile.h"
#include "tqlib/files/GetVersionInfo.h"

namespace {

constexpr std::uint32_t fileSize = 1 << 20;

// A program of random bytes, with its resources at the end, where they stand in most programs.
std::string makeFile() {
    constexpr std::uint32_t resources = fileSize - 188, begin = 512;
    std::string content = windowsFile({2, 5, 3, 7}, false, resources);
    Random random;
    for (std::size_t i = begin; i < resources; ++i)
        content[i] = static_cast<char>(random.between(0, 255));
    std::string path = temporaryFile("program.exe");
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string const &file() {
    static std::string const path = makeFile();
    return path;
}

// From the path of a program of 1 MiB to its version.

constexpr auto searchWholeFile = [](auto take) {
    std::string content(fileSize, '\0');
    std::ifstream(file(), std::ios::binary).read(content.data(), fileSize);
    std::size_t const record = content.find("\xBD\x04\xEF\xFE");
    auto const part = [&](std::size_t offset) {
        auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(content.at(i)); };
        return byte(record + offset) | byte(record + offset + 1) << 8;
    };
    take(part(10) + part(8) * 0.1 + part(14) * 0.01 + part(12) * 0.001);
};

constexpr auto readWithTqlib = [](auto take) {
    TQFilename path(file().c_str());
    take(GetVersionInfo(path));
};

auto const reading = Job<double>("version info")
                         .peer("whole-file read", searchWholeFile)
                         .contender("tqlib", readWithTqlib);

}  // namespace
