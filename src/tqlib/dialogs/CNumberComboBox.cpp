#include "tqlib/dialogs/CNumberComboBox.h"

#include <utility>

#include "tqlib/dialogs/NumberText.h"

using tqplatform::MessageMap;

constinit std::array<tqplatform::MessageEntry, 0> const CNumberComboBox::_messageEntries{};
constinit MessageMap const CNumberComboBox::messageMap{&CComboBoxMyEx::messageMap, _messageEntries};

namespace {

constexpr WPARAM wholeList = static_cast<WPARAM>(-1);

LPARAM address(TQString const &text) {
    return reinterpret_cast<LPARAM>(static_cast<char const *>(text));
}

// The index of the first item that is greater, or the number of items.
template <class Value>
int placeFor(Value value, CComboBox const &combo) {
    TQString item;
    int index = 0;
    for (; index < combo.GetCount(); ++index) {
        Value number = value;  // left by an item without a number
        combo.GetLBText(index, item);
        if (item.Scanf(number) != 0 && number > value) break;
    }
    return index;
}

template <class Value>
int add(Value value, TQString const &text, CComboBox &combo) {
    if (combo.SendMessageA(CB_FINDSTRINGEXACT, wholeList, address(text)) != CB_ERR) return 0;
    int const place = placeFor(value, combo);
    if (place == combo.GetCount())
        combo.AddString(text);
    else
        combo.InsertString(place, text);
    return static_cast<int>(combo.SendMessageA(CB_SELECTSTRING, wholeList, address(text)));
}

}  // namespace

CNumberComboBox::~CNumberComboBox() = default;

int CNumberComboBox::AddValue(double value, TQString format) {
    return add(value, tqlib::detail::formatDouble(value, std::move(format)).Trim(), *this);
}

int CNumberComboBox::AddValue(int value, TQString format) {
    return add(value, tqlib::detail::FormatIntText(value, std::move(format)), *this);
}

MessageMap const *CNumberComboBox::GetMessageMap() const {
    return &messageMap;
}

MessageMap const *CNumberComboBox::_GetBaseMessageMap() {
    return messageMap.base;
}
