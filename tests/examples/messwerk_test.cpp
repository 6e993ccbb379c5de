#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/Files.h"
#include "support/PseudoTerminal.h"

namespace {

using Words = std::vector<std::string>;

Words split(std::string const &text, char separator) {
    Words parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

std::string shellWord(std::string const &text) {
    std::string word = "'";
    for (char const c : text)
        word += c == '\'' ? "'\\''" : std::string(1, c);
    return word + "'";
}

/// Runs the program in a fresh folder.
class Messwerk : public testing::Test {
  protected:
    /// The exit code of the program with `arguments`, in the shell's `surroundings`, where % stands
    /// for it. Its messages are in out_ and err_ then.
    int run(Words const &arguments, std::string surroundings = "LC_ALL=C %") {
        std::string command = shellWord(MESSWERK_PROGRAM) + (replaces_ ? " -f" : "");
        for (std::string const &argument : arguments)
            command += ' ' + shellWord(argument);
        surroundings.replace(surroundings.find('%'), 1, command);
        std::string const line = "cd " + shellWord(folder_.file("")) + " && { " + surroundings +
                                 "; } >messages.out 2>messages.err";
        int const status = std::system(line.c_str());
        out_ = folder_.read("messages.out");
        err_ = folder_.read("messages.err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Runs on a file with `content`, without header, from in.csv to out.csv.
    int runOn(std::string const &content, std::string const &columns, Words const &more = {}) {
        folder_.write("in.csv", content);
        Words arguments = {"-k", "0", "-c", columns, "-o", "out.csv", "in.csv"};
        arguments.insert(arguments.begin(), more.begin(), more.end());
        return run(arguments);
    }

    bool says(std::string const &text) const { return out_.find(text) != std::string::npos; }

    /// Minimum, maximum and mean of `column` in the summary.
    std::array<double, 3> figures(std::string const &column) const {
        std::array<double, 3> values{NAN, NAN, NAN};
        for (std::string const &line : split(out_, '\n')) {
            std::istringstream words(line);
            std::string name;
            if (words >> name && name == column) words >> values[0] >> values[1] >> values[2];
        }
        return values;
    }

    /// The program at a terminal of its own.
    PseudoTerminal atTerminal(Words words) const {
        words.insert(words.begin(), MESSWERK_PROGRAM);
        return {std::move(words), folder_.file("")};
    }

    bool replaces_ = true;  ///< files that are there
    TemporaryFolder folder_;
    std::string out_, err_;
};

// Each row of EXPECTED.tsv: file, separator, lines, column, header, numbers, empty, other, sum,
// min, max, first, last.
TEST_F(Messwerk, SumsUpTheRealSeries) {
    std::map<std::string, std::vector<Words>> files;
    std::string const data = MESSWERK_DATA "/";
    std::ifstream expected(data + "EXPECTED.tsv");
    for (std::string row; std::getline(expected, row);)
        if (!row.starts_with("file\t"))
            files[row.substr(0, row.find('\t'))].push_back(split(row, '\t'));
    ASSERT_EQ(files.size(), 3u);
    for (auto const &[file, columns] : files) {
        std::string list;
        for (Words const &column : columns)
            list += (list.empty() ? "c" : ",c") + column[3] + (column[5] == "0" ? ":text" : "");
        ASSERT_EQ(run({"-s", ",", "-c", list, "-o", "out.csv", data + file}), 0) << err_;
        int const rows = std::stoi(columns[0][2]) - 1;
        EXPECT_TRUE(says(std::to_string(rows) + " read, 0 refused")) << file << out_;
        EXPECT_EQ(split(folder_.read("out.csv"), '\n').size(), rows + 1u);
        for (Words const &column : columns) {
            if (column[5] == "0") continue;
            auto const [minimum, maximum, mean] = figures("c" + column[3]);
            double const sum = std::stod(column[8]);
            EXPECT_EQ(minimum, std::stod(column[9])) << file << column[4];
            EXPECT_EQ(maximum, std::stod(column[10])) << file << column[4];
            EXPECT_NEAR(mean * rows, sum, std::fabs(sum) * 1e-8) << file << column[4];
        }
    }
}

TEST_F(Messwerk, ComputesColumnsFromColumnsAndEarlierResults) {
    ASSERT_EQ(run({"-s", ",", "-c", "-,measured,Adjusted", "-x", "season = MEASURED adjusted -",
                   "-x", "twice = season 2 *", "-x", "total = RCL_0 measured + STO_0", "-o",
                   "out.csv", MESSWERK_DATA "/co2-concentration.csv"}),
              0)
        << err_;
    Words const lines = split(folder_.read("out.csv"), '\n');
    ASSERT_EQ(lines.size(), 742u);
    EXPECT_EQ(lines[0], R"("measured","Adjusted","season","twice","total",)");
    double total = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        Words const fields = split(lines[i], ',');
        double const measured = std::stod(fields[0]), adjusted = std::stod(fields[1]);
        total += measured;
        EXPECT_NEAR(std::stod(fields[2]), measured - adjusted, 1e-6) << lines[i];
        EXPECT_NEAR(std::stod(fields[3]), 2 * (measured - adjusted), 1e-6) << lines[i];
        EXPECT_NEAR(std::stod(fields[4]), total, 1e-6) << lines[i];
    }
}

TEST_F(Messwerk, LeavesOutRowsWithAFaultAndSaysWhy) {
    struct Row {
        std::string line, result;  // the line written, or the reason
    } const rows[] = {
        {"1;2;x", "1.;2.;\"x\";0.5;"},
        {" -1.50 ;4\t;\"x y\";", "-1.5;4.;\"x y\";-0.375;"},
        {"\"1\";2;", "1.;2.;\"\";0.5;"},
        {";2;x", "the first field is empty"},
        {"1;;x", "b is empty"},
        {"1; ;x", "b is empty"},
        {"1;2", "2 fields instead of 3"},
        {"1", "1 field instead of 3"},
        {"1;2;x;y", "4 fields instead of 3"},
        {"1;2;x;;", "5 fields instead of 3"},
        {"12abc;2;x", "a isn't a number: \"12abc\""},
        {"1;2,5;x", "b isn't a number: \"2,5\""},
        {"1;\x1b[2J;x", "b isn't a number: \"?[2J\""},
        {"1;" + std::string(100, 'z') + ";x",
         "b isn't a number: \"" + std::string(37, 'z') + "...\""},
        {"inf;2;x", "a isn't a finite number of at most 191 digits: \"inf\""},
        {"1;nan;x", "b isn't a finite number of at most 191 digits: \"nan\""},
        {"1;-1e191;x", "b isn't a finite number of at most 191 digits: \"-1e191\""},
        {"1;2;a\"b", "quotes don't enclose a whole field: \"a\"b\""},
        {"1;\"2;x\"", "quotes don't enclose a whole field: \"\"2\""},
        {"1;2;\"", "quotes don't enclose a whole field: \"\"\""},
        {"1;0;x", "q has no finite value"},
        {"1e100;1e-100;x", "q is too large to be written"},
        {std::string("1;2\0;x", 6), "the line has a NUL character"},
        {"1;2;" + std::string(9188, 'x'), "the line has more than 9191 characters"},
        {std::string(20000, ';'), "the line has more than 9191 characters"},
    };
    for (auto const &[line, result] : rows) {
        ASSERT_EQ(runOn("7;8;y\n" + line + "\n7;8;y\n", "a,b,t:text", {"-x", "q = a b /"}), 0);
        Words const written = split(folder_.read("out.csv"), '\n');
        ASSERT_GE(written.size(), 3u) << line;
        bool const refused = written.size() == 3;
        EXPECT_EQ(refused ? "  line 2: " + result + "\n" : result + "\n",
                  refused ? out_.substr(out_.rfind('\n', out_.size() - 2) + 1) : written[2] + "\n")
            << line;
        EXPECT_EQ(written.back(), "7.;8.;\"y\";0.875;") << line;
    }
}

TEST_F(Messwerk, SumsUpDatesAndTimes) {
    ASSERT_EQ(runOn("05.03.2004;07:05;040305\n06.03.2004;23:59;040306\n10.03.2004;00:00;040307\n"
                    "29.02.2003;00:00;040308\n7.3.2004;00:00;040308\n05.03.2004;24:00;040308\n",
                    "a:date0,b:time0,c:date8", {"-x", "d = a 731645 -", "-x", "f = b 60 /"}),
              0);
    EXPECT_TRUE(says("05.03.2004      10.03.2004               5       1")) << out_;
    EXPECT_TRUE(says("05.03.2004      07.03.2004               2       0")) << out_;
    EXPECT_TRUE(says("00:00:00        23:59:00")) << out_;
    EXPECT_TRUE(says("line 4: a isn't a date of the form date0: \"29.02.2003\"")) << out_;
    EXPECT_TRUE(says("line 5: a isn't a date") && says("line 6: b isn't a time")) << out_;
    EXPECT_EQ(figures("d")[0], 0);
    EXPECT_EQ(figures("f")[1], 1439);
}

TEST_F(Messwerk, NamesTheResultAfterTheInput) {
    folder_.write("in.tar.csv", "1\n");
    EXPECT_EQ(run({"-k", "0", "-c", "a", "in.tar.csv"}), 0) << err_;
    EXPECT_EQ(folder_.read("in.tar-result.csv"), "\"a\";\n1.;\n");
    folder_.write("in\\a.csv", "1\n");
    EXPECT_EQ(run({"-k", "0", "-c", "a", "in\\a.csv"}), 2);
    EXPECT_EQ(run({"-c", "a", "/dev/stdin"}), 2);
}

TEST_F(Messwerk, NumbersLinesAsAnEditorDoes) {
    std::string const full = "5" + std::string(9190, ' ');  // all that a line has room for
    std::string const over = full + std::string(9191, ' ');
    for (std::string const end : {"\n", "\r\n"}) {
        std::string const content = "1" + end + end + over + end + end + full + end + '\0' + over +
                                    end + "x" + end + full + ' ' + end + "9";
        for (std::string const &last : {std::string(), end}) {
            ASSERT_EQ(runOn(content + last, "a"), 0);
            EXPECT_EQ(folder_.read("out.csv"), "\"a\";\n1.;\n5.;\n9.;\n");
            EXPECT_TRUE(says("7 read, 4 refused, 3 written\n        2 blank lines passed over"));
            for (char const *const line : {"line 3: the line has more", "line 6: the line has more",
                                           "line 7: a isn't", "line 8: the line has more"})
                EXPECT_TRUE(says(line)) << line << out_;
        }
    }
    folder_.write("in.csv", over + "\n\n1\nx\n");
    ASSERT_EQ(run({"-k", "2", "-c", "a", "-o", "out.csv", "in.csv"}), 0);
    EXPECT_TRUE(says("2 read") && says("line 4: a isn't")) << out_;
}

TEST_F(Messwerk, TakesAProfileAndPutsTheRunDown) {
    std::filesystem::create_directory(folder_.file("d"));
    folder_.write("d/in.csv", "h\n1,5\n2,7\n3,9\nx,1\n");
    std::string const profile = std::string(1023, '#') +
                                "\n[Input]\r\nFile=in.csv\r\nSeparator=,\r\nColumns=a, b\r\n"
                                "[Calculations]\r\n#none=sum\nsum = a b +\nlast = RCL_0 a STO_0 "
                                "CLX\n[Limits]\nsum=:10\nb=5:\n"
                                "[Output]\nFile=out .csv\n";
    folder_.write("d/p.INI", profile);
    ASSERT_EQ(run({"d/p.INI"}), 0) << err_;
    EXPECT_EQ(folder_.read("d/out .csv"),
              "\"a\",\"b\",\"sum\",\"last\",\n1.,5.,6.,0.,\n2.,7.,9.,1.,\n");
    EXPECT_TRUE(says("line 4: sum is 12, above 10") && says("line 5: a isn't")) << out_;
    std::string const written = folder_.read("d/p.INI");
    EXPECT_EQ(written.substr(0, profile.size()), profile);
    EXPECT_NE(written.find("\nRows=4\nRefused=2\nVersion=1.0.0.1\n"), std::string::npos) << written;

    folder_.write("d/p.INI", written + "Rows=5\n");
    ASSERT_EQ(run({"-x", "c=sum 1 -", "d/p.INI", "-o", "new.csv", "-l", "a= 2:2 "}), 0) << err_;
    EXPECT_EQ(folder_.read("new.csv"), "\"a\",\"b\",\"sum\",\"last\",\"c\",\n2.,7.,9.,0.,8.,\n");
    EXPECT_EQ(folder_.read("d/p.INI").find("[LastRun]"), written.find("[LastRun]"));
    for (auto const &[columns, fault] : std::map<std::string, std::string>{
             {"a:b", "a column is"},
             {"a\n[Plot]\nFile=D:\\x", "\"D:\\x\" leads to no file"},
             {std::string(1016, 'a'), "line 3 has more than 1023 characters"}}) {
        folder_.write("bad.ini", "[Input]\nFile=x\nColumns=" + columns);
        EXPECT_EQ(run({"bad.ini"}), 2);
        EXPECT_NE(err_.find("in \"bad.ini\", " + fault), std::string::npos) << err_;
    }
    EXPECT_EQ(run({"none.ini"}), 1);
    EXPECT_FALSE(std::filesystem::exists(folder_.file("none.ini")));
}

TEST_F(Messwerk, TracesAndShowsTheResult) {
    folder_.write("in.csv", "1\nx\n");
    Words const words = {"-k", "0", "-c", "a", "-o", "./o b.csv", "--view", "in.csv"};
    EXPECT_EQ(run(words, "LC_ALL=C TQTRACE=1 TQVIEW='cp -t d' %"), 0) << err_;
    EXPECT_EQ(folder_.read("messwerk.log"),
              "Start mit Level 1\nreading in.csv\nline 2: a isn't a number: \"x\"\n"
              "./o b.csv written: 2 rows read, 1 refused\nEnde des Programmes\n");
    std::filesystem::create_directory(folder_.file("d"));
    EXPECT_EQ(run(words, "LC_ALL=C TQVIEW='cp -t d' %"), 0) << err_;
    EXPECT_EQ(folder_.read("d/o b.csv"), "\"a\";\n1.;\n");
    EXPECT_EQ(run(words), 1);
    EXPECT_EQ(run(words, "TQVIEW=/none %"), 1);
}

TEST_F(Messwerk, ListsTheFirstTwentyRefusals) {
    std::string content;
    for (int i = 0; i < 23; ++i)
        content += "x\n";
    ASSERT_EQ(runOn(content, "a"), 0);
    EXPECT_TRUE(says("line 20: ") && !says("line 21: ") && says("and 3 more")) << out_;
}

TEST_F(Messwerk, ARefusedRowLeavesNoTraceInTheRegisters) {
    ASSERT_EQ(runOn("1\n0\n4\n", "a", {"-x", "sum = RCL_3 1 a / + STO_3", "-x", "one = 1"}), 0);
    EXPECT_EQ(folder_.read("out.csv"), "\"a\";\"sum\";\"one\";\n1.;1.;1.;\n4.;1.25;1.;\n");
}

TEST_F(Messwerk, MeansKeepWhatRoundingTakesFromThePlainSum) {
    ASSERT_EQ(runOn("1e16\n1\n1\n-1e16\n", "a"), 0);
    EXPECT_EQ(figures("a")[2], 0.5);
}

TEST_F(Messwerk, RefusesCommandLinesThatCannotBeCarriedOut) {
    struct Row {
        Words arguments;
        char const *message;
    } const rows[] = {
        {{}, "which file"},
        {{"-c", "a", "-o", "o"}, "which file"},
        {{"-o", "o", "in"}, "which columns"},
        {{"-c", "a", "/dev/null"}, "where is the result"},
        {{"-c", "a", "-o", "o", "in", "in2"}, "not \"in\" and \"in2\""},
        {{"-q"}, "no option \"-q\""},
        {{"in", "-c"}, "\"-c\" needs a value"},
        {{"-s", ";;", "in.csv"}, "one character"},
        {{"-k", "-1", "in.csv"}, "0 or more"},
        {{"-k", "1x", "in.csv"}, "0 or more"},
        {{"-s", ".", "-c", "a", "-o", "o", "in"}, "decimal character of the locale"},
        {{"-s", "5", "-c", "a", "-o", "o", "in"}, "can't be \"5\""},
        {{"-c", "a:date", "-o", "o", "in"}, "not \"date\""},
        {{"-c", "a,", "-o", "o", "in"}, "is empty"},
        {{"-c", "a,b c", "-o", "o", "in"}, "contains a blank"},
        {{"-c", "a;b", "-o", "o", "in"}, "contains \";\""},
        {{"-c", "a,#b", "-o", "o", "in"}, "begins with \"#\""},
        {{"-c", "1e5", "-o", "o", "in"}, "is a number"},
        {{"-c", "a,Sin:text", "-o", "o", "in"}, "\"Sin\" is a keyword"},
        {{"-c", "a,A", "-o", "o", "in"}, "is there twice"},
        {{"-c", "a", "-x", "a", "-o", "o", "in"}, "NAME = EXPRESSION"},
        {{"-c", "a", "-l", "a=1", "-o", "o", "in"}, "NAME = LOWEST:HIGHEST"},
        {{"-c", "a", "-l", "a=:", "-o", "o", "in"}, "NAME = LOWEST:HIGHEST"},
        {{"-c", "a", "-l", "a=x:1", "-o", "o", "in"}, "NAME = LOWEST:HIGHEST"},
        {{"-c", "a", "-l", "a=nan:1", "-o", "o", "in"}, "NAME = LOWEST:HIGHEST"},
        {{"-c", "a", "-l", "b=0:1", "-o", "o", "in"}, "no column \"B\""},
        {{"-c", "a:text", "-l", "a=0:1", "-o", "o", "in"}, "only numbers"},
        {{"-c", "a", "-c", "b", "-o", "o", "in"}, "\"-c\" is there twice"},
        {{"-c", "a", "-o", "o", ""}, "Its name is empty"},
    };
    for (auto const &[arguments, message] : rows) {
        EXPECT_EQ(run(arguments), 2) << message;
        EXPECT_NE(err_.find(message), std::string::npos) << err_ << message;
    }
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_TRUE(says("-x NAME = EXPR"));
}

TEST_F(Messwerk, RefusesExpressionsThatTheCalculatorWouldTake) {
    struct Row {
        std::string expression, message;
    } const rows[] = {
        {"r =", "is empty"},
        {"r = a c +", "\"c\" is neither keyword nor column nor number"},
        {"r = r", "\"r\" is neither"},
        {"r = 12abc", "\"12abc\" is neither"},
        {"r = a\t1 +", "\"a?1\" is neither"},
        {"r = sin(", "\"sin(\" is neither"},
        {"r = t", "\"t\" is a column of texts"},
        {"r = 1e999", "isn't a finite number"},
        {"r = +", "\"+\" finds too few values"},
        {"r = a +", "\"+\" finds too few values"},
        {"r = STO_0", "\"STO_0\" finds too few values"},
        {"r = a 1", "leaves 2 values instead of one"},
        {"a = 1", "is there twice"},
        {"PI = 1", "\"PI\" is a keyword"},
    };
    for (auto const &[expression, message] : rows) {
        EXPECT_EQ(runOn("1;x\n", "a,t:text", {"-x", expression}), 2) << expression;
        EXPECT_NE(err_.find(message), std::string::npos) << expression << err_;
        EXPECT_EQ(folder_.read("out.csv"), "");
    }
    std::string deep = "r = 1", sum;
    for (int i = 0; i < 5000; ++i) {
        deep += " a";
        sum += " +";
    }
    EXPECT_EQ(runOn("2\n", "a", {"-x", deep + sum}), 0) << err_;
    EXPECT_EQ(figures("r")[0], 10001);
}

TEST_F(Messwerk, AFailedRunSaysWhyAndLeavesTheOldResult) {
    folder_.write("in.csv", "h\n1\n");
    std::filesystem::create_symlink("in.csv", folder_.file("link"));
    struct Row {
        std::string output, input, message;
    } const rows[] = {
        {"old.csv", "missing", "can't read \"missing\": No such file"},
        {"old.csv", ".", "can't read \".\": Is a directory"},
        {"/dev/full", "in.csv", "can't write \"/dev/full\": No space left"},
        {"none/o.csv", "in.csv", "can't write \"none/o.csv\": No such file"},
        {".", "in.csv", "can't write \".\": Is a directory"},
        {"link", "in.csv", "the result and the input can't be one file, \"link\""},
        {"messages.out", "in.csv", "the result and the messages of this run can't be one"},
        {"/dev/stdout", "in.csv", "the result and the messages of this run can't be one"},
    };
    folder_.write("old.csv", "old");
    for (auto const &[output, from, message] : rows) {
        EXPECT_EQ(run({"-c", "a", "-o", output, from}), 1) << message;
        EXPECT_NE(err_.find(message), std::string::npos) << message << err_;
    }
    EXPECT_EQ(run({"-c", "a", "missing"}), 1) << "no result is named after it";
    std::string rows20000;
    for (int i = 0; i < 20000; ++i)
        rows20000 += "1\n";
    folder_.write("long.csv", rows20000);
    EXPECT_EQ(run({"-c", "a", "-o", "old.csv", "long.csv"}, "ulimit -f 8; trap '' XFSZ; %"), 1);
    EXPECT_NE(err_.find("can't write \"old.csv\": File too large"), std::string::npos) << err_;
    run({"-c", "a", "-o", "old.csv", "long.csv"}, "ulimit -f 8; %");  // ended by a signal
    EXPECT_EQ(run({"-c", "a", "-o", "new.csv", "in.csv"}, "TQTRACE=0 % >&-"), 1);
    EXPECT_EQ(folder_.read("messwerk.log").find("Input"), std::string::npos);
    std::filesystem::remove(folder_.file("messwerk.log"));
    EXPECT_EQ(run({"-c", "a", "-o", "new.csv", "in.csv"}, "% >/dev/full"), 1);
    EXPECT_NE(err_.find("can't write the summary: No space left"), std::string::npos) << err_;
    EXPECT_EQ(folder_.read("old.csv"), "old");
    EXPECT_EQ(folder_.read("in.csv"), "h\n1\n");
    auto const entries = std::filesystem::directory_iterator(folder_.file(""));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 7) << "something is left over";
}

TEST_F(Messwerk, KeepsTheFilesOfARunApart) {
    struct Row {
        std::string input, output, picture, message;
    } const rows[] = {
        {"in.csv", "o.csv", "./in.csv", "the picture and the input"},
        {"in.csv", "o.csv", "none/../o.csv", "the picture and the result"},
        {"in.csv", "p.ini", "p.bmp", "the result and the profile"},
        {"in.csv", "o.csv", "messages.err", "the picture and the messages"},
        {"messwerk.log", "o.csv", "p.bmp", "the log and the input"},
    };
    for (auto const &[input, output, picture, message] : rows) {
        std::string const profile = "[Input]\nFile=" + input +
                                    "\nColumns=a\n[Output]\nFile=" + output +
                                    "\n[Plot]\nAcross=a\nColumns=a\nFile=" + picture;
        folder_.write("p.ini", profile);
        folder_.write(input, "h\n1\n");
        EXPECT_EQ(run({"p.ini"}, "LC_ALL=C TQTRACE=0 %"), 1);
        EXPECT_NE(err_.find(message), std::string::npos) << message << err_;
        EXPECT_EQ(folder_.read(input) + folder_.read("p.ini"), "h\n1\n" + profile);
    }
}

TEST_F(Messwerk, ReadsAndWritesEachForm) {
    std::string const columns = "Columns=name:text,n,-,x\n";
    std::string const input = "[Input]\nFile=in\nHeaderLines=0\n" + columns;
    struct Row {
        std::string profile, content, result, refusal;
    } const rows[] = {
        {"Form=text\n[Output]\nFile=out\n", "ab 1 - 2.5\n  c=3 = - 4\n",
         "\"name\";\"n\";\"x\";\n\"ab\";1.;2.5;\n\"c\";3.;4.;\n", ""},
        {"Form=text\n[Output]\nFile=out\nForm=text\n", "ab 1 - 2.5\na 1 2\n\"a\" 1 - 2\n",
         "name n x \nab 1. 2.5 \n", "line 2: 3 fields instead of 4"},
        {"[Output]\nFile=out\nForm=text\n", "a;1;-;2\na b;1;-;2\n", "name n x \na 1. 2. \n",
         "line 2: name can't be written: there is \" \" in \"a b\""},
        {"Form=columns\nLayout=A3 I2 X1 A1 F5.2\n[Output]\nFile=out\n",
         "ab  1 - 2.50\nx   2 -     \nlon 3 -12345\ny   1 -  2.5\r\n",
         "\"name\";\"n\";\"x\";\n\"ab\";1.;2.5;\n\"lon\";3.;12345.;\n\"y\";1.;2.5;\n",
         "line 2: x is empty"},
        {"[Output]\nFile=out\nForm=columns\nLayout=X1 A3, I2 f6.2\n",
         "a;1;;-2.5\nabcd;1;;2\na;1.5;;2\na;100;;2\na;1;;9999\n", " nam n     x\n a   1 -2.50\n",
         "line 5: x has no room in the field F6.2"},
    };
    for (auto const &row : rows) {
        folder_.write("in", row.content);
        folder_.write("p.ini", input + row.profile);
        EXPECT_EQ(run({"p.ini"}), 0) << err_;
        EXPECT_EQ(folder_.read("out"), row.result) << row.profile << out_;
        EXPECT_TRUE(says(row.refusal)) << out_;
    }
    for (char const *bad : {"Form=csv", "Form=columns", "Form=columns\nLayout=A3 A2 A1 F5.2",
                            "Layout=A3 Q2", "Layout=F5.5", "Layout=A0", "Layout=I99999"}) {
        folder_.write("p.ini", input + bad + "\n[Output]\nFile=out\n");
        EXPECT_EQ(run({"p.ini"}), 2) << bad;
    }
}

TEST_F(Messwerk, PlotsColumnsIntoABitmap) {
    folder_.write("in.csv", "h\n2020-01-01;1;5\n2020-06-01;3;x\n2021/01.01;2;7\n");
    auto const profile = [&](std::string const &plot) {
        folder_.write("p.ini",
                      "[Input]\nFile=in.csv\nColumns=day:iso,a,b\n[Output]\nFile=o.csv\n"
                      "[Plot]\nFile=p.bmp\n" +
                          plot);
        return run({"p.ini"});
    };
    EXPECT_EQ(profile("Title=Two days\nAcross=Day\nColumns=a, B\n"), 0) << err_;
    std::string const picture = folder_.read("p.bmp");
    EXPECT_EQ(picture.size(), 54u + 4 * 256 + 960 * 540);
    EXPECT_EQ(picture.substr(0, 2), "BM");
    auto const has = [&](int color) {  // in its full strength, beyond the colour table
        return picture.find(static_cast<char>(color), 54 + 4 * 256) != std::string::npos;
    };
    EXPECT_TRUE(has(3 * 15) && has(4 * 15) && !has(5 * 15)) << "two series";
    for (char const *bad : {"Across=none\nColumns=a", "Across=day\nColumns=a,c", "Across=day\n"})
        EXPECT_EQ(profile(bad), 2) << bad;
    EXPECT_EQ(profile("Across=day\nColumns=a\nFile=none/p.bmp"), 0);  // the first file counts
}

TEST_F(Messwerk, ReplacesTheFileBehindALinkAndKeepsItsPermissions) {
    folder_.write("a\\b.csv", "h\n1\n");
    chmod(folder_.write("old.csv", "old").c_str(), 0640);
    std::filesystem::create_symlink("old.csv", folder_.file("link"));
    EXPECT_EQ(run({"-c", "a", "-o", "link", "a\\b.csv"}), 0) << err_;
    EXPECT_EQ(folder_.read("old.csv"), "\"a\";\n1.;\n");
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.file("link")));
    EXPECT_EQ(static_cast<int>(std::filesystem::status(folder_.file("old.csv")).permissions()),
              0640);
}

TEST_F(Messwerk, WorksInAPipe) {
    EXPECT_EQ(
        run({"-c", "a", "-o", "/dev/stdout", "/dev/stdin"}, "printf 'h\\n1\\n\\n2' | % | cat"), 0);
    EXPECT_EQ(out_, "\"a\";\n1.;\n2.;\n");
    EXPECT_NE(err_.find("2 read, 0 refused"), std::string::npos) << err_;
    folder_.write("p.ini",
                  "[Input]\nFile=/dev/stdin\nForm=columns\nLayout=A2 X1 F3.1\nColumns=n:text,a\n"
                  "[Output]\nFile=o.csv\n");
    EXPECT_EQ(run({"p.ini"}, "printf 'h\\nab 1.5\\nc\\0d 2.5\\n\\ncd   3' | %"), 0) << err_;
    EXPECT_EQ(folder_.read("o.csv"), "\"n\";\"a\";\n\"ab\";1.5;\n\"cd\";3.;\n");
}

TEST_F(Messwerk, TakesTheDecimalCharacterOfTheEnvironment) {
    ASSERT_EQ(std::system(("localedef --no-archive -i de_DE -f UTF-8 " +
                           shellWord(folder_.file("de_DE.UTF-8")))
                              .c_str()),
              0);
    std::string const german = "LOCPATH=" + shellWord(folder_.file("")) + " LC_ALL=de_DE.UTF-8 %";
    folder_.write("in.csv", "h\n1,5\n1.5\n");
    EXPECT_EQ(run({"-c", "a", "-x", "b = a 0,5 +", "-o", "out.csv", "in.csv"}, german), 0) << err_;
    EXPECT_EQ(folder_.read("out.csv"), "\"a\";\"b\";\n1,5;2,;\n");
    EXPECT_TRUE(says("line 3: a isn't a number: \"1.5\"")) << out_;
    EXPECT_EQ(run({"-s", ",", "-c", "a", "-o", "out.csv", "in.csv"}, german), 2);
}

TEST_F(Messwerk, AsksBeforeItReplacesAFile) {
    replaces_ = false;
    folder_.write("in.csv", "1\n");
    folder_.write("p.ini",
                  "[Input]\nFile=in.csv\nHeaderLines=0\nColumns=a\n[Output]\nFile=o.csv\n"
                  "[Plot]\nFile=o.bmp\nAcross=a\nColumns=a\n");
    struct Row {
        char const *keys;
        int code;
        bool csv, bmp;  // replaced
    } const rows[] = {{"\x1Bl", 0, true, true},  {"jj", 0, true, true},
                      {"n\tj", 0, false, true},  {"j\r", 0, true, false},
                      {"\x1B", 1, false, false}, {"j\t\r", 1, false, false}};
    for (auto const &[keys, code, csv, bmp] : rows) {
        SCOPED_TRACE(keys);
        folder_.write("o.csv", "old");
        folder_.write("o.bmp", "old");
        auto terminal = atTerminal({"p.ini"});
        EXPECT_TRUE(terminal.shows("\"o.csv\" existiert bereits!"));
        EXPECT_FALSE(terminal.isAtRest());
        terminal.type(std::string(keys) == "\x1Bl" ? "\t\t\t\r" : keys);
        int const status = terminal.end();
        EXPECT_EQ(WEXITSTATUS(status), code) << terminal.output();
        EXPECT_EQ(folder_.read("o.csv") != "old", csv);
        EXPECT_EQ(folder_.read("o.bmp") != "old", bmp);
        EXPECT_NE(terminal.output().find("\x1B[?1049l"), std::string::npos);
    }
    std::string const end = "a&b" + std::string(25, 'c') + ".csv";  // of a path that is too long
    auto terminal = atTerminal({"-c", "a", "-o", folder_.write("x" + end, "old"), "in.csv"});
    EXPECT_TRUE(terminal.shows("\"..." + end + "\" existiert bereits!"));
    EXPECT_TRUE(terminal.shows("Soll sie ersetzt werden?"));
    EXPECT_EQ(run({"p.ini"}), 1);
    EXPECT_NE(err_.find("\"o.csv\" is there already; -f replaces it"), std::string::npos) << err_;
}

TEST_F(Messwerk, RestoresTheTerminalWhenItIsKilled) {
    replaces_ = false;
    folder_.write("in.csv", "1\n");
    folder_.write("o.csv", "old");
    for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGSEGV, SIGABRT}) {
        auto terminal = atTerminal({"-c", "a", "-o", "o.csv", "in.csv"});
        EXPECT_TRUE(terminal.shows("existiert bereits!"));
        terminal.resize(40, 120);
        EXPECT_TRUE(terminal.shows("\x1B[40;1H")) << "drawn for the other size";
        terminal.send(signal);
        EXPECT_TRUE(terminal.shows("\x1B[?1049l"));
        int const status = terminal.end();
#if defined(__SANITIZE_ADDRESS__)
        if (signal == SIGSEGV) continue;  // reported, and no longer a signal
#endif
        EXPECT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) : 0, signal);
        EXPECT_TRUE(terminal.isAtRest());
    }
    EXPECT_EQ(folder_.read("o.csv"), "old");
}

TEST_F(Messwerk, ChangesAProfileInADialog) {
    std::string const profile =
        "# kept\n[Input]\nFile=in.csv\nColumns=a,b\n[Calculations]\n# kept too\nsum=a b +\n"
        "twice=sum 2 *\n[Limits]\na=1:2\nb=:7\n[Output]\nFile=o.csv\n";
    folder_.write("p.ini", profile);
    auto escaped = atTerminal({"--edit", "p.ini"});
    EXPECT_TRUE(escaped.shows("renzen f\xC3\xBCr"));
    escaped.type("x\x1B");
    EXPECT_EQ(escaped.end(), 0);
    EXPECT_EQ(folder_.read("p.ini"), profile);

    auto terminal = atTerminal({"--edit", "p.ini"});
    EXPECT_TRUE(terminal.shows("renzen f\xC3\xBCr"));
    terminal.type("new.csv\x1Bv3\r");  // 3 is above the other limit
    EXPECT_TRUE(terminal.shows("Der eingegebene Wert ist zu klein!"));
    terminal.type(
        "\r\x1B"
        "b0\t\r");
    EXPECT_TRUE(terminal.shows("Der eingegebene Wert ist zu klein!"));
    terminal.type("\r4\x1Bg\x1BOS\x1B[B");  // corrected; b is looked at in the list
    EXPECT_TRUE(terminal.shows("is [7"));
    terminal.type("\x1B");
    EXPECT_TRUE(terminal.shows("on [3"));
    terminal.type("\t\t5\x1Brsum = a b *");
    terminal.type("\x1Bk12\r");
    EXPECT_TRUE(terminal.shows("beibehalten"));
    terminal.type("\r");
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_EQ(folder_.read("p.ini"),
              "# kept\n[Input]\nHeaderLines=12\nFile=new.csv\nColumns=a,b\n[Calculations]\n"
              "sum=a b *\ntwice=sum 2 *\n# kept too\n[Limits]\na=3:5\nb=:7\n[Output]\n"
              "File=o.csv\n");
    EXPECT_EQ(run({"--edit", "p.ini"}), 1);
    EXPECT_EQ(run({"--edit", "in.csv"}), 2);

    std::string const other =
        "[Input]\nFile=/dev/stdin\nColumns=\xC3\x9C,b\n[Calculations]\n\xCE\xB1=1\ns=b 1 +\n";
    std::string const limits = "[Limits]\ns=1:\n";
    folder_.write("p.ini", other + limits);
    auto adds = atTerminal({"--edit", "p.ini"});
    EXPECT_TRUE(adds.shows("renzen f\xC3\xBCr"));
    adds.type("D:\\x\r");
    EXPECT_TRUE(adds.shows("leads to no file"));
    adds.type("\r/dev/stdin\x1Brs =\r");
    EXPECT_TRUE(adds.shows("no column \"S\" to be limited"));
    adds.type("\r\x1Br\xC3\xA4 = \xC3\x9C 1 +\r");
    EXPECT_EQ(adds.end(), 0);
    EXPECT_EQ(folder_.read("p.ini"), other + "\xC3\xA4=\xC3\x9C 1 +\n" + limits);
    auto removes = atTerminal({"--edit", "p.ini"});
    EXPECT_TRUE(removes.shows("renzen f\xC3\xBCr"));
    removes.type("\x1Br\xC3\xA4 =\r");
    EXPECT_EQ(removes.end(), 0);
    EXPECT_EQ(folder_.read("p.ini"), other + limits);
}

}  // namespace
