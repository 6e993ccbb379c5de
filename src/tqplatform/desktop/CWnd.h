#pragma once

// The framework's object for a window: messages to the window come to it first, and its class's
// message map tells what it does with them.

#include "tqplatform/desktop/MessageMap.h"
#include "tqplatform/desktop/Window.h"
#include "tqplatform/framework/CString.h"
#include "tqplatform/runtime/Export.h"

class CDataExchange;

/// A window's object. It has no window at first, and ends the window that it has in its destructor.
/// All calls are harmless without a window; texts are in Windows-1252, places in pixels.
class TQPLATFORM_API CWnd : public tqplatform::MessageHandler {
  public:
    CWnd() = default;
    ~CWnd() override;

    /// The object of a window: its own, or one that lives as long as the window and only serves to
    /// make calls. Null for null and for a window that doesn't exist.
    static CWnd *FromHandle(HWND window);

    /// Makes a window of a class, "EDIT" for example, in `parent`, or alone for null. 1, or 0 if
    /// that can't be or the object has a window already.
    int Create(char const *className, char const *text, unsigned long style, RECT const &rect,
               CWnd *parent, unsigned int id);

    /// Stands for the window `window`; 0 if it has an object already, or this has a window.
    int Attach(HWND window);

    /// The same with the control `id` of `parent`.
    int SubclassDlgItem(unsigned int id, CWnd *parent);

    /// Gives the window up, which stays, and gives its handle.
    HWND Detach();

    int DestroyWindow();

    CWnd *GetParent() const;
    CWnd *GetDlgItem(int id) const;
    int GetDlgCtrlID() const;
    CWnd *SetFocus();
    int EnableWindow(int enable = 1);
    void GetWindowRect(RECT *rect) const;
    LRESULT SendMessageA(unsigned int message, WPARAM first = 0, LPARAM second = 0) const;
    int PostMessageA(unsigned int message, WPARAM first = 0, LPARAM second = 0) const;

    void GetWindowTextA(CString &text) const;
    int GetWindowTextA(char *target, int size) const;
    void SetWindowTextA(char const *text);

    /// The number in the text of the control `id`, up to its first other character: a minus counts
    /// if `isSigned`. 0 without one or beyond the range, and `translated`, which may be null, tells
    /// the success.
    unsigned int GetDlgItemInt(int id, int *translated = nullptr, int isSigned = 1) const;
    void SetDlgItemInt(int id, unsigned int value, int isSigned = 1);

    int MessageBoxA(char const *text, char const *title = nullptr, unsigned int style = 0);

    /// Exchanges the dialog's data, from the controls if `save`, else to them: 1, or 0 after a
    /// failure that the user was told of.
    int UpdateData(int save = 1);

    int PreTranslateMessage(MSG *message) override;
    LRESULT WindowProc(unsigned int message, WPARAM first, LPARAM second) override;
    void windowDestroyed() override;

    virtual tqplatform::MessageMap const *GetMessageMap() const;

    HWND m_hWnd = nullptr;  ///< null while the object has no window

  protected:
    /// Lets the window itself handle the message that is being handled.
    LRESULT Default();

    /// What the window itself does with a message.
    LRESULT DefWindowProcA(unsigned int message, WPARAM first, LPARAM second);

    /// Handles a command by the message map: not 0 if that has an entry.
    virtual int OnCommand(WPARAM first, LPARAM second);

    /// Exchanges and judges the data of a dialog, with DDX_ and DDV_ functions.
    virtual void DoDataExchange(CDataExchange *dx);

    static tqplatform::MessageMap const messageMap;

  private:
    tqplatform::MessageEntry const *findEntry(unsigned int message, unsigned int code,
                                              unsigned int id, bool reflected) const;
};
