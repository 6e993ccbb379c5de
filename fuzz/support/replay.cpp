// The program of a fuzz target without a fuzzer: it feeds the target the files of the folders that
// are its arguments, in order of their names. It writes each name first, so that the last one that
// is written is the one that a check has ended the run at.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

std::string contentOf(std::filesystem::path const &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int count, char **arguments) {
    std::set<std::filesystem::path> files;
    for (int i = 1; i < count; ++i)
        for (auto const &entry : std::filesystem::directory_iterator(arguments[i]))
            files.insert(entry.path());
    for (auto const &file : files) {
        std::puts(file.c_str());
        std::fflush(stdout);
        std::string const content = contentOf(file);
        LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const *>(content.data()),
                               content.size());
    }
    return files.empty() ? 1 : 0;
}
