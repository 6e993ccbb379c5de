#include "tqplatform/desktop/ComboBox.h"

#include <algorithm>
#include <cstring>

#include "tqplatform/desktop/EditControl.h"
#include "tqplatform/runtime/CodePage1252.h"

namespace tqplatform {
namespace {

constexpr int pageOfItems = 8;

// The index that an item has when the one at `place` is gone; -1 for none.
int indexWithout(std::intptr_t place, int index) {
    return index == place ? CB_ERR : index - (index > place ? 1 : 0);
}

bool sameLetter(char left, char right) {
    return toLower1252(left) == toLower1252(right);
}

bool startsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() &&
           std::ranges::equal(text.substr(0, start.size()), start, sameLetter);
}

bool sortsBefore(std::string_view left, std::string_view right) {
    return std::ranges::lexicographical_compare(left, right, [](char a, char b) {
        return static_cast<unsigned char>(toLower1252(a)) <
               static_cast<unsigned char>(toLower1252(b));
    });
}

std::string_view textAt(LPARAM address) {
    auto const *const text = reinterpret_cast<char const *>(address);
    return text == nullptr ? std::string_view() : text;
}

}  // namespace

LRESULT ComboBox::receive(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_CHAR:
            type(static_cast<char>(first));
            return 0;
        case WM_KEYDOWN:
            press(static_cast<unsigned int>(first));
            return 0;
        case WM_SYSKEYDOWN:
            if (first == VK_DOWN || first == VK_UP) press(VK_F4);
            return 0;
        case WM_LBUTTONDOWN:
            SetFocus(handle());
            press(VK_F4);
            return 0;
        case WM_SETFOCUS:
            notify(CBN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            if (isOpen_) close(CBN_SELENDOK);
            notify(CBN_KILLFOCUS);
            return 0;
        case WM_GETDLGCODE: {
            bool const endsList = isOpen_ && (first == VK_RETURN || first == VK_ESCAPE);
            return DLGC_WANTCHARS | DLGC_WANTARROWS | (hasEdit() ? DLGC_HASSETSEL : 0) |
                   (endsList ? DLGC_WANTALLKEYS : 0);
        }
        default:
            return receiveForList(message, first, second);
    }
}

LRESULT ComboBox::receiveForList(unsigned int message, WPARAM first, LPARAM second) {
    auto const index = static_cast<std::int32_t>(first);
    switch (message) {
        case CB_GETCOUNT:
            return static_cast<LRESULT>(items_.size());
        case CB_ADDSTRING:
            return insert(has(CBS_SORT) ? sortedPlace(textAt(second)) : -1,
                          std::string(textAt(second)));
        case CB_INSERTSTRING:
            return insert(index, std::string(textAt(second)));
        case CB_DELETESTRING:
            return remove(index);
        case CB_RESETCONTENT:
            items_.clear();
            selectedBefore_ = CB_ERR;
            textBefore_.clear();
            select(CB_ERR);
            return CB_OKAY;
        case CB_GETLBTEXTLEN:
            return isItem(index) ? static_cast<LRESULT>(item(index).size()) : CB_ERR;
        case CB_GETLBTEXT: {
            if (!isItem(index) || second == 0) return CB_ERR;
            std::string const &text = item(index);
            std::memcpy(reinterpret_cast<char *>(second), text.c_str(), text.size() + 1);
            return static_cast<LRESULT>(text.size());
        }
        case CB_FINDSTRING:
            return find(index, second, false);
        case CB_FINDSTRINGEXACT:
            return find(index, second, true);
        case CB_SELECTSTRING: {
            int const found = find(index, second, false);
            return found == CB_ERR ? CB_ERR : select(found);
        }
        case CB_GETCURSEL:
            return selected_;
        case CB_SETCURSEL:
            return select(index);
        default:
            return receiveForField(message, first, second);
    }
}

LRESULT ComboBox::receiveForField(unsigned int message, WPARAM first, LPARAM second) {
    switch (message) {
        case EM_SETSEL:
            if (hasEdit()) field_.select(static_cast<std::intptr_t>(first), second);
            return 1;
        case CB_GETEDITSEL:
            return hasEdit() ? tellSelection(field_, first, second) : CB_ERR;
        case CB_SETEDITSEL: {
            if (!hasEdit()) return CB_ERR;
            auto const place = [](unsigned int word) {
                return word == 0xFFFF ? std::intptr_t{-1} : static_cast<std::intptr_t>(word);
            };
            auto const both = static_cast<unsigned long>(second);
            field_.select(place(lowWord(both)), place(highWord(both)));
            return 1;
        }
        case CB_LIMITTEXT:
            field_.setLimit(first);
            return 1;
        case CB_GETDROPPEDSTATE:
            return isOpen_ || isSimple() ? 1 : 0;
        case CB_SHOWDROPDOWN:
            if (first != 0)
                open();
            else
                close(CBN_SELENDOK);
            return 1;
        default:
            return Window::receive(message, first, second);
    }
}

void ComboBox::setText(std::string_view text) {
    if (hasEdit()) field_.set(text);
}

bool ComboBox::isItem(std::intptr_t index) const {
    return index >= 0 && static_cast<std::size_t>(index) < items_.size();
}

std::string const &ComboBox::item(std::intptr_t index) const {
    return items_[static_cast<std::size_t>(index)];
}

// Selects an item and shows it in the field, all marked; with -1 there is none and the field empty.
int ComboBox::select(std::intptr_t index) {
    selected_ = isItem(index) ? static_cast<int>(index) : CB_ERR;
    field_.set(selected_ == CB_ERR ? std::string_view() : item(index));
    if (hasEdit()) field_.select(0, -1);
    return selected_;
}

int ComboBox::insert(std::intptr_t index, std::string text) {
    if (index == -1) index = static_cast<std::intptr_t>(items_.size());
    if (index < 0 || static_cast<std::size_t>(index) > items_.size()) return CB_ERR;
    items_.insert(items_.begin() + index, std::move(text));
    if (selected_ >= index) ++selected_;
    if (selectedBefore_ >= index) ++selectedBefore_;
    return static_cast<int>(index);
}

int ComboBox::remove(std::intptr_t index) {
    if (!isItem(index)) return CB_ERR;
    items_.erase(items_.begin() + index);
    selectedBefore_ = indexWithout(index, selectedBefore_);
    if (selected_ == index) select(CB_ERR);
    selected_ = indexWithout(index, selected_);
    return static_cast<int>(items_.size());
}

// The first item behind `behind`, and round to it again, that is or begins with a text.
int ComboBox::find(std::intptr_t behind, LPARAM text, bool whole) const {
    std::string_view const wanted = textAt(text);
    std::size_t const count = items_.size();
    std::size_t const first = isItem(behind) ? static_cast<std::size_t>(behind) + 1 : 0;
    for (std::size_t step = 0; step < count; ++step) {
        std::size_t const index = first + step < count ? first + step : first + step - count;
        std::string const &item = items_[index];
        if (whole && item.size() != wanted.size()) continue;
        if (startsWith(item, wanted)) return static_cast<int>(index);
    }
    return CB_ERR;
}

std::intptr_t ComboBox::sortedPlace(std::string_view text) const {
    return std::ranges::upper_bound(items_, text, sortsBefore) - items_.begin();
}

void ComboBox::type(char c) {
    if (hasEdit()) {
        tell(field_.type(c));
        return;
    }
    if (static_cast<unsigned char>(c) < VK_SPACE) return;
    char const letter[] = {c, '\0'};
    choose(find(selected_, reinterpret_cast<LPARAM>(letter), false));
}

void ComboBox::press(unsigned int key) {
    switch (key) {
        case VK_F4:
            if (isOpen_)
                close(CBN_SELENDOK);
            else
                open();
            break;
        case VK_RETURN:
            if (isOpen_) close(CBN_SELENDOK);
            break;
        case VK_ESCAPE:
            if (isOpen_) close(CBN_SELENDCANCEL);
            break;
        case VK_UP:
        case VK_DOWN:
        case VK_PRIOR:
        case VK_NEXT:
            moveSelection(key);
            break;
        default:
            if (hasEdit()) tell(field_.press(key, isShiftDown()));
    }
}

void ComboBox::moveSelection(unsigned int key) {
    int const last = static_cast<int>(items_.size()) - 1;
    int const step = key == VK_UP || key == VK_DOWN ? 1 : pageOfItems;
    int const wanted = selected_ + (key == VK_UP || key == VK_PRIOR ? -step : step);
    choose(std::clamp(wanted, std::min(0, last), last));
}

// The user selects an item. It stands as his choice unless the list is open.
void ComboBox::choose(int index) {
    if (!isItem(index) || index == selected_) return;
    select(index);
    if (!isOpen_) notify(CBN_SELENDOK);
    notify(CBN_SELCHANGE);
}

void ComboBox::tell(EditText::Effect effect) {
    if (!effect.changed) return;
    selected_ = CB_ERR;
    notify(CBN_EDITUPDATE);
    notify(CBN_EDITCHANGE);
    if (isOpen_) remember();
}

void ComboBox::open() {
    if (isOpen_ || isSimple()) return;
    remember();
    isOpen_ = true;
    notify(CBN_DROPDOWN);
}

// Keeps what an item that is only looked at gives way to.
void ComboBox::remember() {
    selectedBefore_ = selected_;
    textBefore_ = selected_ == CB_ERR ? field_.text() : std::string_view();
}

void ComboBox::close(unsigned int how) {
    if (!isOpen_) return;
    isOpen_ = false;
    // A text that was typed stays; an item gives way to the one or the text before.
    if (how == CBN_SELENDCANCEL && selected_ != CB_ERR && selected_ != selectedBefore_) {
        select(selectedBefore_);
        if (selected_ == CB_ERR) setText(textBefore_);
    }
    notify(how);
    notify(CBN_CLOSEUP);
}

}  // namespace tqplatform
