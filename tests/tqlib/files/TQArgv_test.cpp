#include "tqlib/files/TQArgv.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

std::string ownPath() {
    std::string path = "C:" + std::filesystem::read_symlink("/proc/self/exe").string();
    for (char &c : path)
        if (c == '/') c = '\\';
    return path.substr(0, 259);
}

// The entries from 1 on; entry 0 and what lies beyond the array are looked at by the way.
Words wordsOf(TQArgv const &arguments) {
    EXPECT_EQ(arguments[0], ownPath());
    EXPECT_EQ(arguments[-1], nullptr);
    EXPECT_EQ(arguments[arguments.count() + 1], nullptr);
    Words words;
    for (int i = 1; i <= arguments.count(); ++i)
        words.emplace_back(arguments[i]);
    return words;
}

TEST(TQArgv, WhiteSpaceAlonePartsTheWords) {
    struct {
        char const *line;
        Words words;
    } const rows[] = {
        {nullptr, {}},
        {"", {}},
        {" \t\r\n\v\f", {}},
        {"one", {}},
        {"prog a b", {"a", "b"}},
        {"  prog\ta \n b  ", {"a", "b"}},
        {"prog \"C:\\a b\" ''", {"\"C:\\a", "b\"", "''"}},
        {"prog \xA0\xE4 -", {"\xA0\xE4", "-"}},
    };
    for (auto const &row : rows)
        EXPECT_EQ(wordsOf(TQArgv(row.line)), row.words) << (row.line == nullptr ? "" : row.line);
    std::string const many(100'000, 'x');
    EXPECT_EQ(wordsOf(TQArgv(("p " + many).c_str())), Words{many});
    std::string line = "p";
    for (int i = 0; i < 100'000; ++i)
        line += " y";
    EXPECT_EQ(TQArgv(line.c_str()).count(), 100'000);
}

TEST(TQArgv, TheOwnCommandLineKeepsTheProgramsWord) {
    TQArgv const arguments;
    ASSERT_GE(arguments.count(), 1);
    EXPECT_NE(std::string(arguments[1]).find("tests"), std::string::npos);
    EXPECT_EQ(wordsOf(arguments).size(), static_cast<std::size_t>(arguments.count()));
}

TEST(TQArgv, OptionsAreTakenOut) {
    TQArgv arguments("p -v -f name x -v -o -v -f");
    EXPECT_EQ(arguments.checkOption("-V"), 0);
    EXPECT_EQ(arguments.checkOption("-v "), 0);
    EXPECT_EQ(arguments.checkOption(nullptr), 0);
    EXPECT_EQ(arguments.checkOption(ownPath().c_str()), 0);
    EXPECT_EQ(arguments.checkOption("-v"), 1);
    EXPECT_EQ(wordsOf(arguments), (Words{"-f", "name", "x", "-v", "-o", "-v", "-f"}));
    char *value = nullptr;
    EXPECT_EQ(arguments.checkOption("-q", &value), 0);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(arguments.checkOption("-f", &value), 1);
    EXPECT_STREQ(value, "name");
    EXPECT_EQ(arguments.checkOption("-o", &value), 1);
    EXPECT_STREQ(value, "-v");
    EXPECT_EQ(arguments.checkOption("-f", &value), 1);
    EXPECT_STREQ(value, "");
    EXPECT_EQ(wordsOf(arguments), (Words{"x", "-v"}));
    EXPECT_EQ(arguments.checkOption("-v", nullptr), 1);
    EXPECT_EQ(arguments.checkOption("x"), 1);
    EXPECT_EQ(arguments.count(), 0);
}

TEST(TQArgv, CopiesHaveTextsOfTheirOwn) {
    TQArgv first("p a b c"), other("q z");
    ASSERT_EQ(first.checkOption("a"), 1);
    TQArgv copy(first);
    other = first;
    other = static_cast<TQArgv const &>(other);
    first[1][0] = 'X';
    EXPECT_EQ(first.checkOption("c"), 1);
    EXPECT_EQ(wordsOf(copy), (Words{"b", "c"}));
    EXPECT_EQ(wordsOf(other), (Words{"b", "c"}));
    EXPECT_EQ(wordsOf(first), Words{"X"});
}

}  // namespace
