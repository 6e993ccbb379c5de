#include "tqplatform/streams/fstream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Files.h"
#include "tqplatform/streams/ifstream.h"
#include "tqplatform/streams/ofstream.h"

namespace {

using classic::ios;

class Streams : public testing::Test {
  protected:
    TemporaryFolder folder_;
};

TEST_F(Streams, LinesEndWithLfOrCrLfWhereverTheBlockEnds) {
    // The line end moves over the border of the first block of 65536 bytes.
    for (int length = 65530; length < 65540; ++length) {
        for (std::string const end : {"\n", "\r\n", "\r\r\n"}) {
            std::string const content = std::string(length, 'x') + end + "b" + end;
            classic::ifstream in(folder_.write("a", content).c_str());
            std::string line(70000, '\0');
            in.getline(line.data(), 70000);
            EXPECT_EQ(std::string(line.c_str()),
                      content.substr(0, length + end.size() - 1 - (end.size() > 1 ? 1 : 0)))
                << length;
            EXPECT_EQ(in.tellg(), length + static_cast<int>(end.size()));
            EXPECT_EQ(in.get(), 'b');
        }
    }
}

TEST_F(Streams, GetStopsAtLimitDelimiterAndEnd) {
    struct Row {
        char const *content;
        int limit;
        char const *text;
        int state, next;
    } const rows[] = {
        {"abc\ndef", 10, "abc", 0, '\n'},
        {"abc\ndef", 4, "abc", 0, '\n'},
        {"abc\ndef", 3, "ab", 0, 'c'},
        {"abc", 10, "abc", ios::eofbit, -1},
        {"", 10, "", ios::eofbit | ios::failbit, -1},
        {"\nx", 10, "", 0, '\n'},
        {"ab\r\nc", 10, "ab", 0, '\n'},
        {"ab\rc", 10, "ab\rc", ios::eofbit, -1},
        {"ab", 1, "", 0, 'a'},
    };
    for (auto const &row : rows) {
        classic::ifstream in(folder_.write("a", row.content).c_str());
        char text[16] = "untouched";
        in.get(text, row.limit);
        EXPECT_STREQ(text, row.text) << row.content;
        EXPECT_EQ(in.rdstate(), row.state) << row.content;
        EXPECT_EQ(in.gcount(), static_cast<int>(std::string(row.text).size()));
        in.clear();
        EXPECT_EQ(in.get(), row.next) << row.content;
    }
}

TEST_F(Streams, GetlineTakesALineEndDirectlyBehindItsLimit) {
    classic::ifstream in(folder_.write("a", "abc\r\nde\n").c_str());
    char text[8];
    in.getline(text, 4);
    EXPECT_STREQ(text, "abc");
    in.getline(nullptr, 2);
    EXPECT_EQ(in.get(), 'e');
}

TEST_F(Streams, AFailedOpenRaisesNothingAndStaysFailed) {
    folder_.write("exists", "");
    struct Row {
        std::string name;
        int mode;
    } const rows[] = {
        {folder_.file("missing"), ios::in | ios::nocreate},
        {folder_.file("missing"), ios::in},
        {folder_.file(""), ios::in},
        {folder_.file("no/where"), ios::out},
        {folder_.file("exists"), ios::out | ios::noreplace},
        {"D:\\a", ios::out},
    };
    for (auto const &row : rows) {
        classic::fstream stream(row.name.c_str(), row.mode);
        EXPECT_TRUE(stream.fail()) << row.name;
        stream.put('x').flush();
        EXPECT_EQ(stream.get(), -1);
        EXPECT_EQ(stream.tellg(), -1);
        EXPECT_TRUE(stream.fail());
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.file("missing")));
    EXPECT_TRUE(classic::ifstream(nullptr).fail());
}

TEST_F(Streams, ReadsAndWritesInOneFile) {
    std::string const path = folder_.write("a", "one\r\ntwo\r\n");
    {
        classic::fstream stream(path.c_str(), ios::in | ios::out | ios::binary);
        char line[16];
        stream.getline(line, 16);
        EXPECT_STREQ(line, "one\r");
        classic::streampos const second = stream.tellg();
        EXPECT_EQ(second, 5);
        stream.put('T');
        EXPECT_EQ(stream.get(), 'w');
        stream.seekp(0).write("ON", 2);
        stream.seekg(second);
        stream.get(line, 16);
        EXPECT_STREQ(line, "Two\r");
    }
    EXPECT_EQ(folder_.read("a"), "ONe\r\nTwo\r\n");
}

TEST_F(Streams, CopiesShareTheFileUntilTheLastOfThemEnds) {
    std::string const path = folder_.write("a", "0123456789");
    auto first = std::make_unique<classic::ifstream>(path.c_str());
    EXPECT_EQ(first->get(), '0');
    classic::ifstream second(*first);
    EXPECT_EQ(second.get(), '1');
    EXPECT_EQ(first->get(), '2');
    first->clear(ios::failbit);
    classic::ifstream third;
    third = *first;
    EXPECT_TRUE(third.fail());
    first.reset();
    EXPECT_EQ(second.get(), '3');
}

TEST_F(Streams, WordsSkipWhiteSpaceAndObeyTheWidth) {
    classic::ifstream in(folder_.write("a", " \t\r\n abc  defgh ").c_str());
    char word[16];
    in >> word;
    EXPECT_STREQ(word, "abc");
    in.width(4);
    in >> word;
    EXPECT_STREQ(word, "def");
    in >> word;
    EXPECT_STREQ(word, "gh");
    in >> word;
    EXPECT_STREQ(word, "");
    EXPECT_EQ(in.rdstate(), ios::eofbit | ios::failbit);
}

TEST_F(Streams, WritesTextAndNumbers) {
    {
        classic::ofstream out(folder_.file("a").c_str());
        out << "n=" << -42 << ' ' << 4294967295u << ' ' << -1L << ' ' << 7UL << classic::endl;
        EXPECT_EQ(folder_.read("a"), "n=-42 4294967295 -1 7\n");
        out << 0.5;
    }
    EXPECT_EQ(folder_.read("a").substr(22).size(), 3u);
}

}  // namespace
