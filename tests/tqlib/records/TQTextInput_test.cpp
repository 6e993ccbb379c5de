#include "tqlib/records/TQTextInput.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "support/Fields.h"
#include "support/Files.h"
#include "support/Locale.h"

namespace {

class BlankSeparatedReading : public testing::Test {
  protected:
    TQTextInput read(std::string const &content) {
        return TQTextInput(folder_.write("a.txt", content).c_str());
    }

    // The first items of the first line of `content`.
    template <typename Item>
    std::string items(std::string const &content, int most = 100) {
        return fieldsOf<Item>(read(content), most);
    }

    TemporaryFolder folder_;
};

TEST_F(BlankSeparatedReading, NumberItems) {
    struct Row {
        char const *line, *items;
    } const rows[] = {
        {"1 2  3", "[1][2][3]!!"},
        {"==1=2 = 3= ", "[1][2][3]!!"},
        {"12abc 5", "[12][5]!!"},
        {"abc 5", "![5]!"},
        {"\"7\" '8' 9", "!!"},
        {"1\t2 3", "[1][3]!!"},
        {" \t4 5\r\n6", "[4][5]!!"},
        {"-0 +3 0017", "[0][3][17]!!"},
        {"", "!!"},
        {" = ", "!!"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(items<int>(row.line), row.items) << row.line;
    EXPECT_EQ(items<short>("70000 -1"), "[4464][-1]!!");
    EXPECT_EQ(items<unsigned short>("70000 -1"), "[4464][65535]!!");
    EXPECT_EQ(items<unsigned int>("4294967295 -1"), "[4294967295][4294967295]!!");
}

TEST_F(BlankSeparatedReading, TextItemsDifferByTheirTarget) {
    struct Row {
        char const *line, *string, *base, *block;
    } const rows[] = {
        {"width = 1.5", "[width][1.5]!!", "[width][1.5]!!", "[width][][][][]"},
        {"width=1.5", "[width][1.5]!!", "[width][1.5]!!", "[width][][][][]"},
        {"\"two words\"", "[two][words]!!", "[two][words]!!", "[two][words]!!"},
        {"''", "[]!!", "[][][][][]", "['']!!"},
        {"'a' b", "[a][b]!!", "[][][][][]", "['a'][b]!!"},
        {"a'b c", "[a][b][c]!!", "[a][][][][]", "[a'b][c]!!"},
        {"  a  b", "[a][b]!!", "[a][b]!!", "[][a][][b]!"},
        {"a\"b\" c", "[a][b][c]!!", "[a][b][c]!!", "[a][b][c]!!"},
        {"\"' x", "[][x]!!", "[][][][][]", "['][x]!!"},
        {"\"=x", "[][x]!!", "[][x]!!", "[][][][][]"},
        {"\"", "!!", "!!", "!!"},
        {"'", "!!", "[][][][][]", "[']!!"},
        {"a\tb c ", "[a\tb][c]!!", "[a\tb][c]!!", "[a\tb][c]!!"},
        {"\xE4\xFF \x80", "[\xE4\xFF][\x80]!!", "[\xE4\xFF][\x80]!!", "[\xE4\xFF][\x80]!!"},
        {"", "!!", "!!", "!!"},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(items<TQString>(row.line, 5), row.string) << row.line;
        EXPECT_EQ(items<CString>(row.line, 5), row.base) << row.line;
        EXPECT_EQ(items<TextBlock>(row.line, 5), row.block) << row.line;
    }
}

TEST_F(BlankSeparatedReading, AFailedReadLeavesNumbersAndBlocksAndEmptiesTexts) {
    TQTextInput file = read("x");
    double number = 7;
    EXPECT_THROW(file >> &number, TQTextInput::Failure);
    EXPECT_EQ(number, 7);
    char block[] = "old";
    EXPECT_THROW(file >> block, TQTextInput::Failure);
    EXPECT_STREQ(block, "old");
    TQString text = "old";
    EXPECT_THROW(file >> text, TQTextInput::Failure);
    EXPECT_EQ(text, "");
}

TEST_F(BlankSeparatedReading, NumbersConvertAsTheRuntimeConvertsTheirItem) {
    std::mt19937 random(5);
    std::string const characters = "00112233445566789.,,eE+-xa\t\"";
    std::string content;
    for (int i = 0; i < 20000; ++i) {
        for (auto length = random() % 20; length < 20; ++length)
            content += characters[random() % characters.size()];
        content += i % 3 == 0 ? " =\n" : "\n";
    }
    TQTextInput file = read(content);
    for (file.nextline(); !file.eof(); file.nextline()) {
        std::string item = file.currentLine();
        item = item.substr(0, item.find(' '));
        double ours = -1, theirs = -1;
        bool failed = false;
        try {
            file >> &ours;
        } catch (TQTextInput::Failure const &) {
            failed = true;
        }
        ASSERT_EQ(failed, std::sscanf(item.c_str(), "%lf", &theirs) != 1) << item;
        ASSERT_EQ(std::memcmp(&ours, &theirs, sizeof ours), 0) << item;
    }
}

TEST_F(BlankSeparatedReading, LinesAreCountedFromTwoAndCutAtTheirRoom) {
    std::string const longest(9191, 'x');
    struct Row {
        std::string line;
        int state;
    } const rows[] = {{"a", 0}, {"", 1}, {longest, 0}, {"y", 0}, {"b", 1}, {"", 1}, {"", 1}};
    TQTextInput file = read("a\n\n" + longest + "y\nb");
    for (long number = 2; auto const &row : rows) {
        if (number > 2) file.nextline();
        EXPECT_EQ(file.currentLine(), row.line);
        EXPECT_EQ(file.rdstate(), row.state) << number;
        EXPECT_EQ(file.lineNumber(), number++);
    }
    TQTextInput missing(folder_.file("missing").c_str());
    EXPECT_TRUE(missing.fail());
    EXPECT_EQ(missing.lineNumber(), 1);
    EXPECT_STREQ(missing.currentLine(), "");
    EXPECT_EQ(missing.lineNumber(), 2);
}

TEST_F(BlankSeparatedReading, AnItemIsCutAtItsRoom) {
    std::string const zeros(190, '0');
    TQTextInput file = read(zeros + "1234567890123 " + zeros + "12\n");
    double number = 0;
    EXPECT_EQ((file >> &number, number), 123456789.0);
    EXPECT_EQ((file >> &number, number), 12);
}

TEST_F(BlankSeparatedReading, CopiesReadTheSameLineEachAtItsOwnPlace) {
    auto file = std::make_unique<TQTextInput>(read("1 2 3\n4\n"));
    int a = 0, b = 0;
    *file >> &a;
    TQTextInput copy;
    copy = *file;
    *file >> &a;
    copy >> &b;
    EXPECT_EQ(a, b);
    copy.nextline();
    EXPECT_STREQ(file->currentLine(), "4");
    EXPECT_THROW(*file >> &a, TQTextInput::Failure);  // its place is behind the shorter line
    file.reset();
    EXPECT_EQ((copy >> &b, b), 4);
}

TEST_F(BlankSeparatedReading, KnowsNameAndFlag) {
    TQTextInput file(folder_.write("a", "").c_str(), 3);
    EXPECT_EQ(file.getName(), folder_.file("a").c_str());
    EXPECT_EQ(file.setAscii(1), 3);
    EXPECT_EQ(file.setAscii(0), 1);
    EXPECT_EQ(TQTextInput().getName(), "");
}

}  // namespace
