#include "tqplatform/desktop/Dialog.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/TestDialog.h"
#include "tqplatform/desktop/AfxMessageBox.h"
#include "tqplatform/desktop/ScriptedUser.h"

namespace {

using tqplatform::ScriptedUser;

TEST(Dialog, IsLedThroughByKeys) {
    struct Row {
        char const *name;
        std::function<void(ScriptedUser &)> acts;
        int focus, ends;  // the focus before the last key, and the result
        char const *notes;
    } const rows[] = {
        {"begins at the first", [](ScriptedUser &) {}, 101, IDCANCEL, ""},
        {"Tab", [](ScriptedUser &user) { user.press(VK_TAB).press(VK_TAB); }, 103, IDCANCEL, ""},
        {"Tab round", [](ScriptedUser &user) { user.pressShift(VK_TAB).press(VK_TAB); }, 101,
         IDCANCEL, ""},
        {"back", [](ScriptedUser &user) { user.pressShift(VK_TAB).pressShift(VK_TAB); }, 1,
         IDCANCEL, ""},
        {"a label's letter", [](ScriptedUser &user) { user.press(VK_TAB).typeAlt('W'); }, 101,
         IDCANCEL, ""},
        {"a button's letter", [](ScriptedUser &user) { user.typeAlt('l'); }, 104, IDCANCEL,
         "104:0 "},
        {"a plain letter is typed", [](ScriptedUser &user) { user.type("l"); }, 101, IDCANCEL,
         "101:1024 101:768 "},
        {"a plain letter on a button", [](ScriptedUser &user) { user.typeAlt('l').type("L"); }, 104,
         IDCANCEL, "104:0 104:0 "},
        {"a blank", [](ScriptedUser &user) { user.typeAlt('l').type(" "); }, 104, IDCANCEL,
         "104:0 104:0 "},
        {"arrows in the group",
         [](ScriptedUser &user) {
             user.typeAlt('l').press(VK_RIGHT).press(VK_RIGHT).press(VK_RIGHT).press(VK_UP);
         },
         2, IDCANCEL, "104:0 "},
        {"Return on a button", [](ScriptedUser &user) { user.typeAlt('l').press(VK_RETURN); }, 104,
         IDCANCEL, "104:0 104:0 "},
        {"a letter of none", [](ScriptedUser &user) { user.typeAlt('q').typeAlt('&'); }, 101,
         IDCANCEL, ""},
    };
    for (auto const &[name, acts, focus, ends, notes] : rows) {
        SCOPED_TRACE(name);
        ScriptedUser user;
        TestDialog dialog;
        std::string told;
        user.then([&] { dialog.taken(); });
        acts(user);
        user.then([&, focus = focus] { EXPECT_EQ(dialog.focused(), focus); });
        dialog.told = [&](unsigned int id, unsigned int code) {
            if (code != EN_SETFOCUS && code != EN_KILLFOCUS && code != CBN_SETFOCUS &&
                code != CBN_KILLFOCUS && id != IDCANCEL)
                told += std::to_string(id) + ':' + std::to_string(code) + ' ';
        };
        EXPECT_EQ(dialog.DoModal(), ends);
        EXPECT_EQ(told, notes);
    }
}

TEST(Dialog, EndsByItsButtons) {
    CWnd elsewhere;
    elsewhere.Create("EDIT", "", WS_VISIBLE, {}, nullptr, 0);
    struct Row {
        char const *name;
        std::function<void(ScriptedUser &)> acts;
        int ends;
    } const rows[] = {
        {"Return", [](ScriptedUser &user) { user.press(VK_RETURN); }, IDOK},
        {"Return on another button",
         [](ScriptedUser &user) { user.typeAlt('l').press(VK_TAB).press(VK_TAB).press(VK_RETURN); },
         IDCANCEL},
        {"a new default button",
         [](ScriptedUser &user) {
             user.then([] { SendMessageA(GetActiveWindow(), DM_SETDEFID, IDCANCEL, 0); })
                 .press(VK_RETURN);
         },
         IDCANCEL},
        {"no default button",
         [](ScriptedUser &user) {
             user.then([] { SendMessageA(GetActiveWindow(), DM_SETDEFID, 0, 0); }).press(VK_RETURN);
         },
         IDOK},
        {"a disabled one",
         [](ScriptedUser &user) {
             user.then([] { EnableWindow(GetDlgItem(GetActiveWindow(), IDOK), 0); })
                 .press(VK_RETURN)
                 .click(IDOK);
         },
         IDCANCEL},
        {"ended twice",
         [](ScriptedUser &user) {
             user.then([] {
                 EndDialog(GetActiveWindow(), 7);
                 EndDialog(GetActiveWindow(), 8);
             });
         },
         7},
        {"destroyed",
         [](ScriptedUser &user) { user.then([] { DestroyWindow(GetActiveWindow()); }); }, -1},
        {"a posted message",
         [](ScriptedUser &user) {
             user.then([] { PostMessageA(GetActiveWindow(), WM_CLOSE, 0, 0); });
         },
         IDCANCEL},
        {"not by a posted key of another window",
         [&](ScriptedUser &user) {
             user.then([&] { PostMessageA(elsewhere.m_hWnd, WM_KEYDOWN, VK_ESCAPE, 1); })
                 .press(VK_RETURN);
         },
         IDOK},
    };
    for (auto const &[name, acts, ends] : rows) {
        SCOPED_TRACE(name);
        ScriptedUser user;
        TestDialog dialog;
        acts(user);
        EXPECT_EQ(dialog.DoModal(), ends);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(GetActiveWindow(), nullptr);
        EXPECT_EQ(GetFocus(), nullptr);
    }
    CDialog without(4711);
    EXPECT_EQ(without.DoModal(), -1);
}

TEST(Dialog, DisablesItsOwnerAndGivesTheFocusBack) {
    ScriptedUser user;
    TestDialog outer;
    TestDialog inner(&outer);
    user.press(VK_TAB).then([&] {
        HWND const focus = GetFocus();
        inner.opened = [&] {
            EXPECT_EQ(IsWindowEnabled(outer.m_hWnd), 0);
            EXPECT_EQ(GetActiveWindow(), inner.m_hWnd);
        };
        EXPECT_EQ(inner.DoModal(), IDOK);
        EXPECT_EQ(IsWindowEnabled(outer.m_hWnd), 1);
        EXPECT_EQ(GetActiveWindow(), outer.m_hWnd);
        EXPECT_EQ(GetFocus(), focus);
    });
    user.press(VK_RETURN).then([&] {
        outer.SetFocus();
        inner.DoModal();
        EXPECT_EQ(GetFocus(), outer.m_hWnd) << "the owner's own";
    });
    EXPECT_EQ(outer.DoModal(), IDCANCEL);
}

TEST(Dialog, LetsExceptionsThrough) {
    ScriptedUser user;
    TestDialog owner;
    user.then([&] {
        TestDialog dialog(&owner);
        dialog.told = [](unsigned int id, unsigned int) {
            if (id == TestDialog::other) throw std::runtime_error("told");
        };
        HWND const focus = GetFocus();
        EXPECT_THROW(dialog.DoModal(), std::runtime_error);
        EXPECT_EQ(GetFocus(), focus);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
        EXPECT_EQ(IsWindowEnabled(owner.m_hWnd), 1);
        EXPECT_EQ(GetActiveWindow(), owner.m_hWnd);
    });
    user.click(TestDialog::other);
    owner.DoModal();
}

TEST(Dialog, SurvivesWindowsThatEndInTheirOwnHandlers) {
    for (unsigned int const code : {EN_UPDATE, EN_CHANGE, EN_SETFOCUS, EN_KILLFOCUS}) {
        for (bool const whole : {false, true}) {
            ScriptedUser user;
            TestDialog dialog;
            HWND field = nullptr;
            dialog.opened = [&] { field = GetDlgItem(dialog.m_hWnd, TestDialog::field); };
            dialog.told = [&](unsigned int id, unsigned int what) {
                if (id == TestDialog::field && what == code)
                    DestroyWindow(whole ? dialog.m_hWnd : field);
            };
            user.type("x").press(VK_TAB);
            EXPECT_EQ(dialog.DoModal(), whole ? -1 : IDCANCEL);
            EXPECT_EQ(IsWindow(field), 0);
            EXPECT_EQ(SendMessageA(field, WM_SETTEXT, 0, 0), 0);
            EXPECT_EQ(PostMessageA(field, WM_CLOSE, 0, 0), 0);
        }
    }
    // An object that goes away with its handler still running.
    struct Suicidal : CWnd {
        LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) override {
            LRESULT const answer = CWnd::WindowProc(message, first, second);
            if (message == WM_CLOSE) delete this;
            return answer;
        }
    };
    auto *const window = new Suicidal;
    window->Create("#32770", "", 0, {}, nullptr, 0);
    HWND const handle = window->m_hWnd;
    SendMessageA(handle, WM_CLOSE, 0, 0);
    EXPECT_EQ(IsWindow(handle), 0);
}

TEST(Dialog, EndsTheNestingOfMessages) {
    struct Mirror : CWnd {
        int depth = 0;
        LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) override {
            ++depth;
            return ::SendMessageA(m_hWnd, message, first, second);
        }
    } window;
    window.Create("EDIT", "", 0, {}, nullptr, 0);
    window.SendMessageA(WM_CHAR, 'x');
    EXPECT_EQ(window.depth, 200);
    EXPECT_EQ(GetWindowTextLengthA(window.Detach()), 0);
}

TEST(Dialog, GivesTheNumbersOfItsControls) {
    struct Row {
        char const *text;
        int isSigned;
        unsigned int number;
        int isNumber;
    } const rows[] = {{"12", 1, 12, 1},        {" -7", 1, 0xFFFFFFF9, 1},
                      {"-7", 0, 0, 0},         {"12abc", 1, 12, 1},
                      {"abc", 1, 0, 0},        {"", 1, 0, 0},
                      {"2147483648", 1, 0, 0}, {"4294967295", 0, 0xFFFFFFFF, 1},
                      {"4294967296", 0, 0, 0}};
    ScriptedUser const user;
    TestDialog dialog;
    dialog.opened = [&] {
        for (auto const &[text, isSigned, number, isNumber] : rows) {
            SetWindowTextA(GetDlgItem(dialog.m_hWnd, TestDialog::field), text);
            int translated = -1;
            EXPECT_EQ(dialog.GetDlgItemInt(TestDialog::field, &translated, isSigned), number)
                << text;
            EXPECT_EQ(translated, isNumber) << text;
        }
        dialog.SetDlgItemInt(TestDialog::field, 0xFFFFFFFF, 0);
        EXPECT_EQ(dialog.textOf(TestDialog::field), "4294967295");
    };
    dialog.DoModal();
}

TEST(DialogTemplate, IsReadWholeOrNotAtAll) {
    using tqplatform::ControlKind;
    static constexpr tqplatform::ControlDescription controls[] = {
        {ControlKind::button, 7, {1, -2, 3, 4}, WS_TABSTOP, "&\xC4ndern"},
        {ControlKind::text, 0xFFFF, {0, 0, 9, 9}, SS_BITMAP, "", 101}};
    static constexpr auto bytes =
        tqplatform::dialogBytes<256>({"Preis \x80", 0, {5, 6, 70, 80}, controls});
    std::span<std::uint8_t const> const all(bytes.bytes.data(), bytes.size);
    auto const dialog = tqplatform::readDialogTemplate(all);
    ASSERT_TRUE(dialog && dialog->controls.size() == 2);
    EXPECT_EQ(dialog->title, "Preis \x80");
    EXPECT_EQ(dialog->place.height, 80);
    EXPECT_EQ(dialog->controls[0].className, "BUTTON");
    EXPECT_EQ(dialog->controls[0].text, "&\xC4ndern");
    EXPECT_EQ(dialog->controls[0].place.top, -2);
    EXPECT_EQ(dialog->controls[1].resource, 101u);
    for (std::size_t size = 0; size < all.size(); ++size)
        EXPECT_FALSE(tqplatform::readDialogTemplate(all.first(size))) << size;
    std::vector<std::uint8_t> withData(all.begin(), all.end());
    withData.insert(withData.end(), {1, 2});
    withData[all.size() - 2] = 4;  // bytes of the last control's data, themselves among them
    EXPECT_TRUE(tqplatform::readDialogTemplate(withData));
    tqplatform::DialogTemplate unknown = *dialog;
    unknown.controls[0].className = "GRID";
    EXPECT_EQ(tqplatform::createDialog(unknown, nullptr), nullptr);
}

TEST(AbsentUser, WritesMessagesAndLeavesDialogs) {
    tqplatform::AbsentUser nobody;
    auto *const before = tqplatform::installUser(&nobody);
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxA(nullptr,
                          "Gr\xFC\xDF"
                          "e",
                          "An alle", MB_YESNO | MB_DEFBUTTON2),
              IDNO);
    EXPECT_EQ(AfxMessageBox("zwei\nZeilen"), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "An alle: Gr\xC3\xBC\xC3\x9F"
              "e\nzwei\nZeilen\n");
    class Stubborn : public TestDialog {
        void OnCancel() override {}
    } dialog;
    dialog.opened = [&] {
        SetFocus(GetDlgItem(dialog.m_hWnd, TestDialog::combo));
        dialog.send(TestDialog::combo, CB_SHOWDROPDOWN, 1);
    };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_NE(dialog.notes.find(" 2:0 "), std::string::npos) << "asked, behind the open list";
    tqplatform::installUser(before);
}

}  // namespace
