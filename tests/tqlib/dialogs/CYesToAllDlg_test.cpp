#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "tqlib/dialogs/CYesToAllDlg.h"
#include "tqlib/dialogs/SetCursorToCenter.h"
#include "tqplatform/desktop/ScriptedUser.h"
#include "tqplatform/desktop/StaticControl.h"

namespace {

using tqplatform::ScriptedUser;

TEST(YesToAllQuestion, GivesItsFourAnswers) {
    struct Row {
        char const *name;
        std::function<void(ScriptedUser &)> acts;
        int ends, result;
    } const rows[] = {
        {"Return", [](ScriptedUser &user) { user.press(VK_RETURN); }, IDOK, 922},
        {"Escape", [](ScriptedUser &user) { user.press(VK_ESCAPE); }, IDCANCEL, 0},
        {"system menu", [](ScriptedUser &user) { user.close(); }, IDCANCEL, 0},
        {"nobody", [](ScriptedUser &) {}, IDCANCEL, 0},
        {"click on yes", [](ScriptedUser &user) { user.click(920); }, IDOK, 920},
        {"click on all", [](ScriptedUser &user) { user.click(921); }, IDOK, 921},
        {"click on no", [](ScriptedUser &user) { user.click(922); }, IDOK, 922},
        {"click on cancel", [](ScriptedUser &user) { user.click(923); }, IDCANCEL, 923},
        {"letter j", [](ScriptedUser &user) { user.type("j"); }, IDOK, 920},
        {"Alt-N", [](ScriptedUser &user) { user.typeAlt('N'); }, IDOK, 922},
        {"the shared letter only leads on",
         [](ScriptedUser &user) { user.type("a").press(VK_RETURN); }, IDCANCEL, 923},
        {"twice", [](ScriptedUser &user) { user.type("aa").type(" "); }, IDOK, 921},
        {"Tab", [](ScriptedUser &user) { user.press(VK_TAB).press(VK_TAB).press(VK_RETURN); }, IDOK,
         920},
        {"round backwards", [](ScriptedUser &user) { user.pressShift(VK_TAB).press(VK_RETURN); },
         IDOK, 921},
        {"arrows",
         [](ScriptedUser &user) {
             user.press(VK_RIGHT).press(VK_DOWN).press(VK_LEFT).press(VK_RETURN);
         },
         IDCANCEL, 923},
    };
    for (auto const &[name, acts, ends, result] : rows) {
        SCOPED_TRACE(name);
        ScriptedUser user;
        CString text("Die Datei a.csv existiert bereits!");
        CYesToAllDlg question(text, nullptr);
        EXPECT_EQ(std::exchange(question.result, 921), 0);  // as after a run before
        text = "";
        user.then([&] {
            CString shown;
            question.GetDlgItem(925)->GetWindowTextA(shown);
            EXPECT_STREQ(shown, "Die Datei a.csv existiert bereits!");
            EXPECT_EQ(question.result, 0);
        });
        acts(user);
        EXPECT_EQ(question.DoModal(), ends);
        EXPECT_EQ(question.result, result);
    }
}

TEST(YesToAllQuestion, IsLaidOutAsItsTemplateSays) {
    ScriptedUser user;
    CString text("?");
    CYesToAllDlg question(text, nullptr);
    user.then([&] {
        auto const window = tqplatform::Window::find(question.m_hWnd);
        EXPECT_EQ(window->text(), "Dialog");
        EXPECT_EQ(window->rect().right, 322 * 6 / 4);
        unsigned int const order[] = {922, 923, 920, 921, 0xFFFF, 925};
        ASSERT_EQ(window->children().size(), 6u);
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_EQ(tqplatform::Window::find(window->children()[i])->id(), order[i]);
        auto const picture =
            tqplatform::Window::findAs<tqplatform::StaticControl>(window->children()[4]);
        ASSERT_NE(picture->picture, nullptr);
        EXPECT_EQ(picture->picture->id, 900u);
        EXPECT_EQ(question.SendMessageA(DM_GETDEFID), 922 | 0x534B << 16);
    });
    question.DoModal();
}

TEST(YesToAllQuestion, LetsADerivedClassDecide) {
    class Stubborn : public CYesToAllDlg {
      public:
        using CYesToAllDlg::CYesToAllDlg;
        void OnOK() override { ++refused; }
        int refused = 0;
    };
    ScriptedUser user;
    CString text("?");
    Stubborn question(text, nullptr);
    user.type("jn").press(VK_ESCAPE);
    EXPECT_EQ(question.DoModal(), IDCANCEL);
    EXPECT_EQ(question.refused, 2);
    EXPECT_EQ(question.result, 922);
}

TEST(CursorToCenter, IsRoundedTowardsZero) {
    struct Row {
        RECT window;
        long x, y;
    } const rows[] = {
        {{-11, -11, 0, 0}, -5, -5}, {{0, 0, 11, 9}, 5, 4}, {{10, 20, 30, 40}, 20, 30}};
    for (auto const &[place, x, y] : rows) {
        ScriptedUser const user;
        CWnd window;
        window.Create("#32770", "", 0, place, nullptr, 0);
        SetCursorToCenter(&window);
        ASSERT_EQ(user.pointers.size(), 1u);
        EXPECT_EQ(user.pointers[0].x, x);
        EXPECT_EQ(user.pointers[0].y, y);
    }
}

}  // namespace
