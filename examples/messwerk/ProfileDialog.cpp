#include "ProfileDialog.h"

#include <algorithm>
#include <limits>

#include "Errors.h"
#include "tqplatform/desktop/AfxMessageBox.h"
#include "tqplatform/desktop/CDialog.h"
#include "tqplatform/desktop/DialogTemplate.h"
#include "tqplatform/desktop/TerminalUser.h"
#include "tqplatform/framework/ModuleState.h"
#include "tqplatform/runtime/CodePage1252.h"
#include "Words.h"

namespace messwerk {
namespace {

using tqplatform::ControlDescription;
using tqplatform::ControlKind;

constexpr unsigned int dialogResource = 1000;
enum Control : std::uint16_t {
    inputField = 101,
    outputField,
    headerField,
    columnList,
    lowestField,
    highestField,
    formulaField,
    caption = 0xFFFF
};

constexpr unsigned int list = CBS_DROPDOWNLIST | WS_TABSTOP;

// Places in dialog units: 4 across and 8 down are a letter.
constexpr ControlDescription controls[] = {
    {ControlKind::text, caption, {8, 8, 56, 8}, 0, "&Eingabe"},
    {ControlKind::edit, inputField, {68, 8, 196, 8}, WS_TABSTOP},
    {ControlKind::text, caption, {8, 24, 56, 8}, 0, "&Ausgabe"},
    {ControlKind::edit, outputField, {68, 24, 196, 8}, WS_TABSTOP},
    {ControlKind::text, caption, {8, 40, 56, 8}, 0, "&Kopfzeilen"},
    {ControlKind::edit, headerField, {68, 40, 32, 8}, WS_TABSTOP},
    {ControlKind::text, caption, {8, 56, 56, 8}, 0, "&Grenzen f\xFCr"},
    {ControlKind::comboBox, columnList, {68, 56, 76, 64}, list},
    {ControlKind::text, caption, {152, 56, 16, 8}, 0, "&von"},
    {ControlKind::edit, lowestField, {168, 56, 40, 8}, WS_TABSTOP},
    {ControlKind::text, caption, {212, 56, 12, 8}, 0, "&bis"},
    {ControlKind::edit, highestField, {228, 56, 36, 8}, WS_TABSTOP},
    {ControlKind::text, caption, {8, 72, 56, 8}, 0, "Be&rechnung"},
    {ControlKind::comboBox, formulaField, {68, 72, 196, 64}, CBS_DROPDOWN | WS_TABSTOP},
    {ControlKind::button, IDOK, {84, 96, 52, 8}, BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP, "&OK"},
    {ControlKind::button, IDCANCEL, {152, 96, 60, 8}, WS_TABSTOP, "Abbre&chen"},
};
constexpr auto dialogBytes =
    tqplatform::dialogBytes<1024>({"Profil", 0, {0, 0, 272, 112}, controls});
constexpr tqplatform::Resource resources[] = {
    {tqplatform::ResourceKind::dialog, dialogResource, dialogBytes.bytes.data(), dialogBytes.size}};
constexpr tqplatform::Module module{"messwerk", resources};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int mostHeaderLines = 1000000;
constexpr int usualHeaderLines = 10;

// The profile is in UTF-8, the dialog in Windows-1252.
TQString shown(std::string const &text) {
    return tqplatform::fromUtf8(text).c_str();
}

std::string written(TQString const &text) {
    return tqplatform::toUtf8(text.text());
}

std::string textOf(Formula const &formula) {
    return formula.name + " = " + formula.text;
}

// Shows what is wrong with the field at hand, and ends the exchange.
[[noreturn]] void refuse(CDataExchange *dx, char const *what, UsageError const &error) {
    AfxMessageBox(what + shown(error.what()));
    dx->Fail();
}

// A name that stays keeps letters that the dialog hasn't.
void exchangeFile(CDataExchange *dx, int field, std::string &name) {
    TQString const before = shown(name);
    TQString now = before;
    DDX_Text(dx, field, now);
    if (now == before) return;
    try {
        Profile::checkFile(written(now));
    } catch (UsageError const &error) {
        refuse(dx, "Diese Datei geht nicht:\n", error);
    }
    name = written(now);
}

/// Completes what is typed from the expressions it knows, up to the sign of equality: what is
/// behind it can be shorter than what was there.
class FormulaBox final : public CComboBoxMyEx {
  public:
    tqplatform::MessageMap const *GetMessageMap() const override { return &map; }

  private:
    void OnTyped() {
        CString text;
        GetWindowTextA(text);
        if (text.Find("=") < 0) OnEditUpdate();
    }

    static tqplatform::MessageEntry const entries[];
    static tqplatform::MessageMap const map;
};
constinit tqplatform::MessageEntry const FormulaBox::entries[] = {
    tqplatform::onReflected<&FormulaBox::OnTyped>(CBN_EDITUPDATE)};
constinit tqplatform::MessageMap const FormulaBox::map{&CComboBoxMyEx::messageMap,
                                                       FormulaBox::entries};

class ProfileDialog final : public CDialog {
  public:
    ProfileDialog(ProfileDraft &draft, Options const &options)
        : CDialog(dialogResource), draft_(draft), options_(options) {}

    int OnInitDialog() override;
    void DoDataExchange(CDataExchange *dx) override;
    tqplatform::MessageMap const *GetMessageMap() const override { return &map; }

  private:
    void OnColumn();
    void OnColumnTakenBack();
    void fillLists();
    void showLimit();
    bool takeLimit();
    bool isGood(CDoubleEdit &field, double lowest);
    void takeFormula(CDataExchange *dx);
    void change(std::string const &line);
    void checkChanged(std::vector<Formula> const &formulas) const;

    static tqplatform::MessageEntry const entries[];
    static tqplatform::MessageMap const map;

    ProfileDraft &draft_;
    Options const &options_;
    CNumEdit header_;
    CComboBox columns_;
    CDoubleEdit lowest_, highest_;
    FormulaBox formula_;
    int shown_ = -1;  ///< the column whose limits are shown
};
constinit tqplatform::MessageEntry const ProfileDialog::entries[] = {
    tqplatform::onCommand<&ProfileDialog::OnColumn>(CBN_SELCHANGE, columnList),
    tqplatform::onCommand<&ProfileDialog::OnColumnTakenBack>(CBN_SELENDCANCEL, columnList)};
constinit tqplatform::MessageMap const ProfileDialog::map{&CDialog::messageMap,
                                                          ProfileDialog::entries};

int ProfileDialog::OnInitDialog() {
    header_.SubclassEdit(headerField, this);
    columns_.SubclassDlgItem(columnList, this);
    lowest_.SubclassEdit(lowestField, this);
    highest_.SubclassEdit(highestField, this);
    formula_.SubclassDlgItem(formulaField, this);
    fillLists();
    return CDialog::OnInitDialog();
}

// The expressions of the profile, and some that any column of numbers can have.
void ProfileDialog::fillLists() {
    for (LimitText const &limit : draft_.limits)
        columns_.AddString(shown(limit.column));
    for (Formula const &formula : draft_.formulas)
        formula_.AddString(shown(textOf(formula)));
    if (draft_.limits.empty()) return;
    TQString const column = shown(draft_.limits.front().column);
    for (char const *const operation : {"LN", "LOG10", "SQR", "SQRT"})
        formula_.AddString(column + '_' + operation + " = " + column + " " + operation);
    columns_.SetCurSel(0);
    showLimit();
}

void ProfileDialog::showLimit() {
    shown_ = columns_.GetCurSel();
    if (shown_ < 0) return;
    LimitText const &limit = draft_.limits[static_cast<std::size_t>(shown_)];
    lowest_.SetWindowTextA(limit.lowest);
    highest_.SetWindowTextA(limit.highest);
}

// Another column is shown only once the limits of this one are good.
void ProfileDialog::OnColumn() {
    if (takeLimit())
        showLimit();
    else
        columns_.SetCurSel(shown_);
}

// The list has gone back to the column from which it was opened. Nothing was typed meanwhile.
void ProfileDialog::OnColumnTakenBack() {
    if (columns_.GetCurSel() != shown_) showLimit();
}

bool ProfileDialog::takeLimit() {
    if (shown_ < 0) return true;
    LimitText &limit = draft_.limits[static_cast<std::size_t>(shown_)];
    if (!isGood(lowest_, -infinity)) return false;
    TQString text;
    lowest_.GetWindowTextA(text);
    double const lowest = wholeNumber(text).value_or(-infinity);
    if (!isGood(highest_, lowest)) return false;
    limit.lowest = text.Trim();
    highest_.GetWindowTextA(text);
    limit.highest = text.Trim();
    return true;
}

// A limit may be missing; otherwise it is a number of at least `lowest`.
bool ProfileDialog::isGood(CDoubleEdit &field, double lowest) {
    TQString text;
    field.GetWindowTextA(text);
    if (text.Trim().IsEmpty()) return true;
    CCheckBereich<double> range(lowest, infinity, lowest, infinity, this);
    field.range = &range;
    bool good = field.Check() == 0;
    field.range = nullptr;
    if (good && !wholeNumber(text)) {
        AfxMessageBox(TQString(915U));
        good = false;
    }
    if (!good) field.SetFocus();
    return good;
}

void ProfileDialog::DoDataExchange(CDataExchange *dx) {
    exchangeFile(dx, inputField, draft_.input);
    exchangeFile(dx, outputField, draft_.output);
    DDX_Text(dx, headerField, draft_.headerLines, "%d");
    DDV_MyMinMaxInt(dx, draft_.headerLines, 0, mostHeaderLines, 0, usualHeaderLines);
    if (dx->m_bSaveAndValidate == 0) return;
    if (!takeLimit()) {  // the focus is on the one that is wrong
        dx->PrepareEditCtrl(::GetFocus() == highest_.m_hWnd ? highestField : lowestField);
        dx->Fail();
    }
    takeFormula(dx);
}

void ProfileDialog::takeFormula(CDataExchange *dx) {
    dx->PrepareCtrl(formulaField);
    TQString line;
    formula_.GetWindowTextA(line);
    bool const isThere = std::ranges::any_of(
        draft_.formulas, [&](Formula const &formula) { return line == shown(textOf(formula)); });
    if (isThere || line.Trim().IsEmpty()) return;
    try {
        change(written(line));
    } catch (UsageError const &error) {
        refuse(dx, "Diese Berechnung geht nicht:\n", error);
    }
}

// NAME = EXPRESSION is added or takes the place of the one with that name; NAME = takes it away.
void ProfileDialog::change(std::string const &line) {
    Formula formula = parseFormula(line);
    formula.text = TQString(formula.text.c_str()).Trim();
    Profile::checkRoom(formula.name, formula.text);
    std::vector<Formula> formulas = draft_.formulas;
    auto const old = std::ranges::find_if(formulas, [&](Formula const &other) {
        return toCapitals(other.name) == toCapitals(formula.name);
    });
    if (formula.text.empty() && old != formulas.end())
        formulas.erase(old);
    else if (old != formulas.end())
        *old = formula;
    else
        formulas.push_back(formula);
    checkChanged(formulas);
    draft_.formulas = std::move(formulas);
}

// Throws UsageError if a run with these expressions, and the limits that are there now, isn't
// possible.
void ProfileDialog::checkChanged(std::vector<Formula> const &formulas) const {
    Options changed = options_;
    changed.formulas = formulas;
    changed.limits.clear();
    for (auto const &[column, lowest, highest] : draft_.limits)
        if (!lowest.IsEmpty() || !highest.IsEmpty())
            changed.limits.push_back(
                parseLimit(column + '=' + std::string(lowest) + ':' + std::string(highest)));
    checkOptions(changed);
}

}  // namespace

void editProfile(Options const &options) {
    if (!tqplatform::TerminalUser::isThere()) throw RunError("--edit needs a terminal");
    AFX_EXTENSION_MODULE record{};
    AfxInitExtensionModule(record, &module);
    new CDynLinkLibrary(record, false);  // the framework's from here on
    Profile profile(options.profile);
    ProfileDraft const before = ProfileDraft::of(profile, options);
    ProfileDraft draft = before;
    ProfileDialog dialog(draft, options);
    bool const isAccepted = dialog.DoModal() == IDOK;
    AfxTermExtensionModule(record);
    if (isAccepted) draft.write(profile, before);
}

}  // namespace messwerk
