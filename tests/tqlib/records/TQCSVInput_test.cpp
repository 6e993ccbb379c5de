#include "tqlib/records/TQCSVInput.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "support/Fields.h"
#include "support/Files.h"
#include "support/Locale.h"

namespace {

class SeparatedReading : public testing::Test {
  protected:
    TQCSVInput read(std::string const &content, char separator = 0) {
        return TQCSVInput(folder_.write("a.csv", content).c_str(), 0, 1, 0, separator);
    }

    // The fields of the first line of `content`.
    template <typename Field>
    std::string fields(std::string const &content) {
        return fieldsOf<Field>(read(content));
    }

    TemporaryFolder folder_;
};

TEST_F(SeparatedReading, NumberFields) {
    struct Row {
        char const *line, *fields;
    } const rows[] = {
        {"1;2;3;", "[1][2][3]!!"},
        {"7;;8", "[7][0][8]!!"},
        {";7;8", "[7][8]!!"},
        {";;7", "[0][7]!!"},
        {"12abc;5", "[12][5]!!"},
        {"\"12\";\"13\"", "!!"},
        {"", "!!"},
        {";", "!!"},
        {"a;1;2", "![1][2]!"},
        {" 4 ; 5", "[4][5]!!"},
        {" ;3", "![3]!"},
        {"1;2\r\n3", "[1][2]!!"},
        {"-0;+3;0017", "[0][3][17]!!"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(fields<int>(row.line), row.fields) << row.line;
    EXPECT_EQ(fields<short>("70000;-1"), "[4464][-1]!!");
    EXPECT_EQ(fields<unsigned short>("70000;-1"), "[4464][65535]!!");
}

TEST_F(SeparatedReading, TextFields) {
    struct Row {
        char const *line, *fields;
    } const rows[] = {
        {"7;;8", "[7][][8]!!"},
        {"\"abc\";\"def\"", "[abc][def]!!"},
        {"\"\";\"x\"", "[][x]!!"},
        {"\"a;b\";c", "[a][b][c]!!"},
        {"a\"b\"c", "[a][b][c]!!"},
        {"\"\"\"\"", "[][]!!"},
        {"\"", "!!"},
        {"7;", "[7]!!"},
        {"\";x", "[][x]!!"},
        {" a ;\tb", "[ a ][\tb]!!"},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(fields<TQString>(row.line), row.fields) << row.line;
        EXPECT_EQ(fields<TextBlock>(row.line), row.fields) << row.line;
    }
}

TEST_F(SeparatedReading, AQuoteMayBeTheSeparator) {
    TQCSVInput file = read("a\"\"\"b", '"');
    TQString text;
    EXPECT_EQ((file >> text, text), "a");
    EXPECT_EQ((file >> text, text), "b");
}

TEST_F(SeparatedReading, AFailedReadLeavesNumbersAndBlocksAndEmptiesTexts) {
    TQCSVInput file = read("x;\n");
    double number = 7;
    EXPECT_THROW(file >> &number, TQCSVInput::Failure);
    EXPECT_EQ(number, 7);
    char block[] = "old";
    EXPECT_THROW(file >> block, TQCSVInput::Failure);
    EXPECT_STREQ(block, "old");
    TQString text = "old";
    EXPECT_THROW(file >> text, TQCSVInput::Failure);
    EXPECT_EQ(text, "");
}

TEST_F(SeparatedReading, NumbersConvertAsTheRuntimeConvertsTheirField) {
    std::mt19937 random(5);
    std::string const characters = "00112233445566789.,,;;;eE+- xa\t\"";
    for (char const separator : {';', ',', '.', '\t', 'e', '5', '-', ' '}) {
        std::string content;
        for (int i = 0; i < 3000; ++i)
            content += "1" + std::string(1, separator) + characters[random() % characters.size()] +
                       characters[random() % characters.size()] +
                       characters[random() % characters.size()] +
                       characters[random() % characters.size()] + "\n";
        TQCSVInput file = read(content, separator);
        for (file.nextline(); !file.eof(); file.nextline()) {
            std::string field(std::strchr(file.currentLine(), separator) + 1);
            TQString first;
            file >> first;
            field = field.substr(0, field.find(separator));
            bool const atEnd = file.currentLine()[2] == '\0';
            if (field.empty() && !atEnd) field = "0";
            double ours = -1, theirs = -1;
            bool failed = false;
            try {
                file >> &ours;
            } catch (TQCSVInput::Failure const &) {
                failed = true;
            }
            ASSERT_EQ(failed, std::sscanf(field.c_str(), "%lf", &theirs) != 1)
                << file.currentLine();
            ASSERT_EQ(ours, theirs) << file.currentLine();
        }
    }
}

TEST_F(SeparatedReading, NumbersOfEveryLengthConvertAsTheRuntimeConvertsThem) {
    std::string const digits = "90123456789";
    for (std::size_t whole = 0; whole <= 10; ++whole) {
        std::string lines;
        for (std::size_t decimals = 0; decimals <= 10; ++decimals)
            for (std::string const sign : {"", "-", "+"})
                for (std::string const end : {"", ".", "e1", "x", " "})
                    lines += "0;" + sign + digits.substr(0, whole) + "." +
                             digits.substr(0, decimals) + end + ";8\n0;" + sign +
                             digits.substr(0, whole) + end + "\n";
        TQCSVInput file = read(lines);
        for (file.nextline(); !file.eof(); file.nextline()) {
            int first = -1;
            double ours = -1, theirs = -1;
            file >> &first;
            if (std::sscanf(file.currentLine() + 2, "%lf", &theirs) != 1) continue;
            file >> &ours;
            ASSERT_EQ(std::memcmp(&ours, &theirs, sizeof ours), 0) << file.currentLine();
        }
    }
}

TEST_F(SeparatedReading, AFieldIsCutAtItsRoomAndALineAtItsOwn) {
    std::string const zeros(190, '0');
    TQCSVInput file =
        read(std::string(199, ' ') + "5;" + zeros + "1234567890123;" + zeros + "12\n");
    int number = -1;
    EXPECT_THROW(file >> &number, TQCSVInput::Failure);
    double real = 0;
    file >> &real;
    EXPECT_EQ(real, 123456789.0);
    file >> &number;
    EXPECT_EQ(number, 12);

    TQCSVInput lines = read(std::string(9192, 'x') + "\n" + std::string(9191, 'y') + "\r\nz\n");
    CString line;
    for (int const length : {9191, 1, 9191, 1}) {
        lines.ReadLine(line);
        EXPECT_EQ(line.GetLength(), length);
    }
    EXPECT_EQ(lines.lineNumber(), 4);
}

TEST_F(SeparatedReading, BlankLinesAndTheEndLookAlike) {
    TQCSVInput file = read("a\n\nb");
    int const states[] = {0, 1, 1, 1};
    for (int const state : states) {
        file.nextline();
        EXPECT_EQ(file.rdstate(), state) << file.lineNumber();
    }
    EXPECT_STREQ(file.currentLine(), "");
    EXPECT_EQ(file.lineNumber(), 4);
}

TEST_F(SeparatedReading, ResetGoesBackAndKeepsTheLineAtHand) {
    TQCSVInput file = read("1;2\n3;4\n");
    int number = 0;
    file >> &number;
    EXPECT_EQ(file.lineNumber(), 1);
    EXPECT_EQ(file.fieldNumber(), 1);
    file.Reset(0);
    EXPECT_EQ(file.lineNumber(), 0);
    EXPECT_STREQ(file.currentLine(), "1;2");
    file >> &number;
    EXPECT_EQ(number, 2);
    file.nextline();
    EXPECT_STREQ(file.currentLine(), "1;2");
    EXPECT_EQ(file.lineNumber(), 1);
    EXPECT_EQ(file.fieldNumber(), 0);
}

TEST_F(SeparatedReading, CopiesReadTheSameLineEachAtItsOwnPlace) {
    auto file = std::make_unique<TQCSVInput>(read("1;2;3\n4\n"));
    int a = 0, b = 0;
    *file >> &a;
    TQCSVInput copy(*file);
    *file >> &a;
    copy >> &b;
    EXPECT_EQ(a, b);
    copy.nextline();
    EXPECT_STREQ(file->currentLine(), "4");
    EXPECT_THROW(*file >> &a, TQCSVInput::Failure);  // its place is behind the shorter line
    file.reset();
    copy >> &b;
    EXPECT_EQ(b, 4);
}

TEST_F(SeparatedReading, InitFetchesAFreshLineAndForgetsTheSeparator) {
    TQCSVInput file = read("1,2\n3,4;5\n", ',');
    int number = 0;
    file >> &number;
    file.Init();
    TQString text;
    file >> text;
    EXPECT_EQ(text, "3,4");
}

TEST_F(SeparatedReading, KnowsNameLengthAndFlag) {
    TQCSVInput file = read("1;2\n");
    EXPECT_EQ(file.getName(), folder_.file("a.csv").c_str());
    EXPECT_EQ(file.getFileLength(), 4u);
    EXPECT_EQ(file.setAscii(1), 0);
    EXPECT_EQ(file.setAscii(0), 1);
    EXPECT_EQ(TQCSVInput().getFileLength(), 4294967295u);
    TQCSVInput missing(folder_.file("missing").c_str());
    EXPECT_TRUE(missing.fail());
    EXPECT_STREQ(missing.currentLine(), "");
    EXPECT_EQ(missing.rdstate(), 1);
}

}  // namespace
