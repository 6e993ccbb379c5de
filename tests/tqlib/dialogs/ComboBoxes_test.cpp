#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/Locale.h"
#include "support/TestDialog.h"
#include "tqlib/dialogs/CNumberComboBox.h"
#include "tqplatform/desktop/ScriptedUser.h"

namespace {

using tqplatform::ScriptedUser;

class CompletingCombo : public CComboBoxMyEx {
  public:
    tqplatform::MessageMap const *GetMessageMap() const override { return &map; }

  private:
    static tqplatform::MessageEntry const entries[];
    static tqplatform::MessageMap const map;
};
constinit tqplatform::MessageEntry const CompletingCombo::entries[] = {
    tqplatform::onReflected<&CompletingCombo::OnEditUpdate>(CBN_EDITUPDATE)};
constinit tqplatform::MessageMap const CompletingCombo::map{&CComboBoxMyEx::messageMap, entries};

// The field with its selection in brackets.
std::string shown(TestDialog const &dialog, int id) {
    std::string text = dialog.textOf(id);
    auto const selection = static_cast<unsigned long>(dialog.send(id, CB_GETEDITSEL));
    text.insert(tqplatform::highWord(selection), "]");
    return text.insert(tqplatform::lowWord(selection), "[");
}

TEST(CompletingCombo, CompletesWhatIsTyped) {
    struct Step {
        unsigned int key;  // or 0 to type
        char letter;
        char const *shown;
    };
    struct Row {
        char const *name;
        std::vector<Step> steps;
    } const rows[] = {
        {"adds the rest and marks it", {{0, '1', "1[0]"}, {0, '0', "10[]"}}},
        {"a deletion stays",
         {{0, '2', "2[0]"}, {VK_BACK, 0, "2[]"}, {VK_BACK, 0, "[]"}, {0, '1', "1[0]"}}},
        {"the key Delete too", {{0, '2', "2[0]"}, {VK_DELETE, 0, "2[]"}}},
        {"no item", {{0, '3', "3[]"}, {0, '0', "30[]"}}},
        {"case is the item's", {{0, 'A', "a[bC]"}, {0, 'B', "ab[C]"}, {0, 'x', "abx[]"}}},
        {"the list is closed", {{VK_F4, 0, "[]"}, {0, '1', "1[0]"}, {VK_ESCAPE, 0, "1[0]"}}},
        {"a caret inside stays", {{0, '9', "9[]"}, {VK_HOME, 0, "[]9"}, {0, '1', "1[]95"}}},
    };
    for (auto const &[name, steps] : rows) {
        SCOPED_TRACE(name);
        ScriptedUser user;
        TestDialog dialog;
        CompletingCombo combo;
        dialog.opened = [&] {
            EXPECT_EQ(combo.SubclassDlgItem(TestDialog::combo, &dialog), 1);
            for (char const *const item : {"10", "20", "abC", "195"})
                combo.AddString(item);
        };
        user.press(VK_TAB);
        for (auto const &[key, letter, text] : steps) {
            if (key != 0)
                user.press(key);
            else
                user.type({&letter, 1});
            user.then(
                [&dialog, text = text] { EXPECT_EQ(shown(dialog, TestDialog::combo), text); });
        }
        dialog.DoModal();
    }
}

TEST(CompletingCombo, CopiesTheSelectedItem) {
    ScriptedUser const user;
    TestDialog dialog;
    CompletingCombo combo;
    dialog.opened = [&] {
        combo.SubclassDlgItem(TestDialog::combo, &dialog);
        combo.AddString("10");
        combo.SetWindowTextA("free");
        combo.UpdateEdit();
        EXPECT_EQ(dialog.textOf(TestDialog::combo), "free");
        combo.SetCurSel(0);
        combo.SetWindowTextA("free");
        combo.UpdateEdit();
        EXPECT_EQ(dialog.textOf(TestDialog::combo), "10");
    };
    dialog.DoModal();
}

struct NumberCombo {
    CWnd parent;
    CNumberComboBox combo;

    NumberCombo() {
        parent.Create("#32770", "", WS_VISIBLE, {}, nullptr, 0);
        combo.Create("COMBOBOX", "", CBS_DROPDOWN | WS_VISIBLE, {}, &parent, 1);
    }
    std::string items() const {
        std::string all;
        for (int i = 0; i < combo.GetCount(); ++i) {
            CString item;
            combo.GetLBText(i, item);
            (all += item) += '|';
        }
        return all;
    }
};

TEST(NumberCombo, KeepsItsNumbersInOrder) {
    NumberCombo list;
    CNumberComboBox &combo = list.combo;
    struct Row {
        double value;
        char const *format;
        int result;
        std::string items;
    } const rows[] = {{3, "%.1f", 0, "3.0|"},
                      {1, "%6.1f ", 0, "1.0|3.0|"},
                      {2, "%.1f", 1, "1.0|2.0|3.0|"},
                      {2, "%.1f", 0, "1.0|2.0|3.0|"},
                      {2, "%.2f", 2, "1.0|2.0|2.00|3.0|"},
                      {1234.5, "SCIENTIFIC", 4, "1.0|2.0|2.00|3.0|1.23E3|"},
                      {1232, "%.1f", 5, "1.0|2.0|2.00|3.0|1.23E3|1232.0|"},
                      {9999, "scientific", 6, "1.0|2.0|2.00|3.0|1.23E3|1232.0|scientific|"},
                      {0.5, "%s%n", 0, "%s%n|1.0|2.0|2.00|3.0|1.23E3|1232.0|scientific|"}};
    for (auto const &[value, format, result, items] : rows) {
        EXPECT_EQ(combo.AddValue(value, format), result) << value;
        std::string expected = items;
        if (*std::localeconv()->decimal_point != '.') break;  // the formats are the locale's
        EXPECT_EQ(list.items(), expected) << value;
    }
    NumberCombo whole;
    std::string const order[] = {"007|", "007|12|", "-3|007|12|"};
    int const values[] = {7, 12, -3};
    for (int i = 0; i < 3; ++i) {
        whole.combo.AddValue(values[i], i == 0 ? "%03d" : "%ld");
        EXPECT_EQ(whole.items(), order[i]);
    }
    EXPECT_EQ(whole.combo.GetCurSel(), 0);
}

TEST(NumberCombo, PassesOverItemsWithoutNumbers) {
    NumberCombo list;
    for (char const *const item : {"viel", "", "5"})
        list.combo.AddString(item);
    EXPECT_EQ(list.combo.AddValue(4, "%d"), 2);
    EXPECT_EQ(list.items(), "viel||4|5|");
    EXPECT_EQ(list.combo.AddValue(-std::numeric_limits<double>::infinity(), "%f"), 2);
}

TEST(NumberCombo, SortsRandomNumbers) {
    NumberCombo list;
    std::mt19937 random(7);
    std::vector<int> numbers;
    for (int i = 0; i < 300; ++i) {
        int const value = static_cast<int>(random() % 2000) - 1000;
        list.combo.AddValue(value, "%d");
        if (std::ranges::find(numbers, value) == numbers.end()) numbers.push_back(value);
    }
    std::ranges::sort(numbers);
    std::string expected;
    for (int const number : numbers)
        expected += std::to_string(number) + '|';
    EXPECT_EQ(list.items(), expected);
}

}  // namespace
