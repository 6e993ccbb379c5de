#include "tqlib/foundation/TQString.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "support/Files.h"
#include "tqplatform/framework/CFile.h"

namespace {

struct Token {
    std::string text;
    int next;
    bool operator==(Token const &) const = default;
};

std::ostream &operator<<(std::ostream &stream, Token const &token) {
    return stream << '"' << token.text << "\" " << token.next;
}

std::vector<Token> tokensOf(TQString const &text, char const *separators, int skip) {
    std::vector<Token> tokens;
    for (int at = 0; at != -1;) {
        TQString token;
        at = text.GetToken(token, at, separators, skip);
        tokens.push_back({std::string(token), at});
    }
    return tokens;
}

TEST(TQString, GetTokenWalksFromTokenToToken) {
    struct Row {
        char const *text, *separators;
        int skip;
        std::vector<Token> tokens;
    } const rows[] = {
        {"a,b;;c", ",;", 0, {{"a", 2}, {"b", 4}, {"", 5}, {"c", -1}}},
        {"a,b;;c", ",;", 1, {{"a", 2}, {"b", 5}, {"c", -1}}},
        {"", ",", 1, {{"", -1}}},
        {"abc", "", 1, {{"abc", -1}}},
        {"ab,", ",", 0, {{"ab", 3}, {"", -1}}},
        {"ab,", ",", 1, {{"ab", 3}, {"", -1}}},
        {"a,,,", ",", 1, {{"a", 4}, {"", -1}}},
        {",,a", ",", 1, {{"", 2}, {"a", -1}}},
    };
    for (auto const &row : rows)
        EXPECT_EQ(tokensOf(row.text, row.separators, row.skip), row.tokens) << row.text;
}

TEST(TQString, GetTokenTakesAnyStart) {
    TQString const text = "ab,c";
    TQString token = "old";
    for (int const start : {4, 5, 2147483647}) {
        EXPECT_EQ(text.GetToken(token, start, ",", 0), -1);
        EXPECT_EQ(token, "");
    }
    EXPECT_EQ(text.GetToken(token, -3, ",", 0), 3);
    TQString self = "x y";
    EXPECT_EQ(self.GetToken(self, 0, " ", 1), 2);
    EXPECT_EQ(self, "x");
}

// Fits by trying every length for every star.
bool plainMatch(char const *pattern, char const *text) {
    if (*pattern == '\0') return *text == '\0';
    if (*pattern == '*')
        return plainMatch(pattern + 1, text) || (*text != '\0' && plainMatch(pattern, text + 1));
    return *text != '\0' && (*pattern == '?' || *pattern == *text) &&
           plainMatch(pattern + 1, text + 1);
}

// All words of up to `length` letters of `alphabet`.
std::vector<std::string> allWords(std::string const &alphabet, std::size_t length) {
    std::vector<std::string> words{""};
    for (std::size_t first = 0; words[first].size() < length; ++first)
        for (char const c : alphabet)
            words.push_back(words[first] + c);
    return words;
}

TEST(TQString, MatchAgreesWithAPlainMatcherOnAllShortWords) {
    for (auto const &pattern : allWords("ab?*", 5))
        for (auto const &text : allWords("ab", 5))
            ASSERT_EQ(TQString::Match(pattern.c_str(), text.c_str()),
                      plainMatch(pattern.c_str(), text.c_str()))
                << pattern << " on " << text;
}

TEST(TQString, ScanGoesToTheFirstPlaceThatFits) {
    for (auto const &rest : allWords("ab?*", 4)) {
        for (auto const &word : allWords("ab", 5)) {
            std::string pattern = "*" + rest, given = word;
            char *p = pattern.data(), *t = given.data();
            bool const fits = TQString::Scan(p, t);
            ASSERT_EQ(fits, plainMatch(pattern.c_str(), word.c_str())) << pattern << " on " << word;
            if (*t == '\0') continue;
            // The rest fits here, and no place before has this one's character and fits.
            ASSERT_TRUE(fits && *t == *p && plainMatch(p, t)) << pattern << " on " << word;
            auto const skipped = std::count(pattern.data(), p, '?');
            for (char *before = given.data() + skipped; before < t; ++before)
                ASSERT_FALSE(*before == *p && plainMatch(p, before)) << pattern << " on " << word;
        }
    }
}

TEST(TQString, SearchIsAboutTheWholeTextAndHasNoClasses) {
    EXPECT_FALSE(TQString("xabcx").Search("abc"));
    EXPECT_TRUE(TQString("xabcx").Search("*abc*"));
    EXPECT_FALSE(TQString("a").Search("[ab]"));
    EXPECT_FALSE(TQString("a.txt").Search("*.TXT"));
    EXPECT_TRUE(TQString().Search(nullptr));
    EXPECT_TRUE(TQString::Match("*", nullptr));
}

TEST(TQString, MatchStaysFastOnManyStars) {
    std::string const text(100000, 'a');
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(TQString::Match("*a*a*a*a*a*a*a*a*b", text.c_str()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(TQString, TakesWhatCStringOperationsGive) {
    CString const base = "abc";
    TQString text;
    text = base;
    text = text + "d";
    text = text.Mid(1, 2);
    EXPECT_EQ(text, "bc");
}

TEST(TQString, EditsSingleCharacters) {
    TQString text = "a-b-c";
    EXPECT_EQ(text.CountChar('-'), 2);
    EXPECT_EQ(text.ReplaceChar('-', '+'), 2);
    EXPECT_EQ(text, "a+b+c");
    TQString chars = "+c";
    text.RemoveChars(chars);
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(chars, "+c");
    TQString cut = "a-b-c";
    EXPECT_EQ(cut.ReplaceChar('-', '\0'), 2);
    EXPECT_EQ(cut.GetLength(), 1);
    EXPECT_EQ(TQString("abc").Last(), 'c');
    EXPECT_EQ(TQString().Last(), '\0');
    EXPECT_EQ(TQString(" \t a b \r\n").Trim(), "a b");
}

TEST(TQString, ConvertsLineEndsAndDosLetters) {
    TQString text = "a\r\nb, c\rd\ne";
    text.ConvertCtrlEnterToCSV();
    EXPECT_EQ(text, "a, b, c,d e");
    text.ConvertCSVToCtrlEnter();
    EXPECT_EQ(text, "a\r\nb\r\nc,d e");
    TQString commas = ",, ,  ";
    commas.ConvertCSVToCtrlEnter();
    EXPECT_EQ(commas, ",\r\n\r\n ");

    std::string const dos = "\xE1\x84\x94\x81\x8E\x99\x9A";
    std::string const windows = "\xDF\xE4\xF6\xFC\xC4\xD6\xDC";
    for (int byte = 1; byte < 256; ++byte) {
        char const c = static_cast<char>(byte);
        TQString letter(c, 1u);
        letter.ConvertDosToWindows();
        std::size_t const at = dos.find(c);
        EXPECT_EQ(letter[0], at == std::string::npos ? c : windows[at]) << byte;
    }
}

TEST(TQString, LoadsResourceTexts) {
    TQString text = "old";
    EXPECT_EQ(text.AppendString(960), 1);
    EXPECT_EQ(text, "oldJa");
    EXPECT_EQ(text.AppendString(1), 0);
    EXPECT_EQ(text.AppendString(1, '!'), 0);
    EXPECT_EQ(text, "oldJa!");
    EXPECT_EQ(text.LoadStringA(961), "Nein");
    EXPECT_EQ(text, "Nein");
    EXPECT_EQ(TQString(960u, 42), "Ja42");
    EXPECT_EQ(TQString(1u, -42), "-42");
}

TEST(TQString, WritesToAFileWithoutALineEnd) {
    TemporaryFolder const folder;
    TQString text = "first";
    {
        CFile file(folder.file("a").c_str(), CFile::modeWrite | CFile::modeCreate);
        text.Write(&file);
        text.Write(&file, "second");
        text.Write(&file, 960);
    }
    EXPECT_EQ(folder.read("a"), "firstsecondJa");
    text.Write(nullptr, "kept");
    EXPECT_EQ(text, "kept");
}

}  // namespace
