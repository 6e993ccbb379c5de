// A dialog with all kinds of controls in the hands of a wild user and a wild program: keys,
// characters, clicks, answers, messages of any kind with any numbers, texts, windows ended while
// they handle a message. After every step selections lie in their texts and the focus on a window
// that is there and enabled.

#include "tqplatform/desktop/CDialog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/Input.h"
#include "tqlib/dialogs/CDoubleEdit.h"
#include "tqlib/dialogs/CNumberComboBox.h"
#include "tqlib/dialogs/DataExchange.h"
#include "tqplatform/desktop/ComboBox.h"
#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/desktop/EditControl.h"
#include "tqplatform/desktop/TextView.h"
#include "tqplatform/framework/ModuleState.h"

namespace {

using tqplatform::ControlKind;
using tqplatform::Window;
using Script = ::Input;

constexpr tqplatform::ControlDescription controls[] = {
    {ControlKind::text, 100, {0, 0, 40, 8}, 0, "&Text"},
    {ControlKind::edit, 101, {50, 0, 80, 8}, WS_TABSTOP, "1"},
    {ControlKind::edit, 102, {50, 8, 80, 8}, WS_TABSTOP, "2.5"},
    {ControlKind::comboBox, 103, {50, 16, 80, 40}, WS_TABSTOP | CBS_DROPDOWN},
    {ControlKind::comboBox, 104, {50, 24, 80, 40}, WS_TABSTOP | CBS_DROPDOWNLIST | CBS_SORT},
    {ControlKind::comboBox, 105, {140, 0, 60, 40}, CBS_SIMPLE},
    {ControlKind::button, 106, {7, 60, 40, 14}, WS_TABSTOP | WS_GROUP, "&Los"},
    {ControlKind::button, IDOK, {50, 60, 40, 14}, WS_TABSTOP | BS_DEFPUSHBUTTON, "&OK"},
    {ControlKind::button, IDCANCEL, {95, 60, 50, 14}, WS_TABSTOP, "&Ende"},
};
constexpr auto bytes = tqplatform::dialogBytes<1024>({"Probe", 0, {0, 0, 210, 80}, controls});
constexpr tqplatform::Resource resources[] = {
    {tqplatform::ResourceKind::dialog, 3000, bytes.bytes.data(), bytes.size}};
constexpr tqplatform::Module module{"fuzz", resources};

constexpr int deepestDialogs = 3;

// Messages whose second parameter is the address of a text, and others.
constexpr unsigned int textMessages[] = {WM_SETTEXT,        EM_REPLACESEL, CB_ADDSTRING,
                                         CB_INSERTSTRING,   CB_FINDSTRING, CB_SELECTSTRING,
                                         CB_FINDSTRINGEXACT};
constexpr unsigned int plainMessages[] = {
    WM_SETFOCUS,     WM_KILLFOCUS,    WM_GETTEXTLENGTH, WM_CLOSE,           WM_NEXTDLGCTL,
    WM_GETDLGCODE,   WM_KEYDOWN,      WM_CHAR,          WM_SYSCHAR,         WM_SYSCOMMAND,
    WM_VSCROLL,      WM_LBUTTONDOWN,  DM_GETDEFID,      DM_SETDEFID,        EM_SETSEL,
    EM_LIMITTEXT,    EM_GETLIMITTEXT, BM_SETSTYLE,      BM_CLICK,           CB_SETEDITSEL,
    CB_LIMITTEXT,    CB_DELETESTRING, CB_GETCOUNT,      CB_GETCURSEL,       CB_GETLBTEXTLEN,
    CB_RESETCONTENT, CB_SETCURSEL,    CB_SHOWDROPDOWN,  CB_GETDROPPEDSTATE, WM_INITDIALOG,
    WM_COMMAND};

class Combo final : public CNumberComboBox {
  public:
    tqplatform::MessageMap const *GetMessageMap() const override { return &map; }

  private:
    static tqplatform::MessageEntry const entries[];
    static tqplatform::MessageMap const map;
};
constinit tqplatform::MessageEntry const Combo::entries[] = {
    tqplatform::onReflected<&Combo::OnEditUpdate>(CBN_EDITUPDATE)};
constinit tqplatform::MessageMap const Combo::map{&CNumberComboBox::messageMap, entries};

class WildDialog;

/// Does what a script says, as the user and inside of handlers.
class WildUser final : public tqplatform::User {
  public:
    explicit WildUser(Script &script) : script_(script) { tqplatform::installUser(this); }
    ~WildUser() override { tqplatform::installUser(nullptr); }

    int answer(tqplatform::Message const & /*message*/) override {
        return static_cast<int>(script_.pick(8));
    }
    tqplatform::Input next(HWND dialog) override;
    void begin(HWND dialog) override { dialogs_.push_back(dialog); }
    void end(HWND /*dialog*/) override { dialogs_.pop_back(); }

    /// Does something to a window, if the script has it.
    void meddle(HWND dialog);

    Script &script() { return script_; }

  private:
    void send(HWND window);

    Script &script_;
    std::vector<HWND> dialogs_;
};

class WildDialog final : public CDialog {
  public:
    explicit WildDialog(WildUser &user) : CDialog(3000), user_(user) {}

    int OnInitDialog() override {
        number_.SubclassEdit(101, this);
        floating_.SubclassEdit(102, this);
        combo_.SubclassDlgItem(103, this);
        return CDialog::OnInitDialog();
    }
    void DoDataExchange(CDataExchange *dx) override {
        DDX_Text(dx, 101, whole_, "%d");
        DDV_MyMinMaxInt(dx, whole_, 0, 100, 10, 90);
        DDX_Text(dx, 102, real_, "SCIENTIFIC");
        DDX_CBString(dx, 103, real_, "%.3f");
        DDX_Text(dx, 105, text_);
    }
    LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) override {
        if (message == WM_COMMAND && !user_.script().atEnd()) user_.meddle(m_hWnd);
        return CDialog::WindowProc(message, first, second);
    }
    void useHelpers(unsigned int which) {
        switch (which) {
            case 0:
                floating_.Check();
                break;
            case 1:
                combo_.AddValue(user_.script().raw<double>(), "SCIENTIFIC");
                break;
            case 2:
                combo_.AddValue(user_.script().raw<int>(), user_.script().text('|').c_str());
                break;
            case 3:
                combo_.UpdateEdit();
                break;
            default:
                UpdateData(static_cast<int>(which) % 2);
        }
    }

  private:
    WildUser &user_;
    CNumEdit number_;
    CDoubleEdit floating_;
    Combo combo_;
    int whole_ = 5;
    double real_ = 1.5;
    TQString text_;
};

void checkField(tqplatform::EditText const &line) {
    if (line.start() > line.end() || line.end() > line.text().size())
        disagree("selection", shown(line.end()), shown(line.text().size()));
}

void checkWindows(HWND dialog) {
    auto const window = Window::find(dialog);
    if (window == nullptr) return;
    for (HWND const child : window->children()) {
        expectSame("child", IsWindow(child), 1);
        if (auto const edit = Window::findAs<tqplatform::EditControl>(child))
            checkField(edit->line());
        auto const combo = Window::findAs<tqplatform::ComboBox>(child);
        if (combo == nullptr) continue;
        checkField(combo->field());
        if (combo->selected() < -1 || combo->selected() >= static_cast<int>(combo->items().size()))
            disagree("item", shown(combo->selected()), shown(combo->items().size()));
    }
    if (GetFocus() == nullptr) return;
    expectSame("focus", IsWindow(GetFocus()), 1);
    expectSame("enabled", IsWindowEnabled(GetFocus()), 1);
}

void WildUser::send(HWND window) {
    bool const hasText = script_.pick(2) == 0;
    if (hasText) {
        unsigned int const message = textMessages[script_.pick(std::size(textMessages))];
        auto const first = static_cast<WPARAM>(static_cast<signed char>(script_.take()));
        std::string const text = script_.text('|');
        SendMessageA(window, message, first, reinterpret_cast<LPARAM>(text.c_str()));
        return;
    }
    unsigned int const message = plainMessages[script_.pick(std::size(plainMessages))];
    auto const first = static_cast<WPARAM>(script_.raw<std::int16_t>());
    // Beyond commands, which carry a handle, any number may be there.
    LPARAM const second = message == WM_COMMAND ? 0 : script_.raw<std::int16_t>();
    if (script_.pick(2) == 0)
        SendMessageA(window, message, first, second);
    else
        PostMessageA(window, message, first, second);
}

void WildUser::meddle(HWND dialog) {
    int const id = 100 + static_cast<int>(script_.pick(10));
    HWND const control = GetDlgItem(dialog, id);
    HWND const window = control == nullptr ? dialog : control;
    switch (script_.pick(12)) {
        case 0:
            DestroyWindow(window);
            break;
        case 1:
            EnableWindow(window, static_cast<int>(script_.pick(2)));
            break;
        case 2:
            SetFocus(window);
            break;
        case 3:
            EndDialog(dialog, id);
            break;
        case 4:
            if (dialogs_.size() < deepestDialogs) WildDialog(*this).DoModal();
            break;
        case 5:
            if (auto *const wild = dynamic_cast<WildDialog *>(CWnd::FromHandle(dialog)))
                wild->useHelpers(script_.pick(6));
            break;
        case 6:
        case 7:
        case 8:
            send(window);
            break;
        default:
            break;
    }
}

tqplatform::Input WildUser::next(HWND dialog) {
    using tqplatform::Input;
    checkWindows(dialog);
    if (script_.atEnd()) return {Input::Kind::leave};
    tqplatform::TextScreen screen(20, 70, true);
    tqplatform::drawDialog(screen, dialog);
    Input input{.kind = Input::Kind::click, .alt = false, .shift = false};
    switch (script_.pick(8)) {
        case 0:
            input.kind = Input::Kind::key;
            input.key = script_.pick(128);
            input.shift = script_.pick(2) == 1;
            input.alt = script_.pick(8) == 7;
            break;
        case 1:
        case 2:
            input.kind = Input::Kind::character;
            input.character = script_.take();
            input.alt = script_.pick(8) == 7;
            break;
        case 3:
            input.window = GetDlgItem(dialog, 100 + static_cast<int>(script_.pick(8)));
            break;
        case 4:
            if (script_.pick(8) == 7) input.kind = Input::Kind::close;
            break;
        default:
            meddle(dialog);
    }
    return input;
}

void linkModule() {
    static AFX_EXTENSION_MODULE record{};
    if (record.bInitialized != 0) return;
    AfxInitExtensionModule(record, &module);
    new CDynLinkLibrary(record, false);  // the framework's
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    linkModule();
    Script script(data, size);
    WildUser user(script);
    while (!script.atEnd()) {
        WildDialog dialog(user);
        dialog.DoModal();
        expectSame("window", dialog.m_hWnd == nullptr ? 1 : 0, 1);
        if (GetFocus() != nullptr) disagree("focus", "somewhere", "nowhere");
    }
    return 0;
}
