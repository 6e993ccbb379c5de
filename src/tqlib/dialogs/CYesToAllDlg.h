#pragma once

#include <cstdint>

#include "tqlib/foundation/Export.h"
#include "tqplatform/desktop/CDialog.h"

/// A question with the four answers yes, yes to all, no and cancel, in German.
///
///     CString text("Die Datei a.csv existiert bereits!");
///     CYesToAllDlg question(text, nullptr);
///     if (question.DoModal() == IDOK && question.result == CYesToAllDlg::yesToAll) ...
class TQLIB_API CYesToAllDlg : public CDialog {
  public:
    /// The identifiers of the buttons.
    enum Button { yes = 920, yesToAll = 921, no = 922, cancel = 923 };

    /// With a question, which is copied, over `parent`, null for none.
    CYesToAllDlg(CString &text, CWnd *parent);
    ~CYesToAllDlg() override;

    void DoDataExchange(CDataExchange *dx) override;

    /// Makes "Nein" the default answer. 1.
    int OnInitDialog() override;

    /// The four answers: IDOK with the three first, IDCANCEL with the last.
    void OnJa();
    void OnJaAlle();
    void OnNein();
    void OnAbbruch();

    tqplatform::MessageMap const *GetMessageMap() const override;

    CString text;  ///< the question
    std::int32_t result =
        0;  ///< the button that ended the dialog; 0 for Escape and the system menu

  protected:
    static tqplatform::MessageMap const *_GetBaseMessageMap();
    static tqplatform::MessageMap const messageMap;
    static tqplatform::MessageEntry const _messageEntries[];

  private:
    void showPicture();
};
