#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <string>
#include <vector>

#include "support/TestDialog.h"
#include "tqlib/dialogs/CDoubleEdit.h"
#include "tqlib/dialogs/CNumEdit.h"
#include "tqplatform/desktop/ScriptedUser.h"

namespace {

using tqplatform::ScriptedUser;

template <class Edit>
std::string typed(Edit &edit, std::string const &keys, ScriptedUser &user, LRESULT badInput = 0) {
    TestDialog dialog;
    dialog.badInput = badInput;
    std::string text;
    dialog.opened = [&] { EXPECT_EQ(edit.SubclassDlgItem(TestDialog::field, &dialog), 1); };
    user.type(keys).then([&] { text = dialog.textOf(TestDialog::field); });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(text == keys, dialog.notes.find("101:32768") == std::string::npos);
    return text;
}

TEST(NumericEdits, RefuseLetters) {
    struct Row {
        char const *keys, *number, *floating;
        unsigned int numberBeeps, floatingBeeps;
    } const rows[] = {{"-1.5e3E", "-1.53", "-1.5e3E", 2, 0},
                      {"x12ab", "12", "12", 3, 3},
                      {"\xE4\xDF\xB5+*/", "+*/", "+*/", 3, 3},
                      {"\x80\xD7 7", "\x80\xD7 7", "\x80\xD7 7", 0, 0}};
    for (auto const &[keys, number, floating, numberBeeps, floatingBeeps] : rows) {
        SCOPED_TRACE(keys);
        ScriptedUser user;
        CNumEdit numberEdit;
        EXPECT_EQ(typed(numberEdit, keys, user), number);
        EXPECT_EQ(user.beeps, std::vector<unsigned int>(numberBeeps, 0xFFFFFFFF));
        CDoubleEdit doubleEdit;
        EXPECT_EQ(typed(doubleEdit, keys, user), floating);
        EXPECT_EQ(user.beeps.size(), numberBeeps + floatingBeeps);
        CNumEdit quiet;
        EXPECT_EQ(typed(quiet, keys, user, -1), number);
        EXPECT_EQ(user.beeps.size(), numberBeeps + floatingBeeps);
    }
}

TEST(NumericEdits, StepWithinTheirRange) {
    struct Row {
        char const *text;
        unsigned int code;
        char const *after;
        bool beeps, takesFocus;
    } const rows[] = {{"0", 0, "1", false, true},
                      {"1", 1, "0", false, true},
                      {"0", 1, "0", true, true},
                      {"32766", 0, "32767", false, true},
                      {"32767", 0, "32767", true, true},
                      {"-5", 0, "-5", true, true},
                      {"-1", 0, "0", false, true},
                      {"abc", 0, "abc", true, true},
                      {"", 1, "", true, true},
                      {"2147483647", 0, "2147483647", true, true},
                      {"99999999999", 1, "99999999999", true, true},
                      {"7", 4, "7", false, false}};
    for (Row const &row : rows) {
        SCOPED_TRACE(row.text);
        ScriptedUser user;
        TestDialog dialog;
        CNumEdit edit;
        dialog.opened = [&] {
            edit.SubclassEdit(TestDialog::field, &dialog);
            edit.SetWindowTextA(row.text);
        };
        user.press(VK_TAB).then([&] {
            edit.SendMessageA(WM_VSCROLL, tqplatform::joinWords(row.code, 0), 0);
            EXPECT_EQ(dialog.textOf(TestDialog::field), row.after);
            EXPECT_EQ(user.beeps.size(), row.beeps ? 1u : 0u);
            EXPECT_EQ(dialog.focused() == TestDialog::field, row.takesFocus);
            int start = -1, end = -1;
            edit.GetSel(start, end);
            EXPECT_EQ(start, 0);
            EXPECT_EQ(end,
                      std::string(row.after).size());  // marked when it had the focus first, too
        });
        dialog.DoModal();
    }
    // A floating-point field has no steps.
    ScriptedUser user;
    TestDialog dialog;
    CDoubleEdit edit;
    dialog.opened = [&] {
        edit.SubclassEdit(TestDialog::field, &dialog);
        edit.SetWindowTextA("5");
        edit.SendMessageA(WM_VSCROLL, 0, 0);
        EXPECT_EQ(dialog.textOf(TestDialog::field), "5");
    };
    dialog.DoModal();
}

// In the notifications of the focus, of a refused step and of a step.
TEST(NumericEdits, MayBeEndedByWhatTheyTell) {
    for (unsigned int const code : {EN_SETFOCUS, 0x8000u, EN_UPDATE}) {
        TestDialog dialog;
        auto edit = std::make_unique<CNumEdit>();
        dialog.opened = [&] {
            dialog.sendText(TestDialog::field, WM_SETTEXT, code == EN_UPDATE ? "1" : "x");
            edit->SubclassEdit(TestDialog::field, &dialog);
            dialog.told = [&](unsigned int, unsigned int what) {
                if (what == code) edit.reset();
            };
            dialog.send(TestDialog::field, WM_VSCROLL, SB_LINEUP);
            EXPECT_EQ(edit, nullptr);
        };
        dialog.DoModal();
    }
}

TEST(NumericEdits, JudgeTheirTextAgainstLimits) {
    std::string const unusual =
        " als im allgemeinen \xFC"
        "blich!\nSoll der eingegebene Wert beibehalten werden?|";
    std::string const tooSmall = "Der eingegebene Wert ist zu klein!|";
    std::string const small = "Der eingegebene Wert ist kleiner" + unusual;
    std::string const large =
        "Der eingegebene Wert ist gr\xF6\xDF"
        "er" +
        unusual;
    std::string const tooLarge = "Der eingegebene Wert ist zu gro\xDF!|";
    std::string const none = "Fehler bei der Eingabe|";
    bool const isComma =
        *std::localeconv()->decimal_point == ',';  // which ends a number at a point
    struct Row {
        char const *text;
        std::string message;
        int result, resultWithoutLimits;
    } const rows[] = {
        {"50", "", 0, 0},          {"100", large, 0, 0},
        {"101.5", tooLarge, 1, 0}, {"100.5", isComma ? large : tooLarge, isComma ? 0 : 1, 0},
        {"10", "", 0, 0},          {"9.9", small, 0, 0},
        {"0", small, 0, 0},        {"-1e300", tooSmall, 1, 0},
        {"12abc", "", 0, 0},       {"abc", none, 1, 1},
        {"", none, 1, 1},          {" \t", none, 1, 1},
        {"1e999", tooLarge, 1, 0}};
    for (bool const hasWindow : {true, false}) {
        for (auto const &[text, message, result, resultWithoutLimits] : rows) {
            SCOPED_TRACE(text);
            ScriptedUser user;
            TestDialog dialog;
            CDoubleEdit edit;
            dialog.opened = [&, text = text, &message = message, result = result,
                             plain = resultWithoutLimits] {
                CCheckBereich<double> limits(0, 100, 10, 90, hasWindow ? &dialog : nullptr);
                edit.range = &limits;
                edit.SubclassEdit(TestDialog::field, &dialog);
                edit.SetWindowTextA(text);
                EXPECT_EQ(edit.Check(), result);
                EXPECT_EQ(user.messages(), message);
                if (!message.empty()) {
                    EXPECT_EQ(user.titles.back(), result == 1 ? "FEHLER" : "WARNUNG");
                    EXPECT_EQ(user.styles.back(), result == 1 ? 0x30u : 0x40u);
                }
                edit.range = nullptr;
                EXPECT_EQ(edit.Check(), plain);
            };
            dialog.DoModal();
        }
    }
}

TEST(NumericEdits, AreMadeWithoutTheStylesOfTheirCaller) {
    CWnd parent;
    CNumEdit edit;
    EXPECT_EQ(edit.Create(WS_VISIBLE, {}, &parent, 5), 0);  // without a window there
    ASSERT_EQ(parent.Create("#32770", "", WS_VISIBLE, {10, 20, 110, 120}, nullptr, 0), 1);
    ASSERT_EQ(edit.Create(WS_VISIBLE | 0x0804, {1, 2, 30, 40}, &parent, 5), 1);
    EXPECT_EQ(edit.Create(WS_VISIBLE, {}, &parent, 6), 0);
    auto const window = tqplatform::Window::find(edit.m_hWnd);
    EXPECT_EQ(window->style(), WS_VISIBLE | WS_CHILD);
    EXPECT_EQ(edit.GetDlgCtrlID(), 5);
    RECT place{};
    edit.GetWindowRect(&place);
    EXPECT_EQ(place.left, 11);
    EXPECT_EQ(place.bottom, 60);
    parent.DestroyWindow();
    EXPECT_EQ(edit.m_hWnd, nullptr);
    edit.OnBadInput();
}

}  // namespace
