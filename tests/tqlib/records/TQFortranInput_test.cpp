#include "tqlib/records/TQFortranInput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "support/Files.h"
#include "support/FortranColumns.h"
#include "support/Locale.h"

namespace {

class ColumnReading : public testing::Test {
  protected:
    TQFortranInput read(std::string const &content) {
        return TQFortranInput(folder_.write("a.txt", content).c_str());
    }

    TemporaryFolder folder_;
};

template <typename Value>
std::string bitsOf(Value const &value) {
    return {reinterpret_cast<char const *>(&value), sizeof value};
}

// What the C runtime makes of a field, as its bits; "!" is a failure.
template <typename Value>
std::string convert(std::string field, int width, char const *format) {
    std::size_t const point = field.find('.');
    bool const localizes = std::is_same_v<Value, double> && localized(".") == ",";
    if (localizes && point != std::string::npos) field[point] = ',';
    Value value{};
    bool const fine = field.empty() || std::sscanf(field.c_str(), format, &value) == 1;
    std::string const blanks(20, ' ');
    bool const blank =
        std::strncmp(field.c_str(), blanks.c_str(), static_cast<std::size_t>(width)) == 0;
    return fine || blank ? bitsOf(value) : "!";
}

// The same by `read`, which reads a field into its argument.
template <typename Value, typename Read>
std::string take(Read read) {
    Value value{};
    try {
        read(value);
    } catch (TQFortranInput::Failure const &) {
        return value == Value{} ? "!" : "changed";
    }
    return bitsOf(value);
}

TEST_F(ColumnReading, AFortranProgramsLinesGiveItsValues) {
    std::string content;
    for (FortranLine const &line : fortranLines)
        content += std::string(line.text) + '\n';
    TQFortranInput file = read(content);
    for (FortranLine const &line : fortranLines) {
        TQString name;
        int count = 0;
        double value = 0;
        EXPECT_EQ(file.A(6, name) + file.X(2) + file.I(6, count) + file.F(10, 3, value), 0);
        name.TrimRight();
        EXPECT_EQ(name, line.name);
        EXPECT_EQ(count, line.count);
        EXPECT_EQ(std::memcmp(&value, &line.read, sizeof value), 0) << line.text;
        file.NL();
    }
    EXPECT_EQ(file.peek(), -1);
}

TEST_F(ColumnReading, NumberFields) {
    struct Row {
        std::string line;
        int width;
        char const *result;  ///< the number and the rest of the line
    } const rows[] = {
        {"   12|", 5, "12|"},
        {"12   |", 5, "12|"},
        {" 12ab|", 5, "12|"},
        {"     |", 5, "0|"},
        {"abcde|", 5, "!|"},
        {"\t  -7|", 5, "-7|"},
        {"70000|", 5, "4464|"},
        {"12", 5, "12"},
        {"  ", 5, "!"},
        {"", 5, "0"},
        {"123", 0, "0123"},
        {"123", -1, "0123"},
        {"    -", 5, "!"},
        {"  - 5", 5, "!"},
        {std::string(20, ' ') + "|", 20, "0|"},
        {std::string(25, ' ') + "|", 25, "!|"},
        {std::string(40, ' ') + "31|", 42, "31|"},
        {std::string("1\0002|", 4), 3, "1|"},
        {std::string("\0  |", 4), 3, "!|"},
    };
    for (auto const &row : rows)
        for (char const *more : {"\nx", "", "\n                               "}) {
            TQFortranInput file = read(row.line + more);
            std::string result = "!";
            short number = 7;
            try {
                EXPECT_EQ(file.readftn(&number, row.width), 0);
                result = std::to_string(number);
            } catch (TQFortranInput::Failure const &) {
                EXPECT_EQ(number, 7);
            }
            TQString rest;
            file.A(30, rest);
            EXPECT_EQ(result + std::string(rest.text()), row.result)
                << row.line << " " << row.width << more;
        }
}

TEST_F(ColumnReading, FieldsConvertAsTheRuntimeConvertsThem) {
    std::mt19937 random(11);
    std::string const characters = "      000123456789.,-+e\n";
    std::string content;
    for (int i = 0; i < 300000; ++i)
        content += random() % 8 == 0 ? characters[random() % characters.size()]
                                     : "    .1234567890"[std::min<std::size_t>(14, random() % 17)];
    std::string_view left = content;
    TQFortranInput file = read(content);
    while (!left.empty()) {
        auto const width = static_cast<unsigned>(random() % 24);
        auto const decimals = static_cast<int>(random() % 9);
        std::string const field(left.substr(0, std::min<std::size_t>(left.find('\n'), width)));
        left.remove_prefix(field.size());
        auto const shown = '"' + field + "\" " + std::to_string(width);
        auto const length = static_cast<int>(width);
        if (random() % 2 == 0) {
            ASSERT_EQ(take<double>([&](double &value) { file.F(width, decimals, value); }),
                      convert<double>(field, length, "%lf"))
                << shown;
        } else {
            ASSERT_EQ(take<int>([&](int &value) { file.I(width, value); }),
                      convert<int>(field, length, "%d"))
                << shown;
        }
        if (!left.starts_with('\n')) continue;
        left.remove_prefix(1);
        file.NL();
    }
}

TEST_F(ColumnReading, TextsComeWithTheirBlanksAndEndAtTheLine) {
    TQFortranInput file = read("abc  \x84|\nd\xE4\n");
    TQString text;
    char block[10];
    file.A(6, text);
    EXPECT_EQ(text, "abc  \xE4");
    file.A(5, text);
    EXPECT_EQ(text, "|");
    file.A(5, text);
    EXPECT_EQ(text, "");
    file.reReadLine();
    file.A(6, block);
    EXPECT_STREQ(block, "abc  \x84");
    char one = 0;
    for (char const expected : {'|', '\n', 'd'}) {
        file.readftn(one);
        EXPECT_EQ(one, expected);
    }
    EXPECT_EQ(file.lineNumber(), 1);
    unsigned char bytes[10];
    file.readftn(bytes, 9);
    EXPECT_STREQ(reinterpret_cast<char *>(bytes), "\xE4");
    file.NL();
    file.readftn(one);
    EXPECT_EQ(one, '\xFF');
    EXPECT_EQ(file.rdstate() & 1, 1);
}

TEST_F(ColumnReading, LinesAreWalkedAndReadAgain) {
    std::string const longest(32000, 'x');
    TQFortranInput file = read("first line\n" + longest + "yz\nlast");
    TQString text;
    EXPECT_STREQ(file.currentLine(), "first line");
    EXPECT_EQ(file.lineNumber(), 1);
    file.A(2, text);
    EXPECT_EQ(text, "xx");  // the stream stands behind the line that it showed
    file.reReadLine();
    file.A(5, text);
    EXPECT_EQ(text, "first");
    for (std::string const &line : {longest + "yz", std::string("yz"), std::string("last")}) {
        file.NL();
        EXPECT_EQ(file.currentLine(), line);
        file.reReadLine();
    }
    EXPECT_EQ(file.lineNumber(), 4);
    file.NL();
    file.NL();
    EXPECT_EQ(file.lineNumber(), 6);
    EXPECT_EQ(file.rdstate(), 0);
    int number = 5;
    file.I(5, number);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(file.rdstate(), 3);
    EXPECT_STREQ(file.currentLine(), "");
}

TEST_F(ColumnReading, ACopyMovesTheSharedPlace) {
    auto file = std::make_unique<TQFortranInput>(read("1 2 3\n4\n"));
    int number = 0;
    file->I(2, number);
    TQFortranInput copy;
    copy = *file;
    copy.I(2, number);
    EXPECT_EQ(number, 2);
    file->I(1, number);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(copy.getName(), file->getName());
    file.reset();
    copy.NL();
    copy.I(1, number);
    EXPECT_EQ(number, 4);
    TQFortranInput missing(folder_.file("missing").c_str());
    missing.I(5, number);
    EXPECT_EQ(number, 0);
}

}  // namespace
