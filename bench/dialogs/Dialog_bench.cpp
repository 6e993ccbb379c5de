// Messages, a list of numbers and a whole dialog, beside what the same data costs without windows.

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Job.h"
#include "tqlib/dialogs/CNumberComboBox.h"
#include "tqlib/dialogs/DataExchange.h"
#include "tqplatform/desktop/CDialog.h"
#include "tqplatform/desktop/CEdit.h"
#include "tqplatform/desktop/DialogTemplate.h"
#include "tqplatform/desktop/ScriptedUser.h"
#include "tqplatform/framework/ModuleState.h"

namespace {

/// A control with a text, as an application would make one without a desktop.
using PlainControl = std::function<LRESULT(unsigned int message, WPARAM first, LPARAM second)>;

constexpr int messageCount = 10000;  // a round
constexpr std::string_view text = "21.5";

constexpr auto callFunctions = [](auto take) {
    static std::unordered_map<int, PlainControl> const controls{
        {7, [](unsigned int message, WPARAM, LPARAM) -> LRESULT {
             return message == WM_GETTEXTLENGTH ? static_cast<LRESULT>(text.size()) : 0;
         }}};
    static int volatile lastId = 7;  // not known to the compiler
    LRESULT sum = 0;
    for (int i = 0; i < messageCount; ++i) {
        int const id = lastId;
        sum += controls.find(id)->second(WM_GETTEXTLENGTH, 0, 0);
    }
    take(sum);
};

CWnd &parentWindow() {
    static CWnd window;
    if (window.m_hWnd == nullptr) window.Create("#32770", "", WS_VISIBLE, {}, nullptr, 0);
    return window;
}

constexpr auto sendMessages = [](auto take) {
    static CEdit edit;
    if (edit.m_hWnd == nullptr) {
        edit.Create("EDIT", text.data(), WS_VISIBLE, {}, &parentWindow(), 1);
    }
    LRESULT sum = 0;
    for (int i = 0; i < messageCount; ++i)
        sum += SendMessageA(edit.m_hWnd, WM_GETTEXTLENGTH, 0, 0);
    take(sum);
};

auto const messages =
    Job<LRESULT>("messages").peer("std::function", callFunctions).contender("tqlib", sendMessages);

std::vector<double> const &numbers() {
    static std::vector<double> const values = [] {
        std::vector<double> shuffled(2000);
        for (std::size_t i = 0; i < shuffled.size(); ++i)
            shuffled[i] = static_cast<double>(i) / 10;
        std::ranges::shuffle(shuffled, std::mt19937(1));
        return shuffled;
    }();
    return values;
}

// A walk for equal texts, and one for the first greater number, as the list is documented.
constexpr auto fillVector = [](auto take) {
    std::vector<std::string> items;
    for (double const value : numbers()) {
        char item[32];
        std::snprintf(item, sizeof item, "%.1f", value);
        if (std::ranges::find(items, item) != items.end()) continue;
        auto const place = std::ranges::find_if(items, [=](std::string const &other) {
            double number = 0;
            return std::sscanf(other.c_str(), "%lf", &number) == 1 && number > value;
        });
        items.insert(place, item);
    }
    for (std::string const &item : items)
        take(item);
};

constexpr auto fillCombo = [](auto take) {
    CNumberComboBox combo;
    combo.Create("COMBOBOX", "", CBS_DROPDOWN | WS_VISIBLE, {}, &parentWindow(), 2);
    for (double const value : numbers())
        combo.AddValue(value, "%.1f");
    for (int i = 0; i < combo.GetCount(); ++i) {
        CString item;
        combo.GetLBText(i, item);
        take(static_cast<char const *>(item));
    }
};

auto const numberLists = Job<std::string>("number list")
                             .peer("vector and sscanf", fillVector)
                             .contender("tqlib", fillCombo);

constexpr int fieldCount = 48;

constexpr auto fieldDescriptions = [] {
    std::array<tqplatform::ControlDescription, fieldCount + 2> controls{};
    for (int i = 0; i < fieldCount; ++i) {
        auto const top = static_cast<std::int16_t>(12 * i);
        controls[static_cast<std::size_t>(i)] = {tqplatform::ControlKind::edit,
                                                 static_cast<std::uint16_t>(100 + i),
                                                 {5, top, 50, 12},
                                                 WS_TABSTOP};
    }
    controls[fieldCount] = {tqplatform::ControlKind::button,
                            IDOK,
                            {60, 0, 50, 14},
                            WS_TABSTOP | BS_DEFPUSHBUTTON,
                            "OK"};
    controls[fieldCount + 1] = {
        tqplatform::ControlKind::button, IDCANCEL, {60, 16, 50, 14}, WS_TABSTOP, "Abbrechen"};
    return controls;
}();
constexpr auto dialogBytes =
    tqplatform::dialogBytes<4096>({"Werte", 0, {0, 0, 120, 600}, fieldDescriptions});
constexpr tqplatform::Resource resources[] = {
    {tqplatform::ResourceKind::dialog, 4000, dialogBytes.bytes.data(), dialogBytes.size}};
constexpr tqplatform::Module module{"bench", resources};

class ValuesDialog final : public CDialog {
  public:
    ValuesDialog() : CDialog(4000) {
        for (int i = 0; i < fieldCount; ++i)
            values[static_cast<std::size_t>(i)] = i + 0.5;
    }
    void DoDataExchange(CDataExchange *dx) override {
        for (int i = 0; i < fieldCount; ++i) {
            double &value = values[static_cast<std::size_t>(i)];
            DDX_Text(dx, 100 + i, value, "%.2f");
            DDV_MyMinMaxDouble(dx, value, 0, 1000, 0, 100);
        }
    }

    std::array<double, fieldCount> values{};
};

constexpr auto showDialog = [](auto take) {
    static AFX_EXTENSION_MODULE record{};
    if (record.bInitialized == 0) {
        AfxInitExtensionModule(record, &module);
        new CDynLinkLibrary(record, false);
    }
    tqplatform::ScriptedUser user;
    user.press(VK_RETURN);
    ValuesDialog dialog;
    if (dialog.DoModal() != IDOK) return;
    for (double const value : dialog.values)
        take(value);
};

// The numbers alone, to texts and back.
constexpr auto convertNumbers = [](auto take) {
    for (int i = 0; i < fieldCount; ++i) {
        char field[32];
        std::snprintf(field, sizeof field, "%.2f", i + 0.5);
        double value = 0;
        std::sscanf(field, "%lf", &value);
        if (value >= 0 && value <= 100) take(value);
    }
};

auto const dialogs = Job<double>("dialog of 50")
                         .peer("printf and scanf", convertNumbers)
                         .contender("tqlib", showDialog);

}  // namespace
