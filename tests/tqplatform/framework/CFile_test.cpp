#include "tqplatform/framework/CFile.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "support/Files.h"
#include "tqplatform/framework/CFileException.h"

namespace {

template <typename Action>
int errorOf(Action action) {
    try {
        action();
    } catch (CException *exception) {
        EXPECT_TRUE(exception->IsKindOf(&CException::classCException));
        int const error = static_cast<CFileException *>(exception)->m_lOsError;
        exception->Delete();
        return error;
    }
    return 0;
}

TEST(CFile, WritesAndReadsBytes) {
    TemporaryFolder const folder;
    CFile file(folder.file("a").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    file.Write("a\0\r\nb", 5);
    file.Close();
    EXPECT_EQ(folder.read("a"), std::string("a\0\r\nb", 5));
    ASSERT_EQ(file.Open(folder.file("a").c_str(), CFile::modeRead), 1);
    char bytes[8];
    EXPECT_EQ(file.Read(bytes, 3), 3u);
    EXPECT_EQ(file.Read(bytes, 8), 2u);
    EXPECT_EQ(file.Read(bytes, 8), 0u);
}

TEST(CFile, ThrowsWhatTheSystemRefuses) {
    TemporaryFolder const folder;
    std::string const missing = folder.file("missing");
    char byte = 0;
    EXPECT_EQ(errorOf([&] { CFile(missing.c_str(), CFile::modeRead); }), ENOENT);
    EXPECT_EQ(errorOf([&] { CFile("/dev/full", CFile::modeWrite).Write("x", 1); }), ENOSPC);
    EXPECT_EQ(errorOf([&] { CFile().Read(&byte, 1); }), EBADF);
    EXPECT_EQ(CFile().Open(missing.c_str(), CFile::modeRead), 0);
}

}  // namespace
