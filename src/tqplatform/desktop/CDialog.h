#pragma once

#include "tqplatform/desktop/CDataExchange.h"
#include "tqplatform/desktop/CWnd.h"
#include "tqplatform/desktop/User.h"

/// A modal dialog from a template in the resources of the process's modules. Classes that derive
/// from it move data in DoDataExchange() and handle the commands of their controls.
class TQPLATFORM_API CDialog : public CWnd {
  public:
    /// For the template `resource`, to be shown over `parent`, null for none.
    explicit CDialog(unsigned int resource, CWnd *parent = nullptr)
        : resource_(resource), parent_(parent) {}
    ~CDialog() override;

    /// Shows the dialog until it is ended and gives the result: -1 if there is no such template, or
    /// the object has a window already.
    int DoModal();

    /// Ends DoModal() with a result.
    void EndDialog(int result);

    /// Moves the variables to the controls. Not 0 gives the focus to the first control.
    virtual int OnInitDialog();

    tqplatform::MessageMap const *GetMessageMap() const override;

  protected:
    /// The button OK: saves, and ends with IDOK if that didn't fail.
    virtual void OnOK();

    /// The button for leaving, Escape and the system menu: ends with IDCANCEL.
    virtual void OnCancel();

    static tqplatform::MessageMap const *_GetBaseMessageMap();
    static tqplatform::MessageMap const messageMap;
    static tqplatform::MessageEntry const _messageEntries[];

  private:
    LRESULT initialise(WPARAM first, LPARAM second);

    unsigned int resource_;
    CWnd *parent_;
};
