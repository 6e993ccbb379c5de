#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TestDialog.h"
#include "tqplatform/desktop/ScriptedUser.h"
#include "tqplatform/desktop/TerminalKeys.h"
#include "tqplatform/desktop/TextView.h"

namespace {

using tqplatform::Input;
using tqplatform::TextScreen;

std::string nameOf(std::optional<Input> const &input) {
    if (!input) return "-";
    std::string const name = std::string(input->alt ? "Alt-" : "") + (input->shift ? "Shift-" : "");
    if (input->kind == Input::Kind::character) return name + input->character;
    return name + "VK" + std::to_string(input->key);
}

TEST(TerminalKeys, AreReadFromTheirBytes) {
    struct Row {
        std::string bytes;
        char const *key;
    } const rows[] = {{"a", "a"},
                      {"\xC3\xA4", "\xE4"},
                      {"\xE2\x82\xAC", "\x80"},
                      {"\xE2\x82\xAD", "-"},
                      {"\xF0\x9F\x98\x80", "-"},
                      {"\xFF", "-"},
                      {"\t", "VK9"},
                      {"\r", "VK13"},
                      {"\n", "VK13"},
                      {"\x7F", "VK8"},
                      {"\b", "VK8"},
                      {" ", "VK32"},
                      {"\x01", "-"},
                      {"\x1B", "VK27"},
                      {"\x1B[A", "VK38"},
                      {"\x1B[B", "VK40"},
                      {"\x1BOC", "VK39"},
                      {"\x1B[D", "VK37"},
                      {"\x1B[H", "VK36"},
                      {"\x1B[1~", "VK36"},
                      {"\x1B[F", "VK35"},
                      {"\x1B[4~", "VK35"},
                      {"\x1B[3~", "VK46"},
                      {"\x1B[5~", "VK33"},
                      {"\x1B[6~", "VK34"},
                      {"\x1BOS", "VK115"},
                      {"\x1B[14~", "VK115"},
                      {"\x1B[Z", "Shift-VK9"},
                      {"\x1B[1;2D", "Shift-VK37"},
                      {"\x1B[1;3B", "Alt-VK40"},
                      {"\x1B[1;4B", "Alt-Shift-VK40"},
                      {"\x1B[3;2~", "Shift-VK46"},
                      {"\x1B[15~", "-"},
                      {"\x1B[1;5C", "VK39"},
                      {"\x1B[?25h", "-"},
                      {"\x1Bj", "Alt-j"},
                      {"\x1B\xC3\xA4", "Alt-\xE4"},
                      {"\x1B\r", "Alt-VK13"},
                      {"\x1B[", "Alt-["},
                      {"\x1B[99999999999999999999~", "-"}};
    for (auto const &[bytes, key] : rows) {
        auto const read = tqplatform::readTerminalKey(bytes, true, true);
        EXPECT_EQ(nameOf(read.input), key) << testing::PrintToString(bytes);
        EXPECT_EQ(read.bytes, bytes.size()) << testing::PrintToString(bytes);
        if (bytes.size() == 1) continue;
        // A part of it waits for the rest.
        auto const part =
            tqplatform::readTerminalKey(bytes.substr(0, bytes.size() - 1), true, false);
        EXPECT_EQ(part.bytes, 0u) << testing::PrintToString(bytes);
    }
    EXPECT_EQ(nameOf(tqplatform::readTerminalKey("\xE4", false, true).input), "\xE4");
    EXPECT_EQ(tqplatform::readTerminalKey("\x1B\x1B[A", true, false).bytes, 1u);
    EXPECT_EQ(nameOf(tqplatform::readTerminalKey("\x1B[\x1B[A", true, false).input), "Alt-[");
    EXPECT_EQ(tqplatform::readTerminalKey("\x1B[1;\x1B[A", true, false).bytes, 4u);
}

std::string picture(TextScreen const &screen) {
    std::string all;
    for (int row = 0; row < screen.rows(); ++row)
        all += screen.row(row) + '\n';
    return all;
}

TEST(TextView, ShowsADialog) {
    tqplatform::ScriptedUser user;
    TestDialog dialog;
    dialog.opened = [&] {
        for (char const *const item : {"null", "eins", "zwei"})
            dialog.sendText(TestDialog::list, CB_ADDSTRING, item);
        dialog.sendText(TestDialog::field, WM_SETTEXT, "a\x01\xFC");
        EnableWindow(GetDlgItem(dialog.m_hWnd, IDCANCEL), 0);
    };
    user.press(VK_TAB).press(VK_TAB).press(VK_DOWN).press(VK_F4).then([&] {
        TextScreen wide(14, 60, false);
        tqplatform::drawDialog(wide, dialog.m_hWnd);
        EXPECT_EQ(picture(wide),
                  "\n"
                  "  +- Pr?fung -------------------------------------------+\n"
                  "  |                                                     |\n"
                  "  | Wert       [a ?               ]   [            ]v   |\n"
                  "  |                                   +-------------+   |\n"
                  "  |            [                 ]v   |             |   |\n"
                  "  |                                   +-------------+   |\n"
                  "  |            [null             ]v                     |\n"
                  "  |            +------------------+                     |\n"
                  "  | [  Los   ] |null              |en ]                 |\n"
                  "  |            |eins              |                     |\n"
                  "  |            |zwei              |                     |\n"
                  "  +------------+------------------+---------------------+\n"
                  "\n");
        // Moved so that the focus can be seen, and cut.
        TextScreen small(5, 24, false);
        tqplatform::drawDialog(small, dialog.m_hWnd);
        EXPECT_EQ(small.row(2), "|  [null             ]v|");
        TextScreen narrow(5, 12, false);
        tqplatform::drawDialog(narrow, dialog.m_hWnd);
        EXPECT_EQ(narrow.row(2), "|[null   ]v|");
        dialog.SetWindowTextA("A title that is longer than the dialog");
        dialog.sendText(TestDialog::label, WM_SETTEXT, "a && b && c d");
        tqplatform::drawDialog(small, dialog.m_hWnd);
        EXPECT_EQ(small.row(0), "+- A title that is long+");
        tqplatform::drawDialog(wide, dialog.m_hWnd);
        EXPECT_EQ(wide.row(3), "  | a & b & c  [a ?               ]   [            ]v   |");
        TextScreen tiny(1, 1, true);
        tqplatform::drawDialog(tiny, dialog.m_hWnd);
        EXPECT_NE(wide.bytes().find("\x1B[0;7mnull"), std::string::npos);
    });
    dialog.DoModal();
}

TEST(TextView, WrapsTexts) {
    struct Row {
        char const *text;
        int width;
        std::vector<std::string> lines;
    } const rows[] = {{"", 5, {""}},
                      {"ab cd", 5, {"ab cd"}},
                      {"ab cd", 4, {"ab", "cd"}},
                      {"abcdef", 4, {"abcd", "ef"}},
                      {"a\n\nb", 4, {"a", "", "b"}},
                      {"a\n", 4, {"a", ""}},
                      {"ab  cd", 3, {"ab ", "cd"}},
                      {" abcd", 4, {" abc", "d"}},
                      {"x", 0, {"x"}},
                      {"eins zwei drei", 9, {"eins zwei", "drei"}}};
    for (auto const &[text, width, lines] : rows)
        EXPECT_EQ(tqplatform::wrapText(text, width), lines) << text;
}

}  // namespace
