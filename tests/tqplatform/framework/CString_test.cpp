#include "tqplatform/framework/CString.h"

#include <gtest/gtest.h>

#include <new>
#include <random>
#include <sstream>
#include <string>

namespace {

TEST(CString, AgreesWithAStdStringThroughRandomChanges) {
    std::mt19937 random(1);
    auto const below = [&](std::size_t bound) { return static_cast<int>(random() % bound); };
    CString text;
    std::string model;
    for (int step = 0; step < 20000; ++step) {
        CString const piece(static_cast<char>('a' + below(26)), below(40));
        std::string const plain(piece);
        int const at = below(60) - 5, count = below(60) - 5;
        switch (below(9)) {
            case 0:
                text += piece, model += plain;
                break;
            case 1:
                text += 'x', model += 'x';
                break;
            case 2:
                text = piece, model = plain;
                break;
            case 3:
                text = text + piece, model = model + plain;
                break;
            case 4:
                text = text.Left(at), model = model.substr(0, std::max(at, 0));
                break;
            case 5:
                text += text, model += model;
                break;
            case 6: {
                std::size_t const first = std::min<std::size_t>(std::max(at, 0), model.size());
                text = text.Mid(at, count), model = model.substr(first, std::max(count, 0));
                break;
            }
            case 7: {
                std::size_t const kept = std::min<std::size_t>(std::max(at, 0), model.size());
                text = text.Right(at), model = model.substr(model.size() - kept);
                break;
            }
            default: {
                CString moved(std::move(text));
                EXPECT_EQ(text.GetLength(), 0);
                text = std::move(moved);
            }
        }
        if (model.size() > 300) text.Empty(), model.clear();
        ASSERT_EQ(std::string(text), model) << step;
        ASSERT_EQ(text.GetLength(), static_cast<int>(model.size()));
        std::size_t const found = model.find(plain);
        ASSERT_EQ(text.Find(piece), found == std::string::npos ? -1 : static_cast<int>(found));
    }
}

TEST(CString, AppendsAPartOfItself) {
    CString text = "0123456789";
    for (int i = 0; i < 4; ++i)
        text += static_cast<char const *>(text) + 5;
    EXPECT_EQ(text.Left(20), "01234567895678956789");
    text = static_cast<char const *>(text) + 8;
    EXPECT_EQ(text.Left(4), "8956");
}

TEST(CString, FindsCharacters) {
    CString const text = "a;b,c;";
    EXPECT_EQ(text.FindOneOf(",;"), 1);
    EXPECT_EQ(text.FindOneOf(""), -1);
    EXPECT_EQ(text.FindOneOf("x"), -1);
    EXPECT_EQ(text.ReverseFind(';'), 5);
    EXPECT_EQ(text.ReverseFind('x'), -1);
    EXPECT_EQ(text.Find(""), 0);
    EXPECT_EQ(text.Mid(9), "");
    EXPECT_EQ(text[6], '\0');
    EXPECT_EQ(text[-1], '\0');
}

TEST(CString, BufferAccessSetsTheLength) {
    CString text = "abc";
    std::string(100, 'x').copy(text.GetBuffer(100), 100);
    text.ReleaseBuffer(5);
    EXPECT_EQ(text, "xxxxx");
    text.GetBufferSetLength(3);
    EXPECT_EQ(text, "xxx");
    text.GetBuffer(0)[1] = '\0';
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 1);
    text.GetBuffer(200);
    text.ReleaseBuffer(1000);
    EXPECT_EQ(text.GetLength(), 200);
}

TEST(CString, FormatsArgumentsOutOfItself) {
    CString text = "abc";
    text.Format("%s-%s-%d", static_cast<char const *>(text), static_cast<char const *>(text), 7);
    EXPECT_EQ(text, "abc-abc-7");
    text.Format("%1000s|", "x");
    EXPECT_EQ(text.GetLength(), 1001);
}

TEST(CString, TrimsAndLowers) {
    CString text = " \t\r\n\v\f a b \xA0 ";
    text.TrimLeft();
    text.TrimRight();
    EXPECT_EQ(text, "a b \xA0");
    CString blank = " \t ";
    blank.TrimLeft();
    EXPECT_EQ(blank, "");
    CString capitals = "\xC4\xD6\xDC GRO\xDF";
    capitals.MakeLower();
    EXPECT_EQ(capitals, "\xE4\xF6\xFC gro\xDF");
}

TEST(CString, ARequestBeyondTheLimitLeavesTheText) {
    CString text = "kept";
    EXPECT_THROW(text.GetBuffer(2147483647), std::bad_alloc);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(CString('x', -3), "");
}

TEST(CString, MeetsStdStreamsAndComparesByContent) {
    std::istringstream in("first second");
    CString a, b;
    in >> a >> b;
    std::ostringstream out;
    out << a << '|' << b;
    EXPECT_EQ(out.str(), "first|second");
    EXPECT_LT(a, b);
    EXPECT_EQ(a + '-' + b, "first-second");
    EXPECT_EQ("x" + a, "xfirst");
}

}  // namespace
