#pragma once

#include <functional>
#include <string>

#include "tqplatform/desktop/CDialog.h"
#include "tqplatform/desktop/DialogTemplate.h"
#include "tqplatform/framework/ModuleState.h"

/// A dialog with controls of all kinds, from a resource of its own. It notes what they tell it.
class TestDialog : public CDialog {
  public:
    enum Control { label = 100, field = 101, combo = 102, list = 103, other = 104, sorted = 105 };

    explicit TestDialog(CWnd *parent = nullptr) : CDialog(2000, parent) {
        if (AfxGetModuleState()->findResource(tqplatform::ResourceKind::dialog, 2000) != nullptr)
            return;
        static AFX_EXTENSION_MODULE record{};
        AfxInitExtensionModule(record, &module);
        new CDynLinkLibrary(record, false);
    }

    int OnInitDialog() override {
        CDialog::OnInitDialog();
        if (opened) opened();
        return 1;
    }
    void DoDataExchange(CDataExchange *dx) override {
        if (exchange) exchange(dx);
    }
    LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) override {
        if (message == WM_COMMAND) {
            notes += std::to_string(tqplatform::lowWord(first)) + ':' +
                     std::to_string(tqplatform::highWord(first)) + ' ';
            if (told) told(tqplatform::lowWord(first), tqplatform::highWord(first));
        }
        LRESULT const answer = CDialog::WindowProc(message, first, second);
        return message == WM_COMMAND && tqplatform::highWord(first) == 0x8000 ? badInput : answer;
    }

    std::string textOf(int id) const {
        CString text;
        if (CWnd const *const control = GetDlgItem(id)) control->GetWindowTextA(text);
        return static_cast<char const *>(text);
    }
    int focused() const { return ::GetDlgCtrlID(::GetFocus()); }
    LRESULT send(int id, unsigned int message, WPARAM first = 0, LPARAM second = 0) const {
        return ::SendMessageA(::GetDlgItem(m_hWnd, id), message, first, second);
    }
    LRESULT sendText(int id, unsigned int message, char const *text, int first = -1) const {
        return send(id, message, static_cast<WPARAM>(first), reinterpret_cast<LPARAM>(text));
    }
    /// What the controls told since the last call.
    std::string taken() { return std::exchange(notes, {}); }

    std::function<void()> opened;
    std::function<void(CDataExchange *)> exchange;
    std::function<void(unsigned int id, unsigned int code)> told;
    LRESULT badInput = 0;  ///< the answer to a refused input
    std::string notes;     ///< identifier and code of each command

  private:
    static constexpr tqplatform::ControlDescription controls[] = {
        {tqplatform::ControlKind::text, label, {7, 8, 40, 8}, 0, "&Wert"},
        {tqplatform::ControlKind::edit, field, {50, 8, 80, 12}, WS_TABSTOP},
        {tqplatform::ControlKind::comboBox, combo, {50, 24, 80, 60}, WS_TABSTOP | CBS_DROPDOWN},
        {tqplatform::ControlKind::comboBox, list, {50, 40, 80, 60}, WS_TABSTOP | CBS_DROPDOWNLIST},
        {tqplatform::ControlKind::comboBox, sorted, {140, 8, 60, 60}, CBS_SIMPLE | CBS_SORT},
        {tqplatform::ControlKind::button, other, {7, 60, 40, 14}, WS_TABSTOP | WS_GROUP, "&Los"},
        {tqplatform::ControlKind::button,
         IDOK,
         {50, 60, 40, 14},
         WS_TABSTOP | BS_DEFPUSHBUTTON,
         "&OK"},
        {tqplatform::ControlKind::button, IDCANCEL, {95, 60, 50, 14}, WS_TABSTOP, "A&bbrechen"},
    };
    static constexpr auto bytes =
        tqplatform::dialogBytes<1024>({"Pr\xFC"
                                       "fung",
                                       0,
                                       {0, 0, 210, 80},
                                       controls});
    static constexpr tqplatform::Resource resources[] = {
        {tqplatform::ResourceKind::dialog, 2000, bytes.bytes.data(), bytes.size}};
    static constexpr tqplatform::Module module{"tests", resources};
};
