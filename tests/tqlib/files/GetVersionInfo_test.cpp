#include "tqlib/files/GetVersionInfo.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "../../../fuzz/support/ScratchFile.h"
#include "../../../fuzz/support/VersionModel.h"
#include "support/Files.h"
#include "support/ProgramFile.h"
#include "tqplatform/kernel/Version.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using namespace std::string_literals;
using tqplatform::systemCalls;

double versionOf(std::string const &path) {
    TQFilename file(path.c_str());
    double const version = GetVersionInfo(file);
    EXPECT_EQ(file.text(), path);
    return version;
}

double versionIn(std::string const &content) {
    static ScratchFile file;
    file.write(content);
    return versionOf(file.path());
}

constexpr Version sample = {2, 5, 3, 7};
constexpr double sampleNumber = 2.537;

std::string const files[] = {windowsFile(sample, false), windowsFile(sample, true),
                             elfFile(sample, false), elfFile(sample, true)};

TEST(GetVersionInfo, WeighsTheFourNumbers) {
    struct {
        Version version;
        double number;
    } const rows[] = {
        {{1, 0, 0, 1}, 1.001}, {{2, 5, 3, 7}, 2.537},       {{1, 12, 0, 0}, 2.2},
        {{2, 2, 0, 0}, 2.2},   {{65535, 0, 0, 0}, 65535.0}, {{0, 65535, 65535, 65535}, 7274.385},
    };
    for (auto const &[version, number] : rows)
        for (bool const wide : {false, true}) {
            EXPECT_DOUBLE_EQ(versionIn(windowsFile(version, wide)), number);
            EXPECT_DOUBLE_EQ(versionIn(elfFile(version, wide) + "more"), number);
        }
}

TEST(GetVersionInfo, KnowsItsOwnLibrary) {
    Dl_info library;
    ASSERT_NE(dladdr(reinterpret_cast<void *>(&GetVersionInfo), &library), 0);
    std::string const path = std::filesystem::canonical(library.dli_fname);
    EXPECT_DOUBLE_EQ(versionOf(tqplatform::fromHostPath(path)), 1.001);
}

TEST(GetVersionInfo, IsZeroWithoutAVersion) {
    TemporaryFolder const folder;
    std::string const pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (auto const &path :
         {folder.file("missing"), folder.file(""), pipe, "D:\\a"s, folder.write("text", "MZ")})
        EXPECT_EQ(versionOf(path), 0.0) << path;

    std::string const file = folder.write("a", files[0]);
    std::string const longest = std::string(255 - file.size(), '/') + file;
    EXPECT_DOUBLE_EQ(versionOf(longest), sampleNumber);
    EXPECT_EQ(versionOf('/' + longest), 0.0);
}

TEST(GetVersionInfo, IsZeroForEveryFileCutShort) {
    for (std::string const &file : files)
        for (std::size_t size = 0; size < file.size(); ++size)
            EXPECT_EQ(versionIn(file.substr(0, size)), 0.0) << size << " of " << file.size();
}

// Other bytes everywhere, and words that lead back, out of the file or nowhere.
TEST(GetVersionInfo, IsThatOfTheModelInEveryDamagedFile) {
    std::string const damages[] = {
        "\0"s,      "\1"s,         "\2"s,           "\x7F"s,         "\x80"s,
        "\xFF"s,    "\0\0\0\0"s,   "\xFF\xFF\0\0"s, "\0\0\xFF\xFF"s, "\xFF\xFF\xFF\x7F"s,
        "\0 \0\0"s, "\0\0\0\x80"s, " \0\0\x80"s,    "8\0\0\x80"s,    "\xFF\xFF\xFF\xFF"s};
    std::set<double> seen;
    for (std::string const &file : files)
        for (std::size_t at = 0; at < file.size(); ++at)
            for (std::string const &damage : damages) {
                std::string damaged = file;
                double const number = versionIn(damaged.replace(at, damage.size(), damage));
                ASSERT_EQ(number, VersionModel(damaged).number()) << "at " << at;
                seen.insert(number);
            }
    EXPECT_GT(seen.size(), 10u) << "the damage never met the version";
}

TEST(GetVersionInfo, ReadsNoTableBeyond64KiB) {
    for (unsigned const entries : {8192, 8193}) {
        std::string const file = windowsFile(sample, true);
        EXPECT_DOUBLE_EQ(versionIn(withWords(file, {{408 + 12, entries << 16}, {99999, 0}})),
                         entries == 8192 ? sampleNumber : 0.0);
    }
}

tqplatform::SystemCalls const realCalls = systemCalls;
int callsLeft;

template <auto member, typename Result, typename... Arguments>
void makeFaulty(Result (*&call)(Arguments...)) {
    call = [](Arguments... arguments) {
        return callsLeft-- == 0 ? Result{-1} : (realCalls.*member)(arguments...);
    };
}

TEST(GetVersionInfo, IsZeroIfACallFails) {
    makeFaulty<&tqplatform::SystemCalls::open>(systemCalls.open);
    makeFaulty<&tqplatform::SystemCalls::status>(systemCalls.status);
    makeFaulty<&tqplatform::SystemCalls::readAt>(systemCalls.readAt);
    for (std::string const &file : files) {
        int calls = 0;
        for (callsLeft = 0; versionIn(file) == 0.0; callsLeft = ++calls)
            ASSERT_LT(callsLeft, 0);
        EXPECT_EQ(callsLeft, 0) << "a call failed and wasn't noticed";
    }
    systemCalls = realCalls;
}

TEST(GetVersionInfo, PutsTogetherWhatIsReadInPieces) {
    systemCalls.readAt = [](int file, void *target, std::size_t, off_t offset) {
        return ::pread(file, target, 1, offset);
    };
    for (std::string const &file : files)
        EXPECT_DOUBLE_EQ(versionIn(file), sampleNumber);
    systemCalls = realCalls;
}

TEST(Version, TheCallsKeepToTheirRoom) {
    ScratchFile file;
    file.write(files[0]);
    std::string block(93, 'x');
    EXPECT_EQ(GetFileVersionInfoSizeA(nullptr, nullptr), 0u);
    EXPECT_EQ(GetFileVersionInfoSizeA(file.path(), nullptr), 92u);
    EXPECT_EQ(GetFileVersionInfoA(file.path(), 0, 91, block.data()), 0);
    EXPECT_EQ(block, std::string(93, 'x'));
    EXPECT_EQ(GetFileVersionInfoA(file.path(), 0, 93, block.data()), 1);
    EXPECT_EQ(block, versionBlock(sample) + 'x');

    void *value = nullptr;
    unsigned int length = 0;
    EXPECT_EQ(VerQueryValueA(block.data(), "\\VarFileInfo", &value, &length), 0);
    EXPECT_EQ(VerQueryValueA("\1", "\\", &value, &length), 0);
    EXPECT_EQ(VerQueryValueA(block.data(), "\\", &value, &length), 1);
    EXPECT_EQ(value, block.data() + 40);
    EXPECT_EQ(length, 52u);
}

}  // namespace
