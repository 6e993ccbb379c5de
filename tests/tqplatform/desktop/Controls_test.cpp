#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/TestDialog.h"
#include "tqplatform/desktop/CComboBox.h"
#include "tqplatform/desktop/CEdit.h"
#include "tqplatform/desktop/ScriptedUser.h"

namespace {

using tqplatform::joinWords;
using tqplatform::ScriptedUser;

/// A dialog without a loop, whose controls can be sent messages.
struct Controls {
    ScriptedUser user;
    TestDialog dialog;
    std::function<void()> test;

    explicit Controls(std::function<void(TestDialog &)> const &run) {
        dialog.opened = [&] { run(dialog); };
        dialog.DoModal();
    }
};

// A field's text with its selection in brackets.
std::string shown(TestDialog const &dialog) {
    std::string text = dialog.textOf(TestDialog::field);
    auto const both = static_cast<unsigned long>(dialog.send(TestDialog::field, EM_GETSEL));
    text.insert(tqplatform::highWord(both), "]");
    return text.insert(tqplatform::lowWord(both), "[");
}

TEST(EditControl, TakesKeys) {
    struct Row {
        char const *name;
        std::vector<int> keys;  // characters, and VK_ values below 0; -1000 more with Shift
        char const *shown;
    } const rows[] = {
        {"characters", {'a', 'b', 0xE4}, "ab\xE4[]"},
        {"control characters", {'a', 1, 9, 13, 27, 'b'}, "ab[]"},
        {"Backspace", {'a', 'b', 8}, "a[]"},
        {"Backspace at the start", {'a', -int(VK_HOME), 8}, "[]a"},
        {"Delete", {'a', 'b', -int(VK_HOME), -int(VK_DELETE)}, "[]b"},
        {"Delete at the end", {'a', -int(VK_DELETE)}, "a[]"},
        {"arrows", {'a', 'b', -int(VK_LEFT), 'c', -int(VK_RIGHT), 'd'}, "acbd[]"},
        {"beyond the ends",
         {'a', -int(VK_LEFT), -int(VK_LEFT), 'b', -int(VK_END), -int(VK_RIGHT), 'c'},
         "bac[]"},
        {"selection to the left",
         {'a', 'b', 'c', -1000 - int(VK_LEFT), -1000 - int(VK_LEFT)},
         "a[bc]"},
        {"typing replaces it", {'a', 'b', 'c', -1000 - int(VK_HOME), 'x'}, "x[]"},
        {"Backspace takes it away", {'a', 'b', 'c', -1000 - int(VK_LEFT), 8}, "ab[]"},
        {"a move drops it", {'a', 'b', -1000 - int(VK_HOME), -int(VK_LEFT)}, "[]ab"},
    };
    for (auto const &[name, keys, expected] : rows) {
        SCOPED_TRACE(name);
        Controls const controls([&, &keys = keys, expected = expected](TestDialog &dialog) {
            for (int const key : keys) {
                tqplatform::setShiftDown(key < -1000);
                if (key > 0)
                    dialog.send(TestDialog::field, WM_CHAR, static_cast<WPARAM>(key));
                else
                    dialog.send(TestDialog::field, WM_KEYDOWN,
                                static_cast<WPARAM>(key < -1000 ? -key - 1000 : -key));
            }
            tqplatform::setShiftDown(false);
            EXPECT_EQ(shown(dialog), expected);
        });
    }
}

TEST(EditControl, SelectsWhatItIsTold) {
    struct Row {
        int start, end;
        char const *shown;
    } const rows[] = {{1, 3, "a[bc]de"},  {3, 1, "a[bc]de"},  {0, -1, "[abcde]"},
                      {2, -1, "ab[cde]"}, {-1, 0, "ab[]cde"}, {4, 99, "abcd[e]"},
                      {99, 99, "abcde[]"}};
    Controls const controls([&](TestDialog &dialog) {
        CEdit edit;
        edit.SubclassDlgItem(TestDialog::field, &dialog);
        for (auto const &[start, end, expected] : rows) {
            edit.SetWindowTextA("abcde");
            edit.SetSel(2, 2);
            edit.SetSel(start, end);
            EXPECT_EQ(shown(dialog), expected) << start << ' ' << end;
        }
        dialog.sendText(TestDialog::field, EM_REPLACESEL, "XYZ");
        EXPECT_EQ(shown(dialog), "abcdeXYZ[]");
        dialog.send(TestDialog::field, EM_GETSEL, 0, 0);
    });
}

TEST(EditControl, TellsItsParentWhatHappens) {
    Controls const controls([](TestDialog &dialog) {
        dialog.taken();
        dialog.sendText(TestDialog::field, WM_SETTEXT, "x");
        EXPECT_EQ(dialog.taken(), "101:1024 101:768 ");
        dialog.send(TestDialog::field, WM_KEYDOWN, VK_HOME);
        EXPECT_EQ(dialog.taken(), "");
        dialog.send(TestDialog::field, EM_LIMITTEXT, 2);
        for (char const c : {'1', '2', '3'})
            dialog.send(TestDialog::field, WM_CHAR, static_cast<WPARAM>(c));
        EXPECT_EQ(dialog.taken(), "101:1024 101:768 101:1281 101:1281 ");
        EXPECT_EQ(dialog.textOf(TestDialog::field), "1x");
        dialog.sendText(TestDialog::field, WM_SETTEXT, "longer than that");
        EXPECT_EQ(dialog.textOf(TestDialog::field), "longer than that");
        dialog.taken();
        SetFocus(GetDlgItem(dialog.m_hWnd, TestDialog::field));
        SetFocus(GetDlgItem(dialog.m_hWnd, TestDialog::combo));
        EXPECT_EQ(dialog.taken(), "101:256 101:512 102:3 ");
    });
}

// The list of a combo box, and its selection.
std::string listOf(TestDialog const &dialog, int id) {
    std::string all;
    auto const count = dialog.send(id, CB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i) {
        std::string item(
            static_cast<std::size_t>(dialog.send(id, CB_GETLBTEXTLEN, static_cast<WPARAM>(i))),
            ' ');
        dialog.send(id, CB_GETLBTEXT, static_cast<WPARAM>(i),
                    reinterpret_cast<LPARAM>(item.data()));
        all += item + ' ';
    }
    return all + std::to_string(dialog.send(id, CB_GETCURSEL));
}

TEST(ComboBox, AnswersMessagesAboutItsList) {
    Controls const controls([](TestDialog &dialog) {
        int const id = TestDialog::combo;
        struct Row {
            unsigned int message;
            int first;
            char const *text;
            LRESULT answer;
            char const *list, *field;
        } const rows[] = {
            {CB_ADDSTRING, 0, "beta", 0, "beta -1", ""},
            {CB_INSERTSTRING, 0, "Alpha", 0, "Alpha beta -1", ""},
            {CB_INSERTSTRING, -1, "ALARM", 2, "Alpha beta ALARM -1", ""},
            {CB_INSERTSTRING, 9, "no", -1, "Alpha beta ALARM -1", ""},
            {CB_FINDSTRING, -1, "al", 0, "Alpha beta ALARM -1", ""},
            {CB_FINDSTRING, 0, "al", 2, "Alpha beta ALARM -1", ""},
            {CB_FINDSTRING, 2, "al", 0, "Alpha beta ALARM -1", ""},
            {CB_FINDSTRINGEXACT, -1, "alarm", 2, "Alpha beta ALARM -1", ""},
            {CB_FINDSTRINGEXACT, -1, "ala", -1, "Alpha beta ALARM -1", ""},
            {CB_SELECTSTRING, -1, "B", 1, "Alpha beta ALARM 1", "beta"},
            {CB_SELECTSTRING, -1, "x", -1, "Alpha beta ALARM 1", "beta"},
            {CB_INSERTSTRING, 0, "new", 0, "new Alpha beta ALARM 2", "beta"},
            {CB_DELETESTRING, 0, nullptr, 3, "Alpha beta ALARM 1", "beta"},
            {CB_DELETESTRING, 1, nullptr, 2, "Alpha ALARM -1", ""},
            {CB_SETCURSEL, 1, nullptr, 1, "Alpha ALARM 1", "ALARM"},
            {CB_SETCURSEL, 7, nullptr, -1, "Alpha ALARM -1", ""},
            {WM_SETTEXT, 0, "free", 1, "Alpha ALARM -1", "free"},
            {CB_GETLBTEXTLEN, 5, nullptr, -1, "Alpha ALARM -1", "free"},
            {CB_RESETCONTENT, 0, nullptr, 0, "-1", ""},
        };
        dialog.taken();
        for (auto const &[message, first, text, answer, list, field] : rows) {
            SCOPED_TRACE(std::to_string(message) + ' ' + list);
            EXPECT_EQ(dialog.sendText(id, message, text, first), answer);
            EXPECT_EQ(listOf(dialog, id), list);
            EXPECT_EQ(dialog.textOf(id), field);
        }
        EXPECT_EQ(dialog.taken(), "") << "what a program does isn't told";
        EXPECT_EQ(dialog.send(id, CB_GETLBTEXTLEN, static_cast<WPARAM>(0x100000000ULL)), -1);
        for (char const *const item : {"b", "A", "\xE4", "C", "a"})
            dialog.sendText(TestDialog::sorted, CB_ADDSTRING, item);
        EXPECT_EQ(listOf(dialog, TestDialog::sorted), "A a b C \xE4 -1");
        EXPECT_EQ(dialog.sendText(TestDialog::list, WM_SETTEXT, "x"), 1);
        EXPECT_EQ(dialog.textOf(TestDialog::list), "");
        EXPECT_EQ(dialog.send(TestDialog::list, CB_GETEDITSEL), -1);
    });
}

TEST(ComboBox, TellsWhatTheUserDoes) {
    struct Row {
        char const *name;
        int id;
        std::function<void(ScriptedUser &)> acts;
        char const *notes, *field;
    } const rows[] = {
        {"types", TestDialog::combo, [](ScriptedUser &user) { user.type("x"); }, "102:6 102:5 ",
         "x"},
        {"goes down", TestDialog::combo, [](ScriptedUser &user) { user.press(VK_DOWN); },
         "102:9 102:1 ", "a1"},
        {"goes down and up beyond", TestDialog::combo,
         [](ScriptedUser &user) { user.press(VK_DOWN).press(VK_UP).press(VK_UP); }, "102:9 102:1 ",
         "a1"},
        {"opens, goes, accepts", TestDialog::combo,
         [](ScriptedUser &user) {
             user.press(VK_F4).press(VK_DOWN).press(VK_DOWN).press(VK_RETURN);
         },
         "102:7 102:1 102:1 102:9 102:8 ", "a2"},
        {"opens, goes, leaves", TestDialog::combo,
         [](ScriptedUser &user) { user.pressAlt(VK_DOWN).press(VK_DOWN).press(VK_ESCAPE); },
         "102:7 102:1 102:10 102:8 ", ""},
        {"leaves a list that was gone through, with what was typed", TestDialog::combo,
         [](ScriptedUser &user) { user.press(VK_F4).type("x").press(VK_DOWN).press(VK_ESCAPE); },
         "102:7 102:6 102:5 102:1 102:10 102:8 ", "x"},
        {"leaves an open list that has got an item ahead of its own", TestDialog::combo,
         [](ScriptedUser &user) {
             user.press(VK_DOWN).press(VK_F4).press(VK_DOWN).then([] {
                 SendMessageA(GetFocus(), CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("a0"));
             });
             user.press(VK_ESCAPE);
         },
         "102:9 102:1 102:7 102:1 102:10 102:8 ", "a1"},
        {"opens and goes away", TestDialog::combo,
         [](ScriptedUser &user) { user.press(VK_F4).press(VK_DOWN).press(VK_TAB); },
         "102:7 102:1 102:9 102:8 102:4 103:3 ", "a1"},
        {"searches a list", TestDialog::list, [](ScriptedUser &user) { user.type("bb"); },
         "103:9 103:1 ", "b1"},
        {"pages", TestDialog::list, [](ScriptedUser &user) { user.press(VK_NEXT).press(VK_NEXT); },
         "103:9 103:1 ", "b1"},
    };
    for (auto const &[name, id, acts, notes, field] : rows) {
        SCOPED_TRACE(name);
        ScriptedUser user;
        TestDialog dialog;
        dialog.opened = [&] {
            for (char const *const item : {"a1", "a2", "b1"})
                for (int const box : {TestDialog::combo, TestDialog::list})
                    dialog.sendText(box, CB_ADDSTRING, item);
        };
        user.then([&, id = id] {
            SetFocus(GetDlgItem(dialog.m_hWnd, id));
            dialog.taken();
        });
        acts(user);
        user.then([&, id = id, notes = notes, field = field] {
            EXPECT_EQ(dialog.taken(), notes);
            EXPECT_EQ(dialog.textOf(id), field);
            EXPECT_EQ(dialog.send(id, CB_GETDROPPEDSTATE), 0);
        });
        dialog.DoModal();
    }
}

}  // namespace
