#pragma once

#include <array>

#include "tqlib/foundation/Export.h"
#include "tqplatform/desktop/CComboBox.h"

/// The object of a combo box that completes what is typed from its list. A class that derives from
/// it binds OnEditUpdate() to the notification:
///
///     constinit tqplatform::MessageEntry const Choice::_messageEntries[] = {
///         tqplatform::onReflected<&Choice::OnEditUpdate>(CBN_EDITUPDATE)};
class TQLIB_API CComboBoxMyEx : public CComboBox {
  public:
    CComboBoxMyEx() = default;
    ~CComboBoxMyEx() override;

    /// Watches the keys, so that a text isn't completed again right after a deletion.
    int PreTranslateMessage(MSG *message) override;

    /// Copies the selected item into the field; without one the field stays.
    void UpdateEdit();

    tqplatform::MessageMap const *GetMessageMap() const override;

    int completing = 1;  ///< not 0: the next update of the field may complete the text

  protected:
    /// Completes the text by the first item that begins with it, and marks what it added. A caret
    /// inside the text stays there with nothing marked.
    void OnEditUpdate();

    static tqplatform::MessageMap const *_GetBaseMessageMap();
    static tqplatform::MessageMap const messageMap;
    static std::array<tqplatform::MessageEntry, 0> const _messageEntries;  ///< none of its own
};
