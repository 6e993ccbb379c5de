#pragma once

// A field that takes no letters and can be stepped up and down by a scroll control.
//
//     class Settings : public CDialog {
//         CNumEdit count_;
//         int OnInitDialog() override {
//             CDialog::OnInitDialog();
//             return count_.SubclassEdit(101, this);
//         }
//     };

#include "tqlib/foundation/Export.h"
#include "tqplatform/desktop/CEdit.h"

class CScrollBar;

/// The object of an edit control for a whole number. Steps go from 0 to 32767.
class TQLIB_API CNumEdit : public CEdit {
  public:
    CNumEdit() = default;
    ~CNumEdit() override;

    /// Makes the control in `parent`, in pixels: 1, or 0 if that can't be. The low 16 bits of
    /// `style`, which belong to edit controls, are dropped.
    int Create(unsigned long style, RECT const &rect, CWnd *parent, unsigned int id);

    /// Stands for the edit control `id` of `parent`: 1, or 0 if that can't be.
    int SubclassEdit(unsigned int id, CWnd *parent);

    /// Reports an input that was refused: as the notification 0x8000 to the parent, and by a sound
    /// unless it answers -1.
    virtual void OnBadInput();

    tqplatform::MessageMap const *GetMessageMap() const override;

  protected:
    /// Refuses letters, those of Windows-1252, and lets the control take all others.
    void OnChar(unsigned int character, unsigned int repeat, unsigned int flags);

    /// Steps by 1 for SB_LINEUP and by -1 for SB_LINEDOWN; other codes do nothing. A text that is
    /// no number, and a step out of the range, are a bad input and leave the text.
    void OnVScroll(unsigned int code, unsigned int position, CScrollBar *bar);

    static tqplatform::MessageMap const *_GetBaseMessageMap();
    static tqplatform::MessageMap const messageMap;
    static tqplatform::MessageEntry const _messageEntries[];

  private:
    bool step(int by);
};
