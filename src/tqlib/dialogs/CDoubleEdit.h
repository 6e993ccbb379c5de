#pragma once

#include "tqlib/dialogs/CCheckBereich.h"
#include "tqlib/dialogs/CNumEdit.h"
#include "tqlib/foundation/Export.h"

/// The object of an edit control for a floating-point number: like CNumEdit, with E and e for
/// exponents, without steps, and with a judgement of the number.
///
///     CCheckBereich<double> limits(0, 100, 10, 90, &dialog);
///     CDoubleEdit field(&limits);
///     ...
///     if (field.Check() != 0) field.SetFocus();   // the user has been told why
class TQLIB_API CDoubleEdit : public CNumEdit {
  public:
    CDoubleEdit() = default;

    /// With limits, null for none. Not owned: they outlive the control.
    explicit CDoubleEdit(CCheckBereich<double> *limits) : range(limits) {}
    ~CDoubleEdit() override;

    /// Judges the number at the beginning of the text, as sscanf reads it. 1 tells that it must not
    /// stand: there is none, or it lies beyond a hard limit. 0 tells that it may. The user is told
    /// of both of those, and of a number that is beyond a soft limit.
    int Check();

    tqplatform::MessageMap const *GetMessageMap() const override;

    CCheckBereich<double> *range = nullptr;  ///< the limits of Check(), or null

  protected:
    void OnChar(unsigned int character, unsigned int repeat, unsigned int flags);

    static tqplatform::MessageMap const *_GetBaseMessageMap();
    static tqplatform::MessageMap const messageMap;
    static tqplatform::MessageEntry const _messageEntries[];
};
