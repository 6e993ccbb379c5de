#include "tqlib/records/TQCSVOutput.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "support/Files.h"
#include "support/Locale.h"
#include "tqlib/records/TQCSVInput.h"

namespace {

class SeparatedWriting : public testing::Test {
  protected:
    // What `action` writes.
    template <typename Action>
    std::string written(Action action, int quoted = 1, int separated = 1, char separator = 0) {
        {
            TQCSVOutput file(folder_.file("a").c_str(), 0, quoted, 0, separated, separator);
            action(file);
        }
        return folder_.read("a");
    }

    TemporaryFolder folder_;
};

TEST_F(SeparatedWriting, ARecordComesBackAsItWasWritten) {
    auto const record = [](TQCSVOutput &file) {
        file << 1 << 2.5 << "abc" << 100.0;
        file.nextline();
    };
    EXPECT_EQ(written(record), localized("1;2.5;\"abc\";100.;\n"));
    TQCSVInput file(folder_.file("a").c_str());
    int number = 0;
    double half = 0, hundred = 0;
    TQString text;
    file >> &number >> &half >> text >> &hundred;
    EXPECT_EQ(number + half + hundred, 103.5);
    EXPECT_EQ(text, "abc");
    EXPECT_THROW(file >> &number, TQCSVInput::Failure);
}

TEST_F(SeparatedWriting, EveryTypeHasItsForm) {
    EXPECT_EQ(written([](TQCSVOutput &file) {
                  file << -1L << short{-2} << 3UL << 4u << static_cast<unsigned short>(5) << 0.5f
                       << 'c' << static_cast<unsigned char>(0xE4) << '\0' << TQString("t");
              }),
              localized("-1;-2;3;4;5;0.5;c;\xE4;;\"t\""));
}

TEST_F(SeparatedWriting, SeparatorsAndQuotesCanBeLeftOut) {
    auto const record = [](TQCSVOutput &file) {
        file << 1 << "a";
        file.nextline();
        file.nextline();
        file << "";
    };
    EXPECT_EQ(written(record), "1;\"a\";\n;\n\"\"");
    EXPECT_EQ(written(record, 0), "1;a;\n;\n");
    EXPECT_EQ(written(record, 1, 0), "1\"a\"\n\n\"\"");
    EXPECT_EQ(written(record, 1, 1, '\t'), "1\t\"a\"\t\n\t\n\"\"");
    EXPECT_EQ(written([](TQCSVOutput &file) {
                  file << 1 << 2;
                  file.setTrennzeichen(',');
                  file << 3;
                  file.nextline();
                  file.Init();
                  file << "a;\"\n";
              }),
              "1;2,3,\n\"a;\"\n\"");
}

TEST_F(SeparatedWriting, NumbersAreThoseOfTheRuntimeLessTheirZeros) {
    std::mt19937_64 random(6);
    for (int round = 0; round < 3000; ++round) {
        std::uint64_t const bits = random();
        double value = static_cast<double>(static_cast<std::int64_t>(bits)) / 1e12;
        if (round % 3 == 0) value = static_cast<double>(bits % 4000) / 1000;
        if (round % 7 == 0) std::memcpy(&value, &bits, sizeof value);
        char expected[200];
        std::snprintf(expected, sizeof expected, "%lf", value);
        std::string text = expected;
        if (text.find(localized(".")) != std::string::npos)
            text.erase(text.find_last_not_of('0') + 1);
        ASSERT_EQ(written([=](TQCSVOutput &file) { file << value; }), text);
    }
}

TEST_F(SeparatedWriting, ZeroCheckLooksForItsOwnCharacter) {
    struct Row {
        char const *text, *left;
    } const rows[] = {{"2.500000", "2.5"}, {"2.000000", "2."}, {"100", "100"},      {"1.5", "1.5"},
                      {"1.", "1."},        {"", ""},           {"1.0.100", "1.0.1"}};
    TQCSVOutput file;
    file.setcDezimalzeichen('.');
    for (auto const &row : rows) {
        char text[16];
        file.ZeroCheck(std::strcpy(text, row.text));
        EXPECT_STREQ(text, row.left);
    }
    EXPECT_EQ(written([](TQCSVOutput &out) {
                  out.setcDezimalzeichen('x');
                  out << 2.5;
                  out.setcDezimalzeichen('\0');
                  out << 2.5;
              }),
              localized("2.500000;2.500000"));
}

TEST_F(SeparatedWriting, AFailedWriterThrowsAtEveryCall) {
    TQCSVOutput file((folder_.file("") + "no/where").c_str());
    EXPECT_THROW(file << 1, TQCSVOutput::Failure);
    EXPECT_THROW(file << "a", TQCSVOutput::Failure);
    EXPECT_THROW(file.nextline(), TQCSVOutput::Failure);
    TQCSVOutput full("/dev/full");
    std::string const block(70000, 'x');
    EXPECT_THROW(full << block.c_str(), TQCSVOutput::Failure);
}

TEST_F(SeparatedWriting, CopiesWriteIntoOneFile) {
    EXPECT_EQ(written([](TQCSVOutput &file) {
                  TQCSVOutput copy(file);
                  file << 1;
                  copy << 2;  // for the copy it is the first field
                  TQCSVOutput assigned;
                  assigned = file;
                  assigned << 3;
              }),
              "12;3");
}

}  // namespace
