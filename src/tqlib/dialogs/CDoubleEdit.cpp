#include "tqlib/dialogs/CDoubleEdit.h"

#include <cstdio>

#include "tqlib/dialogs/Limits.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/desktop/User.h"

using tqplatform::MessageEntry;
using tqplatform::MessageMap;
using tqplatform::onMessage;

constinit MessageEntry const CDoubleEdit::_messageEntries[] = {
    onMessage<&CDoubleEdit::OnChar>(WM_CHAR),
};
constinit MessageMap const CDoubleEdit::messageMap{&CEdit::messageMap,
                                                   CDoubleEdit::_messageEntries};

namespace {

void tell(CWnd const *window, char const *text, char const *title, unsigned int style) {
    MessageBoxA(window == nullptr ? nullptr : window->m_hWnd, text, title, style);
}

}  // namespace

CDoubleEdit::~CDoubleEdit() = default;

int CDoubleEdit::Check() {
    CString text;
    GetWindowTextA(text);
    double value = 0;
    // A blank text, which isn't a number either, gives EOF.
    if (std::sscanf(text, "%lf", &value) != 1) {
        tell(GetParent(), "Fehler bei der Eingabe", "FEHLER", MB_ICONEXCLAMATION);
        return 1;
    }
    if (range == nullptr) return 0;
    auto const verdict =
        tqlib::detail::judge(value, range->hardMin, range->hardMax, range->softMin, range->softMax);
    if (verdict.message == 0) return 0;
    tell(range->messageWindow, TQString(verdict.message), verdict.isError ? "FEHLER" : "WARNUNG",
         verdict.isError ? MB_ICONEXCLAMATION : MB_ICONINFORMATION);
    return verdict.isError ? 1 : 0;
}

void CDoubleEdit::OnChar(unsigned int character, unsigned int repeat, unsigned int flags) {
    if (character == 'E' || character == 'e')
        Default();
    else
        CNumEdit::OnChar(character, repeat, flags);
}

MessageMap const *CDoubleEdit::GetMessageMap() const {
    return &messageMap;
}

// Not the map of CNumEdit: this control has no steps.
MessageMap const *CDoubleEdit::_GetBaseMessageMap() {
    return messageMap.base;
}
