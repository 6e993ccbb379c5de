#include "tqlib/dialogs/CYesToAllDlg.h"

#include "tqlib/foundation/InformationBitmap.h"
#include "tqlib/foundation/QuestionDialog.h"
#include "tqplatform/desktop/StaticControl.h"
#include "tqplatform/framework/ModuleState.h"

using tqplatform::MessageEntry;
using tqplatform::MessageMap;
using tqplatform::onCommand;

constinit MessageEntry const CYesToAllDlg::_messageEntries[] = {
    onCommand<&CYesToAllDlg::OnJa>(BN_CLICKED, yes),
    onCommand<&CYesToAllDlg::OnJaAlle>(BN_CLICKED, yesToAll),
    onCommand<&CYesToAllDlg::OnNein>(BN_CLICKED, no),
    onCommand<&CYesToAllDlg::OnAbbruch>(BN_CLICKED, cancel),
};
constinit MessageMap const CYesToAllDlg::messageMap{&CDialog::messageMap,
                                                    CYesToAllDlg::_messageEntries};

CYesToAllDlg::CYesToAllDlg(CString &question, CWnd *parent)
    : CDialog(tqlib::detail::questionDialogResource, parent), text(question) {}

CYesToAllDlg::~CYesToAllDlg() = default;

void CYesToAllDlg::DoDataExchange(CDataExchange *dx) {
    DDX_Text(dx, tqlib::detail::questionControl, text);
}

int CYesToAllDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    result = 0;  // of a run before
    showPicture();
    SendMessageA(DM_SETDEFID, no, 0);
    return 1;
}

// The picture that the template names is the application's to supply; the library has one instead.
void CYesToAllDlg::showPicture() {
    auto const control = tqplatform::Window::findAs<tqplatform::StaticControl>(
        ::GetDlgItem(m_hWnd, tqlib::detail::pictureControl));
    if (control == nullptr || control->picture != nullptr) return;
    control->picture = AfxGetModuleState()->findResource(tqplatform::ResourceKind::bitmap,
                                                         tqlib::detail::informationBitmapResource);
}

void CYesToAllDlg::OnJa() {
    result = yes;
    OnOK();
}

void CYesToAllDlg::OnJaAlle() {
    result = yesToAll;
    OnOK();
}

void CYesToAllDlg::OnNein() {
    result = no;
    OnOK();
}

void CYesToAllDlg::OnAbbruch() {
    result = cancel;
    OnCancel();
}

MessageMap const *CYesToAllDlg::GetMessageMap() const {
    return &messageMap;
}

MessageMap const *CYesToAllDlg::_GetBaseMessageMap() {
    return messageMap.base;
}
