#include <gtest/gtest.h>

#include <string>

#include "support/Locale.h"
#include "support/TestDialog.h"
#include "tqlib/dialogs/DataExchange.h"
#include "tqplatform/desktop/ScriptedUser.h"

namespace {

using tqplatform::ScriptedUser;

// Runs an exchange on a control that holds a text, and tells whether it went through.
template <class Exchange>
int exchanged(int id, char const *text, int save, Exchange const &exchange,
              std::string *after = nullptr) {
    TestDialog dialog;
    int result = -1;
    dialog.opened = [&] {
        for (char const *const item : {"42", "2.500", "1.23E3"})
            dialog.sendText(TestDialog::combo, CB_ADDSTRING, item);
        SetWindowTextA(GetDlgItem(dialog.m_hWnd, id), text);
        dialog.exchange = exchange;
        result = dialog.UpdateData(save);
        if (after != nullptr) *after = dialog.textOf(id);
        dialog.exchange = nullptr;
    };
    dialog.DoModal();
    return result;
}

TEST(DataExchange, ReadsNumbers) {
    std::string const refused = "Bitte geben Sie eine Zahl ein!|";
    struct Row {
        char const *text;
        double floating;
        int whole;
        bool isDouble, isInt;
    } const rows[] = {{"12", 12, 12, true, true},
                      {"12abc", 12, 12, true, true},
                      {"1.5", 1.5, 1, true, true},
                      {"", -7, -7, true, true},
                      {"  ", -7, 0, true, true},
                      {"  -3", -3, -3, true, true},
                      {"abc", -7, -7, false, false},
                      {"-", -7, -7, false, false},
                      {"1e3", 1000, 1, true, true},
                      {"0.00000000000000001234", 0.0000000000000000, 0, true, true},
                      {"1234567890123456789012345", 123456789012345678., 0, true, true},
                      {"\t5", 5, 5, true, true},
                      {"\xA0"
                       "5",
                       -7, -7, false, false}};
    for (int const id : {TestDialog::field, TestDialog::combo}) {
        for (auto const &[text, floating, whole, isDouble, isInt] : rows) {
            SCOPED_TRACE(text);
            ScriptedUser user;
            double value = -7;
            int number = -7;
            EXPECT_EQ(exchanged(id, text, 1,
                                [&](CDataExchange *dx) {
                                    id == TestDialog::field ? DDX_Text(dx, id, value, "%f")
                                                            : DDX_CBString(dx, id, value, "%f");
                                }),
                      isDouble);
            EXPECT_EQ(value, floating);
            EXPECT_EQ(user.messages(), isDouble ? "" : refused);
            if (std::string(text).size() > 18) continue;
            EXPECT_EQ(exchanged(id, text, 1,
                                [&](CDataExchange *dx) {
                                    id == TestDialog::field ? DDX_Text(dx, id, number, "%d")
                                                            : DDX_CBString(dx, id, number, "%d");
                                }),
                      isInt);
            EXPECT_EQ(number, whole);
            EXPECT_EQ(user.messages(), isInt ? "" : refused);
        }
    }
}

TEST(DataExchange, ReadsTheDecimalPointOfTheUser) {
    bool const isComma = *std::localeconv()->decimal_point == ',';
    struct Row {
        char const *text;
        double value;
    } const rows[] = {{"1.5", 1.5}, {"1,5", isComma ? 1.5 : 1.0}, {"1.5.5", 1.5}};
    for (auto const &[text, expected] : rows) {
        double value = 0;
        exchanged(TestDialog::field, text, 1,
                  [&](CDataExchange *dx) { DDX_Text(dx, TestDialog::field, value, "%f"); });
        EXPECT_EQ(value, expected) << text;
    }
}

TEST(DataExchange, ShowsNumbers) {
    struct Row {
        double value;
        char const *format, *field, *combo;
    } const rows[] = {{1234.5, "SCIENTIFIC", "1.23E3", "1.23E3"},
                      {2.5, "%.3f", "2.500", "2.500"},
                      {2.5, "%10.3f", "2.500", "2.500"},
                      {2.5, "%.1f", "2.5", "2.500"},
                      {7, "%.1f", "7.0", "7.0"},
                      {1e30, "%f", "10000000000000000198", "10000000000000000198"},
                      {3, "%d", "%d", "%d"},
                      {3, "%*f", "%*f", "%*f"},
                      {3, "%f%f", "%f%f", "%f%f"},
                      {2.5, "%.1Lf|%l%", "%.1Lf|%l%", "%.1Lf|%l%"},
                      {2.5, "%.1Lf", "2.5", "2.500"}};
    for (Row const &row : rows) {
        SCOPED_TRACE(row.format);
        if (*std::localeconv()->decimal_point != '.') continue;  // the formats are the locale's
        double shown = row.value;
        std::string text;
        exchanged(
            TestDialog::field, "old", 0,
            [&](CDataExchange *dx) { DDX_Text(dx, TestDialog::field, shown, row.format); }, &text);
        EXPECT_EQ(text, row.field);
        exchanged(
            TestDialog::combo, "old", 0,
            [&](CDataExchange *dx) { DDX_CBString(dx, TestDialog::combo, shown, row.format); },
            &text);
        EXPECT_EQ(text, row.combo);
    }
    std::string text;
    int number = -1;
    std::pair<char const *, char const *> const ints[] = {
        {"%05d", "-0001"},   {"SCIENTIFIC", "SCIENTIFIC"},
        {"%ld", "-1"},       {"%lu", "4294967295"},
        {"%lx", "ffffffff"}, {"%hhx", "ff"},
        {"%hd%%", "-1%"},    {"%lld", "%lld"},
        {"%Ld", "%Ld"},      {"%l", "%l"},
        {"%5li|", "-1|"}};
    for (auto const &[format, shown] : ints) {
        exchanged(
            TestDialog::field, "", 0,
            [&, form = format](CDataExchange *dx) {
                DDX_Text(dx, TestDialog::field, number, form);
            },
            &text);
        EXPECT_EQ(text, shown) << format;
    }
    number = 42;
    exchanged(
        TestDialog::combo, "", 0,
        [&](CDataExchange *dx) { DDX_CBString(dx, TestDialog::combo, number, "%05d"); }, &text);
    EXPECT_EQ(text, "42");
    TQString word(" x ");
    exchanged(
        TestDialog::field, "", 0, [&](CDataExchange *dx) { DDX_Text(dx, TestDialog::field, word); },
        &text);
    EXPECT_EQ(text, " x ");
    std::string const longText = " " + std::string(5000, 'y') + "\t";
    exchanged(TestDialog::field, longText.c_str(), 1,
              [&](CDataExchange *dx) { DDX_Text(dx, TestDialog::field, word); });
    EXPECT_EQ(std::string(word), std::string(5000, 'y'));
}

struct LimitRow {
    double value;
    unsigned int style;  // 0 for no message
    int answer, result;  // the result of the exchange
    int plain;           // that of MinMax
};
constexpr LimitRow limitRows[] = {{50, 0, IDOK, 1, 1},        {10, 0, IDOK, 1, 1},
                                  {90, 0, IDOK, 1, 1},        {95, 0x41, IDOK, 1, 0},
                                  {95, 0x41, IDCANCEL, 0, 0}, {100, 0x41, IDOK, 1, 0},
                                  {101, 0x30, IDOK, 0, 0},    {9, 0x41, IDCANCEL, 0, 0},
                                  {0, 0x41, IDOK, 1, 0},      {-1, 0x30, IDOK, 0, 0}};

TEST(DataExchange, JudgesNumbersInADialog) {
    for (auto const &[value, style, answer, result, plain] : limitRows) {
        for (bool const isInt : {false, true}) {
            SCOPED_TRACE(value);
            ScriptedUser user;
            user.answers(answer);
            int judged = -1;
            auto const judge = [&, value = value](CDataExchange *dx) {
                dx->PrepareEditCtrl(TestDialog::field);
                judged = isInt ? DDV_MyMinMaxInt(dx, static_cast<int>(value), 0, 100, 10, 90)
                               : DDV_MyMinMaxDouble(dx, value, 0, 100, 10, 90);
            };
            EXPECT_EQ(exchanged(TestDialog::field, "", 1, judge), result);
            EXPECT_EQ(judged, result == 1 ? 1 : -1);
            EXPECT_EQ(user.styles.empty() ? 0 : user.styles[0], style);
            EXPECT_EQ(exchanged(TestDialog::field, "", 0, judge), 1);
            EXPECT_EQ(user.styles.size(), style == 0 ? 0u : 1u);
            EXPECT_EQ(MinMaxDouble(value, 0, 100, 10, 90), plain);
            EXPECT_EQ(MinMaxInt(static_cast<int>(value), 0, 100, 10, 90), plain);
        }
    }
}

TEST(DataExchange, FailsNowhereInTheMainWindow) {
    CWnd main;
    main.Create("#32770", "", WS_VISIBLE, {}, nullptr, 0);
    AfxGetModuleState()->mainWindow = &main;
    SetActiveWindow(main.m_hWnd);
    for (auto const &[value, style, answer, result, plain] : limitRows) {
        ScriptedUser user;
        user.answers(answer);
        CDataExchange exchange(&main, 1);
        EXPECT_EQ(DDV_MyMinMaxDouble(&exchange, value, 0, 100, 10, 90), style == 0x30 ? 0 : 1);
    }
    TQString message("Text");
    CDataExchange loading(&main, 0);
    MyDDVErrorMessage(&loading, message, 0x30);
    EXPECT_STREQ(message, "Text");
    CDataExchange saving(&main, 1);
    ScriptedUser const user;
    MyDDVErrorMessage(&saving, message, 0x30);
    EXPECT_STREQ(message, "");
}

TEST(DataExchange, FailureLeadsBackToTheControl) {
    ScriptedUser user;
    TestDialog dialog;
    double value = 1;
    dialog.exchange = [&](CDataExchange *dx) { DDX_Text(dx, TestDialog::field, value, "%g"); };
    user.type("abc").press(VK_TAB).press(VK_RETURN).then([&] {
        EXPECT_EQ(user.messages(), "Bitte geben Sie eine Zahl ein!|");
        EXPECT_EQ(dialog.focused(), TestDialog::field);
    });
    user.type("2").press(VK_RETURN);  // replaces the marked text
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(value, 2);
    dialog.exchange = [](CDataExchange *dx) { dx->PrepareCtrl(4711); };
    EXPECT_EQ(dialog.UpdateData(1), 0);
}

}  // namespace
