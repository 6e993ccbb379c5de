#include "tqlib/files/TQFilename.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tqlib/files/filesystem.h"

namespace {

std::string whole(TQFilename const &file) {
    return std::string(file.text());
}

/// Ends after the objects that the library makes at their first use, and still uses one.
struct Late {
    ~Late() {
        TQFilename file("C:\\a\\path\\that\\needs\\memory\\file.txt");
        if (file.GetPath() != "C:\\a\\path\\that\\needs\\memory\\") std::abort();
    }
} const late;

struct Parts {
    char const *path, *drive, *directory, *filename, *extension;
};

constexpr Parts paths[] = {
    {"C:\\dir\\file.txt", "C:", "\\dir\\", "file", ".txt"},
    {"C:\\dir\\sub\\file.tar.gz", "C:", "\\dir\\sub\\", "file.tar", ".gz"},
    {"file", "", "", "file", ""},
    {"dir\\", "", "dir\\", "", ""},
    {"dir.d\\file", "", "dir.d\\", "file", ""},
    {".profile", "", "", "", ".profile"},
    {"a.b.c", "", "", "a.b", ".c"},
    {"file.", "", "", "file", "."},
    {"C:file.txt", "C:", "", "file", ".txt"},
    {"C:", "C:", "", "", ""},
    {"\\\\srv\\share\\f.txt", "", "\\\\srv\\share\\", "f", ".txt"},
    {"a/b.txt", "", "", "a/b", ".txt"},
    {"1:x", "1:", "", "x", ""},
    {"", "", "", "", ""},
    {"x.:y", "", "", "x", ".:y"},
};

TEST(TQFilename, Parts) {
    for (Parts const &row : paths) {
        TQFilename file(row.path);
        EXPECT_EQ(file.GetDrive(), row.drive);
        EXPECT_EQ(file.GetDirectory(), row.directory);
        EXPECT_EQ(file.GetFilename(), row.filename);
        EXPECT_EQ(file.GetExtension(), row.extension);
        EXPECT_EQ(file.GetPath(), (std::string(row.drive) + row.directory).c_str());
        EXPECT_EQ(file.GetName(), (std::string(row.filename) + row.extension).c_str());
    }
}

TEST(TQFilename, ReplacedPartsMakeANewPath) {
    for (Parts const &row : paths)
        for (std::string const part : {"", "x", " y ", "D:", "\\z\\", ".e", "a b.c"}) {
            std::string const drive = row.drive, directory = row.directory, name = row.filename,
                              extension = row.extension;
            auto const expect = [&](auto change, std::string const &path) {
                TQFilename file(row.path);
                change(file);
                EXPECT_EQ(whole(file), whole(TQFilename(path.c_str()))) << row.path << '+' << part;
                EXPECT_EQ(whole(file), std::string(file.GetPath()) + std::string(file.GetName()));
            };
            TQString const p = part.c_str();
            std::string const dot = part.starts_with('.') ? "" : ".";
            expect([&](TQFilename &f) { f.newDrive(p); }, part + directory + name + extension);
            expect([&](TQFilename &f) { f.newPath(p); }, part + name + extension);
            expect([&](TQFilename &f) { f.newName(p); }, drive + directory + part + extension);
            expect([&](TQFilename &f) { f.newFilename(p); }, drive + directory + part);
            expect([&](TQFilename &f) { f.newExtension(p); },
                   drive + directory + name + dot + part);
            expect([&](TQFilename &f) { f.removeExtension(); }, drive + directory + name);
            expect([&](TQFilename &f) { f.removeFilename(); }, drive + directory);
        }
}

TEST(TQFilename, SetPutsInWhatIsMissing) {
    char const *const rows[][5] = {
        {"", "", "", "", ""},
        {"C:", "", "a", ".txt", "C:\\a.txt"},
        {"C:", "", "", "", "C:\\"},
        {"", "dir", "a", "txt", "dir\\a.txt"},
        {"", "dir\\", "a", "", "dir\\a"},
        {"", "", "a", "txt", "a.txt"},
        {"", "", "a.", "txt", "a.txt"},
        {"", "", "", "txt", "txt"},
        {"C:", "\\x", "", "txt", "C:\\x\\.txt"},
        {" ", "", "a", "", "\\a"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(whole(TQFilename(TQString(row[0]), TQString(row[1]), TQString(row[2]),
                                   TQString(row[3]))),
                  row[4]);
}

TEST(TQFilename, ArgumentsMayBePartsOfTheObject) {
    TQFilename file("C:\\dir\\f.txt");
    file.newDrive(file.GetExtension());
    EXPECT_EQ(whole(file), ".txt\\dir\\f.txt");
    file = "C:\\dir\\f.txt";
    file.newName(file);
    EXPECT_EQ(whole(file), "C:\\dir\\C:\\dir\\f.txt.txt");
    file = "C:\\dir\\f.txt";
    file.set("D:", file.GetDrive(), file, file.GetFilename());
    EXPECT_EQ(whole(file), "D:\\") << "parts of the object count as empty";
}

TEST(TQFilename, Validity) {
    struct {
        char const *path;
        int valid, withWildcards;
    } const rows[] = {
        {"dir\\", 0, 0},    {".profile", 0, 0},   {"", 0, 0},      {"*.txt", 0, 1},
        {"di?\\f.x", 0, 1}, {"f[1].txt", 0, 1},   {"f.t]t", 0, 1}, {"*:\\f.txt", 1, 1},
        {"a", 1, 1},        {"C:\\a\\b.c", 1, 1},
    };
    for (auto const &row : rows) {
        TQFilename file(row.path);
        EXPECT_EQ(file.isValid(), row.valid) << row.path;
        EXPECT_EQ(file.isValidWithWildcards(), row.withWildcards) << row.path;
    }
}

TEST(TQFilename, ComparesWithoutRegardToCapitals) {
    TQFilename const file("C:\\\xC4.TXT");
    EXPECT_TRUE(file == TQFilename("c:\\\xE4.txt"));
    EXPECT_TRUE(file == " c:\\\xE4.txt ");
    EXPECT_TRUE(file == TQString("c:\\\xE4.txt"));
    EXPECT_TRUE("c:\\\xE4.txt" == file && TQString("c:\\\xE4.txt") == file && "a" != file);
    EXPECT_TRUE(file != "c:/\xE4.txt");
    EXPECT_TRUE(TQFilename("a\\..\\b") != TQFilename("b"));
}

TEST(TQFilename, ConstructionTrimsAndCopiesTheWhole) {
    EXPECT_EQ(whole(TQFilename(" \ta.txt\r\n ")), "a.txt");
    EXPECT_EQ(whole(TQFilename(static_cast<char const *>(nullptr))), "");
    TQFilename file("a");
    file = "  b  ";
    EXPECT_EQ(whole(file), "b");
    TQString &path = TQFilename("C:\\x\\y").GetPath();
    TQFilename("D:\\z").GetPath();
    EXPECT_EQ(path, "D:\\") << "the result is shared";
}

TEST(TQFilename, HostPathsOfTheStandardLibrary) {
    EXPECT_EQ(hostPath(TQFilename("C:\\tmp\\a.b")), "/tmp/a.b");
    EXPECT_EQ(hostPath(TQFilename("sub\\a")), "sub/a");
    EXPECT_EQ(whole(fromHostPath("/tmp/a.b")), "C:\\tmp\\a.b");
}

}  // namespace
