#include "tqplatform/desktop/CDialog.h"

#include <span>

#include "tqplatform/desktop/Dialog.h"
#include "tqplatform/framework/ModuleState.h"

using namespace tqplatform;

constinit MessageEntry const CDialog::_messageEntries[] = {
    onMessage<&CDialog::initialise>(WM_INITDIALOG),
    onCommand<&CDialog::OnOK>(BN_CLICKED, IDOK),
    onCommand<&CDialog::OnCancel>(BN_CLICKED, IDCANCEL),
};
constinit MessageMap const CDialog::messageMap{&CWnd::messageMap, CDialog::_messageEntries};

namespace {

HWND makeDialog(unsigned int resource, HWND owner) {
    auto const *const found = AfxGetModuleState()->findResource(ResourceKind::dialog, resource);
    if (found == nullptr) return nullptr;
    auto const description =
        readDialogTemplate({static_cast<std::uint8_t const *>(found->data), found->size});
    return description ? createDialog(*description, owner) : nullptr;
}

}  // namespace

CDialog::~CDialog() = default;

int CDialog::DoModal() {
    if (m_hWnd != nullptr) return -1;
    CWnd const *const owner = parent_ != nullptr ? parent_ : AfxGetModuleState()->GetMainWnd();
    WindowGuard const dialog(makeDialog(resource_, owner == nullptr ? nullptr : owner->m_hWnd));
    return Attach(dialog.get()) != 0 ? runDialog(dialog.get()) : -1;
}

void CDialog::EndDialog(int result) {
    ::EndDialog(m_hWnd, result);
}

int CDialog::OnInitDialog() {
    UpdateData(0);
    return 1;
}

LRESULT CDialog::initialise(WPARAM /*first*/, LPARAM /*second*/) {
    return OnInitDialog();
}

void CDialog::OnOK() {
    if (UpdateData(1) != 0) EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

MessageMap const *CDialog::GetMessageMap() const {
    return &messageMap;
}

MessageMap const *CDialog::_GetBaseMessageMap() {
    return messageMap.base;
}
