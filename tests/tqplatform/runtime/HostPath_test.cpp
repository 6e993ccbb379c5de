#include "tqplatform/runtime/HostPath.h"

#include <gtest/gtest.h>

namespace {

TEST(HostPath, ConvertsToTheHost) {
    struct Row {
        char const *given, *expected;
    } const rows[] = {
        {"C:\\tmp\\a", "/tmp/a"},
        {"c:\\tmp\\a", "/tmp/a"},
        {"\\tmp\\a", "/tmp/a"},
        {"sub\\a", "sub/a"},
        {"C:a", "a"},
        {"C:", "."},
        {"C:\\", "/"},
        {"a.csv", "a.csv"},
        {"", ""},
        {"/tmp/a", "/tmp/a"},
        {"sub/a\\b", "sub/a\\b"},
        {"D:\\tmp", ""},
        {"..\\a", "../a"},
        {"1:\\a", "1:/a"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(tqplatform::toHostPath(row.given), row.expected) << row.given;
}

TEST(HostPath, ConvertsFromTheHostAndBack) {
    EXPECT_EQ(tqplatform::fromHostPath("/tmp/a"), "C:\\tmp\\a");
    EXPECT_EQ(tqplatform::fromHostPath("sub/a"), "sub\\a");
    EXPECT_EQ(tqplatform::fromHostPath("sub\\a"), "sub\\a");
    for (auto const *path : {"/", "/tmp/x.csv", "a/b/c", "name", "../up"})
        EXPECT_EQ(tqplatform::toHostPath(tqplatform::fromHostPath(path)), path);
}

}  // namespace
