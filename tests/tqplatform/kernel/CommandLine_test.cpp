#include "tqplatform/kernel/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using tqplatform::joinCommandLine;
using tqplatform::splitCommandLine;
using Words = std::vector<std::string>;

TEST(CommandLine, QuotesGroupWords) {
    struct {
        std::string line;
        Words words;
    } const rows[] = {
        {"", {}},
        {" \t ", {}},
        {"a  b\tc ", {"a", "b", "c"}},
        {R"("a b" c)", {"a b", "c"}},
        {R"(a"b c"d e)", {"ab cd", "e"}},
        {R"("" a "")", {"", "a", ""}},
        {R"("a b)", {"a b"}},
        {R"(C:\a\b \\c\ d)", {R"(C:\a\b)", R"(\\c\)", "d"}},
        {R"("C:\a b\\" c)", {R"(C:\a b\)", "c"}},
        {R"(a\"b "c\"d")", {"a\"b", "c\"d"}},
        {R"(a\\"b c" \\\"d)", {R"(a\b c)", R"(\"d)"}},
        {"a\nb", {"a\nb"}},
    };
    for (auto const &row : rows)
        EXPECT_EQ(splitCommandLine(row.line), row.words) << row.line;
}

TEST(CommandLine, JoinedWordsComeBack) {
    std::vector<Words> const rows = {
        {"a"}, {"", "a", ""}, {"a b", "\t"}, {"\"", "a\"b"}, {"\\", "a b\\\\", "\\\""}, {"\n"}};
    for (Words const &words : rows)
        EXPECT_EQ(splitCommandLine(joinCommandLine(words)), words) << joinCommandLine(words);
    EXPECT_EQ(joinCommandLine({"a", "b c", "C:\\d\\"}), R"(a "b c" C:\d\)");
}

TEST(CommandLine, TheNameOfAModuleIsCut) {
    tqplatform::Module const module{"name", {}};
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(GetModuleFileNameA(&module, buffer, 8), 4u);
    EXPECT_STREQ(buffer, "name");
    EXPECT_EQ(GetModuleFileNameA(&module, buffer, 4), 4u);
    EXPECT_STREQ(buffer, "nam");
    EXPECT_EQ(GetModuleFileNameA(&module, buffer, 0), 0u);
    EXPECT_EQ(GetModuleFileNameA(&module, nullptr, 8), 0u);
}

}  // namespace
