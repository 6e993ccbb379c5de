#pragma once

#include <array>

#include "tqlib/dialogs/CComboBoxMyEx.h"
#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"

/// The object of a combo box whose list holds numbers in ascending order. The control must not sort
/// by itself.
///
///     CNumberComboBox widths;
///     widths.SubclassDlgItem(102, this);
///     widths.AddValue(2.5, "%.1f");    // 0: the first one
class TQLIB_API CNumberComboBox : public CComboBoxMyEx {
  public:
    CNumberComboBox() = default;
    ~CNumberComboBox() override;

    /// Adds a number as a text. `format` is a format of printf for one value, or "SCIENTIFIC" for a
    /// double, which stands for TQString::DoubleFormat(); white space at the ends of the text is
    /// left out. It goes in front of the first item that is greater; items that are no numbers are
    /// passed over. Then the first item that begins with the text is selected: another one ahead of
    /// it if that does, as -10 begins with -1. The result is the index of the selected item, or 0
    /// with nothing changed if the text is there already, or -1 if none can be selected.
    int AddValue(double value, TQString format);
    int AddValue(int value, TQString format);

    tqplatform::MessageMap const *GetMessageMap() const override;

  protected:
    static tqplatform::MessageMap const *_GetBaseMessageMap();
    static tqplatform::MessageMap const messageMap;
    static std::array<tqplatform::MessageEntry, 0> const _messageEntries;  ///< none of its own
};
